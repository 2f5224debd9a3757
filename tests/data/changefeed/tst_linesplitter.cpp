// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/linesplitter_p.h>

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

using vo::data::LineSplitter;

class tst_LineSplitter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void linesAreTheSameHoweverTheyArriveInPieces()
    {
        const auto seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        for (int round = 0; round < 300; ++round) {
            QByteArray stream;
            for (int i = random.bounded(200); i > 0; --i) {
                stream += "\n\n\r{\"\xc3\xa4"[random.bounded(7)];
            }
            LineSplitter splitter(4);
            QByteArray lines;
            for (int at = 0; at < stream.size();) {
                const int size = random.bounded(9);
                splitter.append(stream.mid(at, size));
                at += size;
                // Not all that is there is taken before more comes.
                for (int wanted = random.bounded(4); wanted > 0; --wanted) {
                    if (const auto line = splitter.takeLine()) {
                        lines += *line + '\n';
                    }
                }
            }
            while (const auto line = splitter.takeLine()) {
                lines += *line + '\n';
            }
            const QByteArray whole = stream.left(stream.lastIndexOf('\n') + 1);
            QVERIFY2(lines == whole, qPrintable(QStringLiteral("seed %1").arg(seed)));
            QCOMPARE(splitter.isTooLong(), stream.size() - whole.size() > 4);
        }
    }
};

QTEST_APPLESS_MAIN(tst_LineSplitter)
#include "tst_linesplitter.moc"
