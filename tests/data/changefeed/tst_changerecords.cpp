// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <vorrel/data/changefeed/basechangefeedmonitor.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QJsonArray>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

/// A monitor that gets its records from the test, and notes what it says.
class TestMonitor : public BaseChangeFeedMonitor
{
public:
    explicit TestMonitor(Context *context)
        : BaseChangeFeedMonitor(context->database(), context)
    {
        connect(this, &ChangeFeedMonitor::newRevision, this,
                [this](const QString &id, const QString &rev) { log << "rev "_s + id + rev; });
        connect(this, &ChangeFeedMonitor::newDocument, this,
                [this](const QString &id) { log << "doc "_s + id; });
    }
    void reportError(Context * /*context*/) override { }
    void handle(const QString &id, const QString &revision)
    {
        handleRecord({ { "seq"_s, revision },
                       { "id"_s, id },
                       { "changes"_s, QJsonArray { QJsonObject { { "rev"_s, revision } } } } });
    }
    using BaseChangeFeedMonitor::handleRecord;
    QStringList log;
};

TestMonitor *monitorOfTest = nullptr;

/// Documents on a database that a TestMonitor follows.
struct Scene : ContextFixture
{
    TestMonitor &follow()
    {
        ChangeFeedMonitor::registerType(
            Context::PollingMonitor, [](const QString &, Context *c) -> ChangeFeedMonitor * {
                return monitorOfTest = new TestMonitor(c);
            });
        context()->setChangeFeedMonitorType(Context::PollingMonitor);
        context()->setDatabase("followed"_s);
        return *monitorOfTest;
    }
    void call(const char *slot) const { QMetaObject::invokeMethod(context(), slot); }

    ManualClock clock;
    LogCapture lines;
    TestMonitor &monitor = follow();
};

} // namespace

