// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/recordfixture.h"

#include <vorrel/data/changefeed/linesplitter_p.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

class tst_ChangeRecords : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void linesAreTheSameHoweverTheyArriveInPieces()
    {
        const auto seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        for (int round = 0; round < 300; ++round) {
            QByteArray stream;
            QByteArray lines;
            LineSplitter splitter(4);
            for (int piece = random.bounded(50); piece >= 0; --piece) {
                QByteArray bytes;
                for (int size = random.bounded(9); size > 0; --size) {
                    bytes += "\n\n\r{\"\xc3\xa4"[random.bounded(7)];
                }
                splitter.append(bytes);
                stream += bytes;
                while (const auto line = splitter.takeLine()) {
                    lines += *line + '\n';
                }
            }
            const QByteArray whole = stream.left(stream.lastIndexOf('\n') + 1);
            QVERIFY2(lines == whole, qPrintable(QStringLiteral("seed %1").arg(seed)));
            QCOMPARE(splitter.isTooLong(), stream.size() - whole.size() > 4);
        }
    }

    void aRecordSaysWhatIsNew_data()
    {
        QTest::addColumn<QString>("record");
        QTest::addColumn<QStringList>("log");
        QTest::addColumn<QString>("sequence");
        const auto row = [](const char *record, const QStringList &log, const char *sequence) {
            QTest::newRow(record) << QString::fromLatin1(record) << log
                                  << QString::fromLatin1(sequence);
        };
        row(R"({"seq":42,"id":"n","changes":[{"rev":"1-n"}]})", "n:1-n|new n"_lines, "42");
        row(R"({"seq":"4-x ","id":"n","changes":[{},{"rev":"12-n"}]})", "n:12-n"_l, "4-x");
        row(R"({"seq":9007199254740992,"id":""})", {}, "9007199254740992");
        row(R"({"seq":1e300,"id":"a","changes":[{"rev":"1-a"}]})", {}, "1-a");
        row(R"({"seq":44,"id":"n","changes":[]})", {}, "44");
        row(R"({"seq":44,"id":"a","changes":[{"rev":"1-a"}],"deleted":true})", {}, "44");
    }
    void aRecordSaysWhatIsNew()
    {
        QFETCH(QString, record);
        RecordFixture scene;
        scene.monitor->handle("a"_s, "1-a"_s);
        scene.create("a"_s, "1-a"_s);
        scene.monitor->log.clear();
        scene.monitor->handle(record);
        QTEST(scene.monitor->log, "log");
        QTEST(scene.monitor->lastSequence(), "sequence");
        QCOMPARE(!scene->loadedDocument("a"_s), record.contains("deleted"_s));
    }

    void recordsWaitForTheEndOfASave()
    {
        RecordFixture scene;
        scene.startSaving();
        for (const QString &id : "a b c"_l) {
            scene.monitor->handle(id, "2-"_s + id);
            QVERIFY(scene.monitor->log.isEmpty() && scene.monitor->lastSequence().isEmpty());
        }
        connect(scene.monitor, &ChangeFeedMonitor::newRevision, this, [&](const QString &id) {
            if (id == "b"_s) {
                scene.startSaving();
            }
        });
        QVERIFY(scene.finishSaving());
        scene.monitor->handle("d"_s, "2-d"_s);
        QCOMPARE(scene.monitor->log, "a:2-a b:2-b"_l);
        // An endless one does not fill the memory.
        for (int i = 0; i < 100000; ++i) {
            scene.monitor->handle("d"_s, "3-"_s + QString::number(i));
        }
        QVERIFY(scene.finishSaving());
        QCOMPARE(scene.monitor->log, "a:2-a b:2-b c:2-c d:3-99998 d:3-99999"_l);
        QCOMPARE(scene.monitor->lastSequence(), "3-99999"_s);
    }

    void aDocumentOfTheCacheIsAskedFor_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *rest, const QString &outcome) {
            QTest::newRow(rest) << QByteArray(R"({"rows":[{"id":"a",)") + rest + "}]}" << outcome;
        };
        row(R"("value":{"rev":"1-a"})", "cached"_s);
        row(R"("value":{"rev":"2-a"})", "dropped"_s);
        row(R"("value":{"rev":"2-a","deleted":true})", "removed"_s);
        row(R"("error":"not_found")", "cached"_s);
    }
    void aDocumentOfTheCacheIsAskedFor()
    {
        QFETCH(QByteArray, answer);
        RecordFixture scene;
        scene->documentCache()->insert("a"_s, R"({"_id":"a","_rev":"1-a","type":"tag"})"_json);
        QVERIFY(scene.load("a"_s));
        scene.couch().answerNext(answer);
        for (int round = 0; round < 2; ++round) {
            scene.clock.advance(5s);
            processEvents();
        }
        QCOMPARE(scene.couch().calls().size(), 1);
        QCOMPARE(scene.couch().calls().constLast().keys(), "a"_l);
        const QString here = scene->documentCache()->contains("a"_s) ? "cached"_s : "dropped"_s;
        QTEST(scene->isLoaded("a"_s) ? here : "removed"_s, "outcome");
    }
};

QTEST_GUILESS_MAIN(tst_ChangeRecords)
#include "tst_changerecords.moc"
