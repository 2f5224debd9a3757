// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vo::data {

/// Whether \p id survives the way through Latin-1, the form in which ids are kept. Two ids that
/// do not would end as the same one.
inline bool isStorableId(const QString &id)
{
    return QString::fromLatin1(id.toLatin1()) == id;
}

} // namespace vo::data
