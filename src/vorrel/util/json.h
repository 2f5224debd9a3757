// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/util/utilexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonDocument>

namespace vo::util::json {

/// The document in the binary form that QJsonDocument::toBinaryData() of Qt 5 writes; Qt 6 cannot
/// read it any more. A null document if \p data is anything else, also in part. The data may come
/// from anywhere: time and memory grow with its size and with nothing that it says, and it may hold
/// up to 1024 arrays and objects one inside the other, as JSON text.
[[nodiscard]] VORREL_UTIL_EXPORT QJsonDocument fromBinaryData(const QByteArray &data);

} // namespace vo::util::json
