// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/jsonconversion.h>
#include <vorrel/data/properties/propertychange.h>

#include <QtCore/QJsonArray>
#include <QtCore/QList>

namespace vo::data {

template <typename T>
class ListProperty;

/// The edit of a ListProperty<T>.
template <typename T>
using ListPropertyChange = PropertyChange<ListProperty<T>, QList<T>>;

/// A stored field that holds a list of values. An edit replaces the whole list.
template <typename T>
class ListProperty : public PropertyBase
{
public:
    ListProperty(const char *name, Document *document)
        : PropertyBase(name, document)
    { }

    /// The list, empty below ReadAccess.
    [[nodiscard]] QList<T> get() const { return canRead() ? m_values : QList<T>(); }

    /// An edit. False below WriteAccess and for an equal list.
    bool set(const QList<T> &values)
    {
        if (!canWrite() || values == m_values) {
            return false;
        }
        apply(std::make_unique<ListPropertyChange<T>>(this, d_(), m_values, values));
        return true;
    }

    [[nodiscard]] int type() const override { return Value; }

    void fromJson(const QJsonValue &json) override
    {
        QList<T> values;
        const QJsonArray array = json.toArray();
        for (const QJsonValue &element : array) {
            values.append(convertFromJson<T>(element));
        }
        if (values != m_values) {
            m_values = values;
            notify();
        }
    }

    [[nodiscard]] QJsonValue toJson() const override
    {
        QJsonArray array;
        for (const T &value : m_values) {
            array.append(convertToJson<T>(value));
        }
        return array;
    }

    void copy(PropertyBase *source) override { set(static_cast<ListProperty *>(source)->get()); }

private:
    friend class PropertyChange<ListProperty<T>, QList<T>>;

    void assign(const QList<T> &values)
    {
        m_values = values;
        notifyAndMarkDirty();
    }

    QList<T> m_values;
};

} // namespace vo::data
