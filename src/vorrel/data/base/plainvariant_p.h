// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/QJSValue>

#include <QtCore/QVariant>

namespace vo::data {

/// \p value without the wrapping in which objects and arrays of JavaScript arrive.
inline QVariant plainVariant(const QVariant &value)
{
    return value.userType() == qMetaTypeId<QJSValue>() ? value.value<QJSValue>().toVariant()
                                                       : value;
}

} // namespace vo::data
