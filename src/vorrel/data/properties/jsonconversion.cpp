// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/jsonconversion.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/qtcompat_p.h>
#include <vorrel/data/properties/jsonconversion_p.h>

#include <QtCore/QJsonArray>

#include <cmath>
#include <limits>

namespace vo::data {

namespace {

/// The elements of an array of exactly two; anything else gives none.
QJsonArray pairOf(const QJsonValue &json)
{
    const QJsonArray array = json.toArray();
    return array.size() == 2 ? array : QJsonArray();
}

/// Drops the fraction. A number that no int can hold, and what is no number, gives 0.
int truncated(double value)
{
    const bool fits = value > double(std::numeric_limits<int>::min()) - 1.0
        && value < double(std::numeric_limits<int>::max()) + 1.0;
    return fits ? int(value) : 0;
}

/// The general rule, but with 0 for what the type cannot hold, where a cast would wrap around or
/// be undefined.
template <typename Integer>
Integer integerFromJson(const QJsonValue &json)
{
    const QVariant value = json.toVariant();
    if (value.userType() == QMetaType::Double) {
        const double limit = std::ldexp(1.0, 63); // the next double above the largest qint64
        if (value.toDouble() < -limit || value.toDouble() >= limit) {
            return 0;
        }
    }
    const auto number = value.value<qint64>();
    const bool fits = number >= std::numeric_limits<Integer>::min()
        && number <= std::numeric_limits<Integer>::max();
    return fits ? Integer(number) : 0;
}

QColor::NameFormat nameFormat(const QColor &color)
{
    return color.alpha() == 0 ? QColor::HexArgb : QColor::HexRgb;
}

} // namespace

bool compare(double a, double b)
{
    return std::min(std::abs(a), std::abs(b)) >= std::abs(a - b) * 1000000000000.0;
}

bool compare(float a, float b)
{
    return std::min(std::abs(a), std::abs(b)) >= std::abs(a - b) * 100000.0F;
}

bool compare(const QPointF &a, const QPointF &b)
{
    return compare(double(a.x()), double(b.x())) && compare(double(a.y()), double(b.y()));
}

QString isoDateFromMSecs(qint64 msecs)
{
    return QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC).toString(Qt::ISODate);
}

qint64 msecsFromIsoDate(const QString &text)
{
    const QDateTime date = QDateTime::fromString(text, Qt::ISODate);
    return date.isValid() ? date.toMSecsSinceEpoch() : 0;
}

template <>
QString convertFromJson<QString>(const QJsonValue &json)
{
    return json.isString() ? json.toString() : json.toVariant().toString();
}

template <>
bool convertFromJson<bool>(const QJsonValue &json)
{
    return json.isBool() ? json.toBool() : json.toVariant().toBool();
}

template <>
double convertFromJson<double>(const QJsonValue &json)
{
    return json.isDouble() ? json.toDouble() : json.toVariant().toDouble();
}

template <>
float convertFromJson<float>(const QJsonValue &json)
{
    return json.isDouble() ? float(json.toDouble()) : json.toVariant().toFloat();
}

template <>
int convertFromJson<int>(const QJsonValue &json)
{
    return integerFromJson<int>(json);
}

template <>
qint64 convertFromJson<qint64>(const QJsonValue &json)
{
    return integerFromJson<qint64>(json);
}

template <>
QColor convertFromJson<QColor>(const QJsonValue &json)
{
    return QColor(json.toString());
}

template <>
QJsonValue convertToJson<QColor>(const QColor &value)
{
    return value.name(nameFormat(value));
}

template <>
QDate convertFromJson<QDate>(const QJsonValue &json)
{
    return QDate::fromString(json.toString(), Qt::ISODate);
}

template <>
QJsonValue convertToJson<QDate>(const QDate &value)
{
    return value.toString(Qt::ISODate);
}

template <>
QTime convertFromJson<QTime>(const QJsonValue &json)
{
    return QTime::fromString(json.toString(), Qt::ISODate);
}

template <>
QJsonValue convertToJson<QTime>(const QTime &value)
{
    return value.toString(Qt::ISODate);
}

template <>
QDateTime convertFromJson<QDateTime>(const QJsonValue &json)
{
    return QDateTime::fromString(json.toString(), Qt::ISODate);
}

template <>
QJsonValue convertToJson<QDateTime>(const QDateTime &value)
{
    return value.toUTC().toString(Qt::ISODate);
}

template <>
QUrl convertFromJson<QUrl>(const QJsonValue &json)
{
    return QUrl(json.toString(), QUrl::TolerantMode);
}

template <>
QJsonValue convertToJson<QUrl>(const QUrl &value)
{
    return value.toString();
}

