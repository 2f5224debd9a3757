// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QDateTime>
#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QPointF>
#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QVector2D>
#include <QtPositioning/QGeoCoordinate>

#include <type_traits>

/// \file
/// How Qt value types look in a stored document, and when two values count as equal.
///
/// | Type | JSON |
/// |---|---|
/// | QString, int, qint64, bool, float, double | native |
/// | QColor | "#rrggbb", or "#00rrggbb" if fully transparent; other alpha values are lost |
/// | QDate, QTime, QDateTime | ISO text; QDateTime in UTC, without milliseconds |
/// | QUrl | text |
/// | QJsonObject, QVariant | as it is |
/// | QStringList | array of strings |
/// | QPoint, QPointF, QSize, QVector2D | array of two numbers; QPointF drops fractions on reading |
/// | QGeoCoordinate | object with "lat" and "lon", null if invalid |
/// | QFont | object with "family", "pixelSize", "weight", "capitalization", "italic",
///   "letterSpacing", "wordSpacing"; the weight on the scale from 0 to 99 |
///
/// Text of a number reads as that number and a number reads as its text; what cannot be converted
/// reads as a default-constructed value.

namespace vo::data {

/// Fuzzy equality of floating values: relative, so that 0 equals only 0, and NaN equals nothing.
[[nodiscard]] VORREL_DATACORE_EXPORT bool compare(double a, double b);
[[nodiscard]] VORREL_DATACORE_EXPORT bool compare(float a, float b);
[[nodiscard]] VORREL_DATACORE_EXPORT bool compare(const QPointF &a, const QPointF &b);

template <typename T>
[[nodiscard]] T convertFromJson(const QJsonValue &json)
{
    return json.toVariant().value<T>();
}

template <typename T>
[[nodiscard]] QJsonValue convertToJson(const T &value)
{
    return QJsonValue(value);
}

/// Whether an edit from \p a to \p b would change nothing.
template <typename T>
[[nodiscard]] bool valuesEqual(const T &a, const T &b)
{
    if constexpr (std::is_floating_point_v<T>) {
        return compare(a, b);
    } else if constexpr (std::is_same_v<T, QDateTime>) {
        return a.toUTC() == b.toUTC();
    } else if constexpr (std::is_same_v<T, QVariant>) {
        // What would be stored: variants themselves compare differently in Qt 5 and Qt 6.
        return QJsonValue::fromVariant(a) == QJsonValue::fromVariant(b);
    } else {
        return a == b;
    }
}

#define VORREL_DECLARE_JSON_CONVERSION(Type)                                                       \
    template <>                                                                                    \
    VORREL_DATACORE_EXPORT Type convertFromJson<Type>(const QJsonValue &json);                     \
    template <>                                                                                    \
    VORREL_DATACORE_EXPORT QJsonValue convertToJson<Type>(const Type &value);

VORREL_DECLARE_JSON_CONVERSION(QColor)
VORREL_DECLARE_JSON_CONVERSION(QDate)
VORREL_DECLARE_JSON_CONVERSION(QTime)
VORREL_DECLARE_JSON_CONVERSION(QDateTime)
VORREL_DECLARE_JSON_CONVERSION(QUrl)
VORREL_DECLARE_JSON_CONVERSION(QJsonObject)
VORREL_DECLARE_JSON_CONVERSION(QVariant)
VORREL_DECLARE_JSON_CONVERSION(QStringList)
VORREL_DECLARE_JSON_CONVERSION(QPoint)
VORREL_DECLARE_JSON_CONVERSION(QPointF)
VORREL_DECLARE_JSON_CONVERSION(QSize)
VORREL_DECLARE_JSON_CONVERSION(QVector2D)
VORREL_DECLARE_JSON_CONVERSION(QGeoCoordinate)
VORREL_DECLARE_JSON_CONVERSION(QFont)

#undef VORREL_DECLARE_JSON_CONVERSION

// The native types: the results of the general rule, without the way through a variant. An integer
// that the type cannot hold reads as 0.
template <>
VORREL_DATACORE_EXPORT QString convertFromJson<QString>(const QJsonValue &json);
template <>
VORREL_DATACORE_EXPORT bool convertFromJson<bool>(const QJsonValue &json);
template <>
VORREL_DATACORE_EXPORT double convertFromJson<double>(const QJsonValue &json);
template <>
VORREL_DATACORE_EXPORT float convertFromJson<float>(const QJsonValue &json);
template <>
VORREL_DATACORE_EXPORT int convertFromJson<int>(const QJsonValue &json);
template <>
VORREL_DATACORE_EXPORT qint64 convertFromJson<qint64>(const QJsonValue &json);

} // namespace vo::data
