// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"

#include <vorrel/util/json.h>

#include <QtCore/QJsonArray>
#include <QtCore/QtEndian>
#include <QtTest/QTest>

using namespace vo::test;
using vo::util::json::fromBinaryData;

namespace {

// As Qt 5.15 has written it
const QByteArray sample = QByteArray::fromHex(
    "71626a7301000000080100000b000000f40000009402000001006100600000001400000038000000000000000000"
    "f83f00000000020068e403000000ac20200035000000000000000000904100000000000090c182010000aaffffff"
    "2100000001000000000000008b0200000b030000830300000205000002060000950f0000010062000c0000000100"
    "00000000000014120000010063000c00000000000000000000009515000008006c6f6e67206b6579000034000000"
    "030000003000000095020000010078001c00000003000000180000009b0200000100790001007a000c0000000c00"
    "0000821d000001000000ac2000009c7500883ce4377e0c00000074000000880000009c000000e0000000");

QByteArray words(const QList<quint32> &numbers)
{
    QByteArray bytes;
    for (const quint32 number : numbers) {
        const quint32 word = qToLittleEndian(number);
        bytes.append(reinterpret_cast<const char *>(&word), sizeof word);
    }
    return bytes;
}

} // namespace

class tst_BinaryJson : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsWhatQt5Writes()
    {
        const auto expected = R"({"a": [1.5, -3, true, false, null, "", "hä", "€ 5", 67108864,
            -67108864], "b": {}, "c": [], "long key": {"x": {"y": "z"}}, "€": 1e300})"_json;
        QCOMPARE(fromBinaryData(sample).object(), expected);
        // Edits of a document leave its texts in another order than its table.
        const QByteArray edited =
            words({ 0x736a6271, 1, 28, 4, 20, 0x420001, 0x410001, 0x20b, 0x18b });
        QCOMPARE(fromBinaryData(edited).array(), (QJsonArray { "A"_s, "B"_s }));
        const QByteArray shared = words({ 0x736a6271, 1, 28, 4, 20, 0x420001, 0, 0x18b, 0x18b });
        QVERIFY(fromBinaryData(shared).isNull()); // the way to make much out of little
    }

    void refusesDamage()
    {
        for (int length = 0; length < sample.size(); ++length) {
            QVERIFY(fromBinaryData(sample.left(length)).isNull());
        }
    }
};

QTEST_GUILESS_MAIN(tst_BinaryJson)
#include "tst_binaryjson.moc"
