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
    reading(tag, json, value);
    writing(tag, value, json);
}

} // namespace

class tst_JsonConversion : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void valuesAndJsonCorrespond_data()
    {
        const auto object = R"({"a": [1, null], "lat": 91})"_json;
        const auto coordinate = R"({"lat": 48.2, "lon": 16.37})"_json;
        const QDateTime moment(QDate(2024, 2, 29), QTime(23, 59, 1), Qt::UTC);
        constexpr auto least = std::numeric_limits<qint64>::min();
        QTest::addColumn<Check>("check");
        both<QString>("text", "ä€"_s, "ä€"_s);
        both<int>("least int", std::numeric_limits<int>::min(), -2147483648.0);
        both<qint64>("2^53", 9007199254740992, qint64(9007199254740992));
        both<qint64>("least qint64", least, -9223372036854775808.0);
        both<QColor>("colour", QColor(1, 2, 3), "#010203"_s);
        both<QDate>("date", QDate(2024, 2, 29), "2024-02-29"_s);
        both<QDateTime>("moment", moment, "2024-02-29T23:59:01Z"_s);
        both<QUrl>("URL", QUrl("http://a.test/b c?d=%2F"_s), "http://a.test/b c?d=%2F"_s);
        both<QStringList>("texts", { "b"_s, QString(), "a"_s }, QJsonArray { "b"_s, ""_s, "a"_s });
        both<QGeoCoordinate>("coordinate", { 48.2, 16.37 }, coordinate);
        both<QGeoCoordinate>("no coordinate", {}, QJsonValue::Null);
        reading<int>("text of a number", "12"_s, 12);
        reading<int>("rounds to too large an int", 2147483647.9, 0);
        reading<int>("just too small for an int", -2147483649.0, 0);
        reading<qint64>("just too large for a qint64", 9223372036854775808.0, 0);
        reading<QPointF>("point out of range", QJsonArray { 1e300, -2147483649.0 }, { 0, 0 });
        reading<QSize>("size of three numbers", QJsonArray { 1, 2, 3 }, { 0, 0 });
        reading<QColor>("colour with alpha", "#80ff0000"_s, QColor(255, 0, 0, 128));
        reading<QDate>("no such day", "2023-02-29"_s, QDate());
        reading<QDateTime>("offset", "2024-03-01T01:59:01+02:00"_s, moment);
        reading<QStringList>("list of other things", QJsonArray { 1, "a"_s }, { QString(), "a"_s });
        reading<QGeoCoordinate>("latitude out of range", object, QGeoCoordinate());
        writing<QColor>("transparent", QColor(255, 0, 0, 0), "#00ff0000"_s);
        writing<QDateTime>("offset and milliseconds", moment.addMSecs(900).toOffsetFromUtc(7200),
                           "2024-02-29T23:59:01Z"_s);
    }
    void valuesAndJsonCorrespond()
    {
        QFETCH(Check, check);
        check();
    }

    void fontsHaveOneFormOnBothQtVersions()
    {
        const LogCapture log;
        auto json = R"({"family": "Liberation Sans", "pixelSize": 17, "italic": true,
                        "capitalization": 3, "letterSpacing": 1.5, "wordSpacing": -2})"_json;
        for (const int weight : { 0, 25, 50, 75, 87 }) {
            json.insert("weight"_s, weight);
            QCOMPARE(convertToJson(convertFromJson<QFont>(json)), QJsonValue(json));
        }
        const auto odd = R"({"weight": 100000, "pixelSize": "large", "capitalization": 99})"_json;
        QCOMPARE(convertFromJson<QFont>(odd).capitalization(), QFont::MixedCase);
        QCOMPARE(log.lines(), QStringList());
    }

    void comparisonIsRelative()
    {
        QVERIFY(compare(0.0, -0.0) && !compare(0.0, 5e-324));
        QVERIFY(compare(1.0, 1.0 + 5e-13) && !compare(1.0, 1.0 + 5e-12));
        QVERIFY(!compare(std::nan(""), std::nan("")) && !compare(1.0, HUGE_VAL));
        QVERIFY(compare(1.0F, 1.0F + 5e-6F) && !compare(1.0F, 1.0F + 5e-5F));
        QVERIFY(valuesEqual(QVariant(1), QVariant(1.0))
                && !valuesEqual(QVariant(1), QVariant("1"_s)));
        QVERIFY(!valuesEqual(QDateTime(), QDateTime::fromMSecsSinceEpoch(0)));
    }
};

QTEST_MAIN(tst_JsonConversion)
#include "tst_jsonconversion.moc"
