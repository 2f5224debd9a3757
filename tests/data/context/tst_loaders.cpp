// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <vorrel/data/context/cacheloader.h>
#include <vorrel/data/context/couchdbloader.h>
#include <vorrel/data/context/documentcache.h>

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

const QString failure = "vorrel.data.loadqueue|critical|Document load request failed"_s;

/// A loader without a queue, and what it said, in order: "loaded a", "notFound b", "failed c".
template <typename T>
struct LoaderFixture : ContextFixture
{
    LoaderFixture()
    {
        const auto note = [this](const QString &answer) {
            answers << answer;
            if (answer == deadly) {
                destroyContext();
            }
        };
        QObject::connect(loader, &Loader::loaded, [=](auto &id) { note("loaded "_s + id); });
        QObject::connect(loader, &Loader::notFound, [=](auto &id) { note("notFound "_s + id); });
        QObject::connect(loader, &Loader::failed, [=](auto &id) { note("failed "_s + id); });
    }

    /// Offers \p ids, and answers what comes of it. True if the loader takes them all.
    bool offer(const QStringList &ids)
    {
        const bool taken = std::all_of(ids.begin(), ids.end(),
                                       [this](const QString &id) { return loader->load(id); });
        processEvents();
        return taken;
    }

    void cache(const QString &id, const QByteArray &entry)
    {
        context()->documentCache()->insert(id, entry);
    }

    LogCapture log;
    ManualClock clock;
    QPointer<Loader> loader { new T(context()) };
    QStringList answers;
    QString deadly; // the answer that destroys the Context
};

using CacheFixture = LoaderFixture<CacheLoader>;
using DatabaseFixture = LoaderFixture<CouchDBLoader>;

} // namespace

