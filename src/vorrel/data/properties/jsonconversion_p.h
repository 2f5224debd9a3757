// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

namespace vo::data {

/// The stored form of a point in time, in milliseconds since the epoch.
QString isoDateFromMSecs(qint64 msecs);

/// The reverse; text that is no date gives 0.
qint64 msecsFromIsoDate(const QString &text);

} // namespace vo::data
