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

/// The list behind a list property that QML can append to and clear. A subclass decides what may
/// stand in it, and tells of changes. It belongs to the owner of the property.
template <typename T>
class EditableObjectList
{
public:
    EditableObjectList() = default;
    virtual ~EditableObjectList() = default;
    Q_DISABLE_COPY_MOVE(EditableObjectList)

    [[nodiscard]] virtual const QList<T *> &objects() const = 0;
    virtual void append(T *object) = 0;
    virtual void clear() = 0;

    QQmlListProperty<T> property(QObject *owner)
    {
        return { owner, this, &appendTo, &count, &at, &clearAll };
    }

private:
    using Property = QQmlListProperty<T>;

    static EditableObjectList *list(Property *property)
    {
        return static_cast<EditableObjectList *>(property->data);
    }

    static void appendTo(Property *property, T *object) { list(property)->append(object); }

    static qtcompat::ListSize count(Property *property)
    {
        return qtcompat::ListSize(list(property)->objects().size());
    }

    static T *at(Property *property, qtcompat::ListSize index)
    {
        return list(property)->objects().value(index);
    }

    static void clearAll(Property *property) { list(property)->clear(); }
};

} // namespace vo::data
