// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/qtcompat_p.h>

#include <QtCore/QList>
#include <QtQml/QQmlListProperty>

namespace vo::data {

/// A list property that QML can only read, over a function that gives the list of its owner.
template <typename T>
class ReadOnlyObjectList
{
public:
    using Reader = QList<T *> (*)(QObject *owner);

    static QQmlListProperty<T> property(QObject *owner, Reader reader)
    {
        return { owner, reinterpret_cast<void *>(reader), &count, &at };
    }

private:
    using Property = QQmlListProperty<T>;

    static QList<T *> read(Property *property)
    {
        return reinterpret_cast<Reader>(property->data)(property->object);
    }

    static qtcompat::ListSize count(Property *property)
    {
        return qtcompat::ListSize(read(property).size());
    }

    static T *at(Property *property, qtcompat::ListSize index)
    {
        return read(property).value(index);
    }
};

} // namespace vo::data