class tst_Loaders : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theCacheAnswersLaterAndOnlyWhatItHolds()
    {
        CacheFixture fixture;
        QVERIFY(!fixture.loader->load("a"_s));
        fixture.cache("a"_s, R"({"_id":"a"})");
        QVERIFY(fixture.loader->load("a"_s) && fixture.answers.isEmpty());
        processEvents();
        QCOMPARE(fixture.answers, "loaded a"_lines);
        QVERIFY(fixture.loader->load("a"_s));
        fixture->setDatabase("other"_s); // which gets nothing of the former one
        processEvents();
        QCOMPARE(fixture.answers.constLast(), "failed a"_s);
        Context closed; // no database, so no cache
        QVERIFY(!CacheLoader(&closed).load("a"_s));
    }

    void theDatabaseIsAskedInsteadOfAnEntryThatIsNotUsable()
    {
        const QByteArray fine = R"({"_id":"a","type":"tag","_rev":"0-x"})";
        for (const QByteArray &entry :
             QByteArrayList { "[]", R"({"type":"tag"})", R"({"_id":"b","type":"tag"})", fine }) {
            CacheFixture fixture;
            fixture.store("a"_s);
            fixture.cache("a"_s, entry);
            if (entry == fine) {
                fixture->setContentFetchPolicy(Context::BypassDocumentCachePolicy);
            }
            const LinkedDocument *document = fixture.load("a"_s);
            QVERIFY(document && !document->wasCached());
            QCOMPARE(document->revision(), "1-a"_s);
            QCOMPARE(fixture->documentCache()->find("a"_s).value("_rev"_s), "1-a"_s);
        }
    }

    void theDatabaseIsAskedInBatchesThatFollowEachOther()
    {
        DatabaseFixture fixture;
        const QList<FakeCouch::Call> &calls = fixture.couch().calls();
        QStringList ids = "b/ü gone"_l;
        for (int i = 2; i < 51; ++i) {
            ids << QString::number(i);
        }
        fixture.store("b/ü"_s);
        fixture.couch().hold();
        QVERIFY(fixture.offer(ids.mid(0, 30)) && fixture.offer(ids.mid(30)));
        QCOMPARE(calls.size(), 1);
        fixture.couch().release();
        processEvents();
        QCOMPARE(calls.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(calls.at(i).keys(), ids.mid(qsizetype(25) * i, 25));
        }
        const QString path = "/%1/_all_docs?include_docs=true"_s.arg(fixture->database());
        QCOMPARE(calls.at(2).url, QUrl("http://couch.test:5984"_s + path));
        QCOMPARE(calls.at(2).verb + calls.at(2).body, QByteArray(R"(POST{"keys":["50"]})"));
        QCOMPARE(fixture.answers.size(), 51);
        QCOMPARE(fixture.answers.mid(0, 2), "loaded b/ü|notFound gone"_lines);
        QVERIFY(fixture->documentCache()->contains("b/ü"_s));
        QVERIFY(!fixture->documentCache()->contains("gone"_s));
    }

    void delaysGrowWithEachFailureAndEqualOnesLogOneLine()
    {
        DatabaseFixture fixture;
        fixture.store("a"_s);
        QObject::connect(fixture.loader, &Loader::failed,
                         [&](const QString &id) { fixture.loader->load(id); }); // as the queue does
        fixture.couch().failNext(2, 500);
        fixture.couch().breakNext(4, QNetworkReply::ConnectionRefusedError);
        fixture.couch().answerNext("{}");
        fixture.couch().answerNext("<html>");
        for (const QList<int> &delays :
             { QList<int> { 3, 13, 23, 33, 43, 53, 60, 60 }, { 3, 13 } }) {
            QVERIFY(fixture.offer("a"_l));
            for (const int delay : delays) {
                const auto count = fixture.couch().calls().size();
                fixture.clock.advance(std::chrono::seconds(delay) - 1ms);
                processEvents();
                QCOMPARE(fixture.couch().calls().size(), count);
                fixture.clock.advance(1ms);
                processEvents();
                QCOMPARE(fixture.couch().calls().size(), count + 1);
            }
            QCOMPARE(fixture.answers.constLast(), "loaded a"_s);
            QVERIFY(fixture.log.contains("loadqueue|info|Document load request succeeded after "
                                         "%1 failed attempts"_s.arg(delays.size())));
            fixture.couch().failNext(2, 503); // the success has ended the run
        }
        const QStringList lines = fixture.log.lines().filter(failure);
        QCOMPARE(lines.size(), 4);
        QVERIFY(lines.at(0).endsWith(" with HTTP status 500 InternalServerError"_s));
        QVERIFY(lines.at(1).endsWith(" with network error ConnectionRefusedError"_s));
        QVERIFY(lines.at(2).endsWith(
            ": the answer with HTTP status 200 lacks documents that were asked for"_s));
        QVERIFY(lines.at(3).endsWith(" with HTTP status 503 ServiceUnavailableError"_s));
    }

    void faultyAnswersLoseNothing_data()
    {
        QTest::addColumn<QStringList>("expected"); // for a and b
        const auto rows = [](const QString &form, const QStringList &parts, const char *expected) {
            for (const QString &part : parts) { // the body of the answer is the name of the row
                QString body = QString(form).replace("%1"_s, part);
                body.replace("$a"_s, R"({"key":"a","doc":{"_id":"a"}})"_s);
                body.replace("$b"_s, R"({"key":"b","doc":{"_id":"b"}})"_s);
                QTest::newRow(qPrintable(body)) << QString::fromLatin1(expected).split("|"_s);
            }
        };
        const QString form = R"({"rows":[%1,$b]})"_s;
        rows("%1"_s, "|<html>Log in</html>|[$a]|{}|{\"rows\":[$a,$b]"_s.split("|"_s),
             "failed a|failed b");
        rows(R"({"rows":%1})"_s, R"({"a":{}}|null|[])"_lines, "failed a|failed b");
        rows(form, R"(null|1,"a",[]|{}|{"key":1,"doc":null})"_lines, "failed a|loaded b");
        rows(R"({"rows":[{"key":"a","doc":%1},$b]})"_s,
             R"("a"|1|[]|{}|{"_id":1}|{"_id":""}|{"_id":"b"}|{"_id":"z"})"_lines,
             "failed a|loaded b");
        rows(form,
             R"({"key":"a","error":"x"}|{"key":"a","value":{"deleted":true},"doc":null})"_lines,
             "loaded b|notFound a");
        rows(form, R"($a,$a|$a,{"key":"z","doc":{"_id":"z"}})"_lines, "loaded a|loaded b");
    }
    void faultyAnswersLoseNothing()
    {
        QFETCH(QStringList, expected);
        DatabaseFixture fixture;
        fixture.store("a"_s);
        fixture.store("b"_s);
        fixture.couch().answerNext(QTest::currentDataTag());
        QVERIFY(fixture.offer("a b"_l));
        fixture.answers.sort();
        QCOMPARE(fixture.answers, expected);
        const bool fails = expected.contains("failed a"_s);
        QCOMPARE(fixture.log.count(failure), fails ? 1 : 0);
        const QSharedPointer<DocumentCache> cache = fixture->documentCache();
        QCOMPARE(cache->contains("a"_s), expected.contains("loaded a"_s));
        QVERIFY(!cache->contains(""_s) && !cache->contains("z"_s));
        // The next request answers them, after the delay if there was a fault.
        QVERIFY(fixture.offer("a b"_l));
        QCOMPARE(fixture.answers.size(), fails ? 2 : 4);
        fixture.clock.advance(3s);
        processEvents();
        QCOMPARE(fixture.answers.mid(2), "loaded a|loaded b"_lines);
    }

    void idsFailWithoutAWayToTheDatabase()
    {
        const QStringList obstacles = "no-manager no-database no-http manager-dies"_l;
        for (const QString &obstacle : obstacles + "202 302 401 404 500"_l) {
            DatabaseFixture fixture;
            auto couch = std::make_unique<FakeCouch>();
            couch->answerNext(R"({"rows":[{"key":"a","doc":{"_id":"a"}}]})", obstacle.toInt());
            const bool hasManager = obstacle != "no-manager"_s;
            fixture->setNetworkAccessManager(hasManager ? couch.get() : nullptr);
            fixture->setDatabase(obstacle == "no-database"_s ? ""_s : "db"_s);
            fixture->setServiceUrl(QUrl(obstacle == "no-http"_s ? "file:///"_s : "http://a"_s));
            if (obstacles.contains(obstacle)) {
                couch->hold();
            }
            QVERIFY(fixture.offer("a b"_l));
            couch.reset();
            processEvents();
            QCOMPARE(fixture.answers, "failed a|failed b"_lines);
            QCOMPARE(fixture.log.count(failure), 1);
        }
    }

    void anotherDatabaseGetsNoAnswersOfTheFormerOne()
    {
        for (const QString &names : "other|other first"_lines) {
            DatabaseFixture fixture;
            fixture->setDatabase("first"_s);
            const QSharedPointer<DocumentCache> former = fixture->documentCache();
            fixture.store("a"_s);
            fixture.couch().hold();
            QVERIFY(fixture.offer("a gone"_l));
            for (const QString &name : names.split(QLatin1Char(' '))) {
                fixture->setDatabase(name);
            }
            fixture.couch().release();
            processEvents();
            const bool isBack = fixture->database() == "first"_s;
            QCOMPARE(fixture.answers,
                     isBack ? "loaded a|notFound gone"_lines : "failed a|failed gone"_lines);
            QCOMPARE(former->contains("a"_s), isBack);
            // The server did nothing wrong, so there is nothing to wait for.
            QVERIFY(fixture.offer("a"_l) && !fixture.log.contains(failure));
            QCOMPARE(fixture.answers.constLast(), "loaded a"_s);
        }
    }

    void mayDieAtAnyTime()
    {
        for (const QString &when : "loaded a|failed b"_lines) {
            CacheFixture fixture;
            fixture.cache("a"_s, R"({"_id":"a"})");
            fixture.cache("b"_s, "{}");
            fixture.deadly = when;
            QVERIFY(fixture.offer("a b"_l) && !fixture.loader);
        }
        for (const QString &when : "waiting|loaded a|notFound x|failed a"_lines) {
            DatabaseFixture fixture;
            fixture.store("a"_s);
            fixture.deadly = when;
            fixture.couch().failNext(when == "failed a"_s ? 1 : 0, 500);
            fixture.couch().hold();
            QVERIFY(fixture.offer("a x y"_l));
            delete (when == "waiting"_s ? fixture.loader.data() : nullptr);
            fixture.couch().release();
            processEvents();
            QVERIFY(!fixture.loader && fixture.couch().openCount() == 0);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Loaders)
#include "tst_loaders.moc"
