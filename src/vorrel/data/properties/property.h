// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/jsonconversion.h>
#include <vorrel/data/properties/propertychange.h>

namespace vo::data {

template <typename T>
class Property;

/// The edit of a Property<T>.
template <typename T>
using ValueChange = PropertyChange<Property<T>, T>;

/// A stored field that holds one value of a plain type, such as QString, double or QColor.
template <typename T>
class Property : public PropertyBase
{
public:
    Property(const char *name, Document *document)
        : PropertyBase(name, document)
    { }

    Property(const char *name, const T &initial, Document *document)
        : PropertyBase(name, document)
        , m_value(initial)
    { }

    Property(const Property &other) = default;

    /// The value, or a default-constructed one below ReadAccess.
    [[nodiscard]] T get() const { return canRead() ? m_value : T(); }

    /// The same whatever the access is: for what does not depend on who reads.
    [[nodiscard]] const T &stored() const { return m_value; }

    /// An edit. False below WriteAccess and for an equal value. Slots of the change signal may
    /// destroy the document.
    bool set(const T &value)
    {
        if (!canWrite() || valuesEqual(value, m_value)) {
            return false;
        }
        apply(std::make_unique<ValueChange<T>>(this, d_(), m_value, value));
        return true;
    }

    [[nodiscard]] int type() const override { return Value; }

    void fromJson(const QJsonValue &json) override
    {
        const T value = normalized(convertFromJson<T>(json));
        if (!valuesEqual(value, m_value)) {
            m_value = value;
            notify();
        }
    }

    [[nodiscard]] QJsonValue toJson() const override { return convertToJson<T>(m_value); }
    void copy(PropertyBase *source) override { set(static_cast<Property *>(source)->get()); }

private:
    friend class PropertyChange<Property<T>, T>;

    static T normalized(const T &value)
    {
        if constexpr (std::is_same_v<T, QDateTime>) {
            return value.toUTC();
        } else {
            return value;
        }
    }

    void assign(const T &value)
    {
        m_value = normalized(value);
        if constexpr (std::is_same_v<T, QDateTime>) {
            markDirtyAndNotify();
        } else {
            notifyAndMarkDirty();
        }
    }

    T m_value {};
};

} // namespace vo::data