class tst_ChangeRecords : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aRecordSaysWhatIsNew_data()
    {
        QTest::addColumn<QString>("record");
        QTest::addColumn<QStringList>("log");
        QTest::addColumn<QString>("sequence");
        const auto row = [](const char *name, const char *record, const QStringList &log,
                            const char *sequence = "before") {
            QTest::newRow(name) << QString::fromUtf8(record) << log << QString::fromUtf8(sequence);
        };
        const QString known = "rev a1-a"_s;
        row("first", R"({"seq":42,"id":"n","changes":[{"rev":"1-n"}]})", { "rev n1-n"_s, "doc n"_s },
            "42");
        row("later", R"({"seq":"43-x ","id":"n","changes":[{"rev":"1-n"},{"rev":"12-n"}]})",
            { "rev n12-n"_s }, "43-x");
        row("known", R"({"seq":9007199254740992,"id":"a","changes":[{"rev":"1-a"}]})", {},
            "9007199254740992");
        row("beyond 64 bits", R"({"seq":1e300,"id":"a","changes":[{"rev":"1-a"}]})", {});
        row("array as sequence", R"({"seq":[7],"id":"a","changes":[{"rev":"1-a"}]})", {});
        row("null as sequence", R"({"seq":null,"id":"a","changes":[{"rev":"1-a"}]})", {});
        row("end of a feed", R"({"last_seq":"50-x","pending":0})", {});
        row("no id", R"({"seq":44,"changes":[{"rev":"1-n"}]})", {}, "44");
        row("no changes", R"({"seq":44,"id":"n","changes":[]})", {}, "44");
        row("strange changes", R"({"seq":44,"id":"n","changes":"1-n"})", {}, "44");
    }
    void aRecordSaysWhatIsNew()
    {
        QFETCH(QString, record);
        Scene scene;
        scene.monitor.handleRecord(
            R"({"seq":"before","id":"a","changes":[{"rev":"1-a"}]})"_json);
        scene.monitor.log.clear();
        scene.monitor.handleRecord(QJsonDocument::fromJson(record.toUtf8()).object());
        QTEST(scene.monitor.log, "log");
        QTEST(scene.monitor.lastSequence(), "sequence");
    }

    void aDeletionRemovesTheDocumentEachTime()
    {
        Scene scene;
        for (int round = 0; round < 2; ++round) {
            scene.create("a"_s, "1-a"_s);
            scene.monitor.handleRecord(
                R"({"id":"a","changes":[{"rev":"2-a"}],"deleted":true})"_json);
            processEvents();
            QVERIFY(!scene->isLoaded("a"_s));
        }
        QCOMPARE(scene.monitor.log.count("rev a2-a"_s), 1);
    }

    void recordsWaitForTheEndOfASave()
    {
        Scene scene;
        scene.call("saveStarted");
        for (const char *id : { "a", "b", "c" }) {
            scene.monitor.handle(QString::fromLatin1(id), "2-x"_s + QString::fromLatin1(id));
        }
        QVERIFY(scene.monitor.log.isEmpty() && scene.monitor.lastSequence().isEmpty());
        connect(&scene.monitor, &ChangeFeedMonitor::newRevision, this, [&](const QString &id) {
            if (id == "b"_s) {
                scene.call("saveStarted");
            }
        });
        scene.call("saveFinished");
        processEvents();
        scene.monitor.handle("d"_s, "2-xd"_s);
        QCOMPARE(scene.monitor.log, "rev a2-xa|rev b2-xb"_lines);
        scene.call("saveFinished");
        processEvents();
        QCOMPARE(scene.monitor.log, "rev a2-xa|rev b2-xb|rev c2-xc|rev d2-xd"_lines);
        QCOMPARE(scene.monitor.lastSequence(), "2-xd"_s);
    }

    void anEndlessSaveDoesNotFillTheMemory()
    {
        Scene scene;
        scene.call("saveStarted");
        scene.monitor.handleRecord(R"({"id":"a","changes":[{"rev":"2-a"}],"deleted":true})"_json);
        for (int i = 0; i < 100000; ++i) {
            scene.monitor.handle(QLatin1String(i % 2 ? "a" : "b"), "3-"_s + QString::number(i));
        }
        scene.call("saveFinished");
        processEvents();
        QCOMPARE(scene.monitor.log, "rev a2-a|rev b3-99998|rev a3-99999"_lines);
    }

    void aDocumentOfTheCacheIsAskedFor_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const QByteArray &value, const QString &outcome) {
            QTest::newRow(name) << R"({"rows":[{"id":"a","key":"a",)" + value + "}]}" << 200 << outcome;
        };
        row("same", R"("value":{"rev":"1-a"})", "cached"_s);
        row("newer", R"("value":{"rev":"2-a"})", "dropped"_s);
        row("deleted", R"("value":{"rev":"2-a","deleted":true})", "removed"_s);
        row("unknown", R"("error":"not_found")", "cached"_s);
        QTest::newRow("failure") << QByteArray() << 500 << "asked again"_s;
        QTest::newRow("portal") << QByteArray("<html>") << 200 << "asked again"_s;
    }
    void aDocumentOfTheCacheIsAskedFor()
    {
        QFETCH(QByteArray, answer);
        QFETCH(int, status);
        Scene scene;
        scene->documentCache()->insert("a"_s, R"({"_id":"a","_rev":"1-a","type":"tag"})"_json);
        QVERIFY(scene.load("a"_s) && scene.couch().calls().isEmpty());
        scene.couch().answerNext(answer, status);
        scene.clock.advance(5s);
        processEvents();
        QCOMPARE(scene.couch().calls().constLast().keys(), "a"_l);
        const bool isCached = scene->documentCache()->contains("a"_s);
        scene.clock.advance(5s);
        processEvents();
        const QString outcome = scene.couch().calls().size() == 2 ? "asked again"_s
            : !scene->isLoaded("a"_s)                             ? "removed"_s
            : isCached                                            ? "cached"_s
                                                                  : "dropped"_s;
        QTEST(outcome, "outcome");
    }
};

QTEST_GUILESS_MAIN(tst_ChangeRecords)
#include "tst_changerecords.moc"