template <>
QJsonObject convertFromJson<QJsonObject>(const QJsonValue &json)
{
    return json.toObject();
}

template <>
QJsonValue convertToJson<QJsonObject>(const QJsonObject &value)
{
    return value;
}

template <>
QVariant convertFromJson<QVariant>(const QJsonValue &json)
{
    return json.toVariant();
}

template <>
QJsonValue convertToJson<QVariant>(const QVariant &value)
{
    return QJsonValue::fromVariant(value);
}

template <>
QStringList convertFromJson<QStringList>(const QJsonValue &json)
{
    QStringList list;
    const QJsonArray array = json.toArray();
    for (const QJsonValue &element : array) {
        list.append(element.toString());
    }
    return list;
}

template <>
QJsonValue convertToJson<QStringList>(const QStringList &value)
{
    return QJsonArray::fromStringList(value);
}

template <>
QPoint convertFromJson<QPoint>(const QJsonValue &json)
{
    const QJsonArray pair = pairOf(json);
    return { pair.at(0).toInt(), pair.at(1).toInt() };
}

template <>
QJsonValue convertToJson<QPoint>(const QPoint &value)
{
    return QJsonArray { value.x(), value.y() };
}

template <>
QPointF convertFromJson<QPointF>(const QJsonValue &json)
{
    const QJsonArray pair = pairOf(json);
    return QPointF(truncated(pair.at(0).toDouble()), truncated(pair.at(1).toDouble()));
}

template <>
QJsonValue convertToJson<QPointF>(const QPointF &value)
{
    return QJsonArray { double(value.x()), double(value.y()) };
}

template <>
QSize convertFromJson<QSize>(const QJsonValue &json)
{
    const QJsonArray pair = pairOf(json);
    return { pair.at(0).toInt(), pair.at(1).toInt() };
}

template <>
QJsonValue convertToJson<QSize>(const QSize &value)
{
    return QJsonArray { value.width(), value.height() };
}

template <>
QVector2D convertFromJson<QVector2D>(const QJsonValue &json)
{
    const QJsonArray pair = pairOf(json);
    return { float(pair.at(0).toDouble()), float(pair.at(1).toDouble()) };
}

template <>
QJsonValue convertToJson<QVector2D>(const QVector2D &value)
{
    return QJsonArray { double(value.x()), double(value.y()) };
}

template <>
QGeoCoordinate convertFromJson<QGeoCoordinate>(const QJsonValue &json)
{
    if (json.isNull()) {
        return {};
    }
    const QJsonObject object = json.toObject();
    return { object.value(jsonkeys::latitude).toDouble(),
             object.value(jsonkeys::longitude).toDouble() };
}

template <>
QJsonValue convertToJson<QGeoCoordinate>(const QGeoCoordinate &value)
{
    if (!value.isValid()) {
        return QJsonValue::Null;
    }
    return QJsonObject { { jsonkeys::latitude, value.latitude() },
                         { jsonkeys::longitude, value.longitude() } };
}

template <>
QFont convertFromJson<QFont>(const QJsonValue &json)
{
    const QJsonObject object = json.toObject();
    QFont font(object.value(jsonkeys::fontFamily).toString());
    // A size of -1 belongs to fonts that are measured in points, and Qt refuses to set it.
    const int pixelSize = object.value(jsonkeys::fontPixelSize).toInt();
    if (pixelSize > 0) {
        font.setPixelSize(pixelSize);
    }
    qtcompat::setStoredFontWeight(font, object.value(jsonkeys::fontWeight).toInt());
    const int capitalization = object.value(jsonkeys::fontCapitalization).toInt();
    if (capitalization >= QFont::MixedCase && capitalization <= QFont::Capitalize) {
        font.setCapitalization(QFont::Capitalization(capitalization));
    }
    font.setItalic(object.value(jsonkeys::fontItalic).toBool());
    font.setLetterSpacing(QFont::AbsoluteSpacing,
                          object.value(jsonkeys::fontLetterSpacing).toDouble());
    font.setWordSpacing(object.value(jsonkeys::fontWordSpacing).toDouble());
    return font;
}

template <>
QJsonValue convertToJson<QFont>(const QFont &value)
{
    return QJsonObject {
        { jsonkeys::fontFamily, value.family() },
        { jsonkeys::fontPixelSize, value.pixelSize() },
        { jsonkeys::fontWeight, qtcompat::storedFontWeight(value) },
        { jsonkeys::fontCapitalization, int(value.capitalization()) },
        { jsonkeys::fontItalic, value.italic() },
        { jsonkeys::fontLetterSpacing, value.letterSpacing() },
        { jsonkeys::fontWordSpacing, value.wordSpacing() },
    };
}

} // namespace vo::data
