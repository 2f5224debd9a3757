// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/logcapture.h"

#include <vorrel/data/properties/jsonconversion.h>

#include <QtCore/QJsonArray>
#include <QtTest/QTest>

#include <cmath>
#include <functional>
#include <limits>

using namespace vo::data;
using namespace vo::test;
using Check = std::function<void()>; // the tables hold values of many types
Q_DECLARE_METATYPE(Check)

namespace {

template <typename T>
void reading(const char *tag, const QJsonValue &json, const T &value)
{
    QTest::newRow(tag) << Check([=] { QCOMPARE(convertFromJson<T>(json), value); });
}

template <typename T>
void writing(const char *tag, const T &value, const QJsonValue &json)
{
    QTest::newRow(tag) << Check([=] { QCOMPARE(convertToJson<T>(value), json); });
}

template <typename T>
void both(const char *tag, const T &value, const QJsonValue &json)
{
    QTest::newRow(tag) << Check([=] {
        QCOMPARE(convertToJson<T>(value), json);
        QCOMPARE(convertFromJson<T>(json), value);
    });
}

QDateTime moment(const char *text)
{
    return QDateTime::fromString(QLatin1String(text), Qt::ISODate);
}

} // namespace

class tst_JsonConversion : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void valuesAndJsonCorrespond_data()
    {
        const auto object = R"({"a": [1, null]})"_json;
        const auto coordinate = R"({"lat": 48.2, "lon": 16.37})"_json;
        QTest::addColumn<Check>("check");
        both<QString>("text", "ä€"_s, "ä€"_s);
        both<int>("least int", std::numeric_limits<int>::min(), -2147483648.0);
        both<int>("largest int", std::numeric_limits<int>::max(), 2147483647);
        both<qint64>("2^53", 9007199254740992, qint64(9007199254740992));
        both<qint64>("least qint64", std::numeric_limits<qint64>::min(), -9223372036854775808.0);
        both<bool>("bool", true, true);
        both<float>("float", 0.1F, double(0.1F));
        both<double>("double", 0.1, 0.1);
        both<QColor>("colour", QColor(1, 2, 3), "#010203"_s);
        both<QDate>("date", QDate(2024, 2, 29), "2024-02-29"_s);
        both<QTime>("time", QTime(23, 59, 1), "23:59:01"_s);
        both<QDateTime>("moment", moment("2024-02-29T23:59:01Z"), "2024-02-29T23:59:01Z"_s);
        both<QUrl>("URL", QUrl("http://a.test/b c?d=%2F"_s), "http://a.test/b c?d=%2F"_s);
        both<QJsonObject>("object", object, object);
        both<QVariant>("variant", object.toVariantMap(), object);
        both<QStringList>("texts", { "b"_s, QString(), "a"_s }, QJsonArray { "b"_s, ""_s, "a"_s });
        both<QPoint>("point", { 1, -2 }, QJsonArray { 1, -2 });
        both<QPointF>("whole real point", { 1, -2 }, QJsonArray { 1, -2 });
        both<QSize>("size", { 3, 4 }, QJsonArray { 3, 4 });
        both<QVector2D>("vector", { 0.5F, -0.25F }, QJsonArray { 0.5, -0.25 });
        both<QGeoCoordinate>("coordinate", { 48.2, 16.37 }, coordinate);
        both<QGeoCoordinate>("no coordinate", {}, QJsonValue::Null);
    }
    void valuesAndJsonCorrespond()
    {
        QFETCH(Check, check);
        check();
    }

    void readingTakesWhatItCan_data()
    {
        const auto object = R"({"lat": 91})"_json;
        QTest::addColumn<Check>("check");
        reading<int>("text of a number", "12"_s, 12);
        reading<int>("text of too large a number", "5000000000"_s, 0);
        reading<int>("object as int", object, 0);
        reading<int>("just too large for an int", 2147483648.0, 0);
        reading<int>("rounds to too large an int", 2147483647.9, 0);
        reading<int>("just too small for an int", -2147483649.0, 0);
        reading<qint64>("just too large for a qint64", 9223372036854775808.0, 0);
        reading<qint64>("text of a large number", "9223372036854775807"_s,
                        std::numeric_limits<qint64>::max());
        reading<double>("text as double", "1.5"_s, 1.5);
        reading<float>("object as float", object, 0.0F);
        reading<bool>("text as bool", "true"_s, true);
        reading<QString>("number as text", 12, "12"_s);
        reading<QString>("object as text", object, QString());
        reading<QPointF>("fractions of a point", QJsonArray { 1.9, -1.9 }, { 1, -1 });
        reading<QPointF>("point out of range", QJsonArray { 1e300, -2147483648.9 },
                         { 0, -2147483648.0 });
        reading<QPoint>("point of texts", QJsonArray { "1"_s, 2 }, { 0, 2 });
        reading<QSize>("size of three numbers", QJsonArray { 1, 2, 3 }, { 0, 0 });
        reading<QColor>("colour with alpha", "#80ff0000"_s, QColor(255, 0, 0, 128));
        reading<QDate>("no such day", "2023-02-29"_s, QDate());
        reading<QDateTime>("offset", "2024-03-01T01:59:01+02:00"_s, moment("2024-02-29T23:59:01Z"));
        reading<QStringList>("list of other things", QJsonArray { 1, "a"_s }, { QString(), "a"_s });
        reading<QGeoCoordinate>("latitude out of range", object, QGeoCoordinate());
        writing<QColor>("half transparent", QColor(255, 0, 0, 128), "#ff0000"_s);
        writing<QColor>("transparent", QColor(255, 0, 0, 0), "#00ff0000"_s);
        writing<QPointF>("fractions are written", { 1.5, -0.25 }, QJsonArray { 1.5, -0.25 });
        writing<QDateTime>("offset and milliseconds", moment("2024-03-01T01:59:01.9+02:00"),
                           "2024-02-29T23:59:01Z"_s);
        writing<QDateTime>("no moment", {}, QString());
        writing<QGeoCoordinate>("altitude", { 1, 2, 3 }, R"({"lat": 1, "lon": 2})"_json);
    }
    void readingTakesWhatItCan() { valuesAndJsonCorrespond(); }

    void fontsHaveOneFormOnBothQtVersions()
    {
        auto json = R"({"family": "Liberation Sans", "pixelSize": 17, "italic": true,
                        "capitalization": 3, "letterSpacing": 1.5, "wordSpacing": -2})"_json;
        QFont font("Liberation Sans"_s);
        font.setPixelSize(17);
        font.setItalic(true);
        font.setCapitalization(QFont::SmallCaps);
        font.setLetterSpacing(QFont::AbsoluteSpacing, 1.5);
        font.setWordSpacing(-2);
        const std::vector<std::pair<int, int>> weights {
            { QFont::Thin, 0 },  { QFont::Light, 25 }, { QFont::Normal, 50 },
            { QFont::Bold, 75 }, { QFont::Black, 87 },
        };
        for (const auto &[weight, stored] : weights) {
            font.setWeight(QFont::Weight(weight));
            json.insert("weight"_s, stored);
            QCOMPARE(convertToJson(font), QJsonValue(json));
            QCOMPARE(convertToJson(convertFromJson<QFont>(json)), QJsonValue(json));
        }
    }

    void fontsAreReadWithoutComplaints()
    {
        const LogCapture log;
        const QFont inPoints = convertFromJson<QFont>(convertToJson(QFont("A"_s, 12)));
        QCOMPARE(inPoints.family(), "A"_s);
        QCOMPARE(inPoints.weight(), QFont().weight());
        const QFont odd = convertFromJson<QFont>(
            R"({"weight": 100000, "pixelSize": "large", "capitalization": 99})"_json);
        QCOMPARE(odd.capitalization(), QFont::MixedCase);
        QVERIFY(odd.weight() >= int(QFont::Black));
        QCOMPARE(log.lines(), QStringList());
    }

    void comparisonIsRelative()
    {
        const double infinity = std::numeric_limits<double>::infinity();
        QVERIFY(compare(0.0, -0.0));
        QVERIFY(!compare(0.0, 5e-324));
        QVERIFY(compare(0.3, 0.1 + 0.2));
        QVERIFY(compare(1.0, 1.0 + 5e-13));
        QVERIFY(!compare(1.0, 1.0 + 5e-12));
        QVERIFY(!compare(1e-300, -1e-300));
        QVERIFY(!compare(1e308, -1e308));
        QVERIFY(!compare(std::nan(""), std::nan("")));
        QVERIFY(!compare(infinity, infinity));
        QVERIFY(!compare(1.0, infinity));
        QVERIFY(compare(1.0F, 1.0F + 5e-6F));
        QVERIFY(!compare(1.0F, 1.0F + 5e-5F));
        QVERIFY(compare(QPointF(0.3, 1), QPointF(0.1 + 0.2, 1)));
        QVERIFY(!compare(QPointF(0.3, 1), QPointF(0.31, 1)));
        QVERIFY(!compare(QPointF(0.3, 1), QPointF(0.3, 1.1)));
    }

    void equalityIsThatOfTheStoredForm()
    {
        const QDateTime noon = moment("2024-06-01T12:00:00Z");
        QVERIFY(valuesEqual(noon, noon.toOffsetFromUtc(7200)));
        QVERIFY(valuesEqual(noon, noon.toLocalTime()));
        QVERIFY(!valuesEqual(noon, noon.addMSecs(1)));
        QVERIFY(valuesEqual(QDateTime(), QDateTime()));
        QVERIFY(!valuesEqual(QDateTime(), moment("1970-01-01T00:00:00Z")));
        QVERIFY(valuesEqual(QVariant(1), QVariant(1.0)));
        QVERIFY(!valuesEqual(QVariant(1), QVariant("1"_s)));
        QVERIFY(!valuesEqual(QVariant(0.3), QVariant(0.1 + 0.2)));
    }
};

QTEST_MAIN(tst_JsonConversion)
#include "tst_jsonconversion.moc"
