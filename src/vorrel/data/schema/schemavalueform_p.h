// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/properties/jsonconversion.h>
#include <vorrel/data/schema/schemavariable.h>

#include <QtCore/QTime>

namespace vo::data {

/// How a variable of the plain type \a T stores a value: an object with a type, and the value under
/// a key.
template <typename T>
class SchemaValueForm
{
public:
    SchemaValueForm(QLatin1String type, QLatin1String key)
        : m_key(key)
        , m_frame { { jsonkeys::type, type } }
    { }

    [[nodiscard]] QJsonObject toJson(const QVariant &value) const
    {
        QJsonObject object = m_frame;
        object.insert(m_key, convertToJson<T>(value.value<T>()));
        return object;
    }

    /// The default value, with a warning, for what no value of this type looks like.
    [[nodiscard]] QVariant fromJson(const SchemaVariable &variable, const QJsonObject &object) const
    {
        const QJsonValue json = object.value(m_key);
        if (!hasJsonType(json)) {
            return variable.refuse(object);
        }
        const T value = read(json);
        if constexpr (canBeInvalid) {
            if (!value.isValid() && !json.toString().isEmpty()) {
                return variable.refuse(object);
            }
        }
        return QVariant::fromValue(value);
    }

    /// Compared as values of the type: variants compare differently in Qt 5 and Qt 6.
    [[nodiscard]] bool equal(const QVariant &a, const QVariant &b) const
    {
        return a.isValid() == b.isValid() && vo::data::valuesEqual(a.value<T>(), b.value<T>());
    }

    /// The value as it stands, in the type of the variable; invalid if it cannot be converted.
    [[nodiscard]] QVariant typed(const QVariant &value) const
    {
        if (!value.canConvert<T>()) {
            return {};
        }
        const T result = value.value<T>();
        if constexpr (canBeInvalid) {
            return result.isValid() ? QVariant::fromValue(result) : QVariant();
        } else {
            return QVariant::fromValue(result);
        }
    }

private:
    static constexpr bool canBeInvalid =
        std::is_same_v<T, QColor> || std::is_same_v<T, QDate> || std::is_same_v<T, QTime>;

    static bool hasJsonType(const QJsonValue &json)
    {
        if constexpr (std::is_same_v<T, bool>) {
            return json.isBool();
        } else if constexpr (std::is_arithmetic_v<T>) {
            return json.isDouble();
        } else {
            return json.isString();
        }
    }

    static T read(const QJsonValue &json)
    {
        if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
            return json.toInt();
        } else {
            return convertFromJson<T>(json);
        }
    }

    const QLatin1String m_key;
    const QJsonObject m_frame; // copied, which is faster than to make it for each value
};

} // namespace vo::data
