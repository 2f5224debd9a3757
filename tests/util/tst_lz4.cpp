// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/util/lz4.h>

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

using vo::util::LZ4;

class tst_LZ4 : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void unpacksExactlyWhatItPacked()
    {
        for (const int size : { 1, 12, 13, 1000, 70000, 5000000 }) {
            QByteArray mixed(size, 'x');
            QRandomGenerator::global()->generate(mixed.begin(), mixed.begin() + size / 2);
            QCOMPARE(LZ4::decompress(LZ4::compress(mixed), size), mixed);
        }

        const QByteArray block = LZ4::compress(QByteArray(1000, 'x'));
        for (const int size : { -1, 0, 1, 999, 1001, 0x7fffffff }) {
            QVERIFY(LZ4::decompress(block, size).isEmpty());
        }
        for (int length = 0; length < block.size(); ++length) {
            QVERIFY(LZ4::decompress(block.left(length), 1000).isEmpty());
        }
        QVERIFY(LZ4::decompress(block + 'x', 1000).isEmpty());
        // A match that begins before the first byte
        QVERIFY(LZ4::decompress(QByteArray("\x1f\x61\xff\xff\xff", 5), 255).isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_LZ4)
#include "tst_lz4.moc"
