// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QString>

namespace vo::data {

/// The JSON with other ids in the place of those that are keys of \p ids: in references, and in
/// texts that are nothing but an id. Keys stay as they are.
[[nodiscard]] QJsonObject withNewIds(QJsonObject object, const QMap<QString, QString> &ids);

} // namespace vo::data
