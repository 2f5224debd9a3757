// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/loaderfixture.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <vorrel/core/request.h>
#include <vorrel/data/context/couchdbloader.h>
#include <vorrel/data/context/documentcache.h>

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

struct DatabaseFixture : LoaderFixture
{
    DatabaseFixture()
        : LoaderFixture([](Context *context) { return new CouchDBLoader(context); })
    { }

    LogCapture log;
    ManualClock clock;
};

const QString failure = "vorrel.data.loadqueue|critical|Document load request failed"_s;

} // namespace

class tst_CouchDBLoader : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void asksForDocumentsByTheirIds()
    {
        DatabaseFixture fixture;
        fixture.store("b/ü"_s);
        QVERIFY(fixture.load("b/ü a"_l));
        QVERIFY(fixture.couch().calls().isEmpty());
        processEvents();
        QCOMPARE(fixture.answers, "loaded b/ü|notFound a"_lines);
        QCOMPARE(fixture.couch().calls().size(), 1);
        const FakeCouch::Call call = fixture.couch().calls().constFirst();
        QCOMPARE(call.verb, QByteArray("POST"));
        QCOMPARE(
            call.url.toString(),
            "http://couch.test:5984/%1/_all_docs?include_docs=true"_s.arg(fixture->database()));
        QCOMPARE(QString::fromUtf8(call.body), "{\"keys\":[\"b/ü\",\"a\"]}"_s);
        QVERIFY(fixture->documentCache()->contains("b/ü"_s));
        QVERIFY(!fixture->documentCache()->contains("a"_s));
    }

    void batchesOf25FollowEachOther()
    {
        DatabaseFixture fixture;
        QStringList ids;
        for (int i = 0; i < 51; ++i) {
            ids << QString::number(i);
        }
        int overlapping = 0;
        fixture.couch().setResponder([&](const FakeCouch::Call &) {
            overlapping += fixture.couch().openCount();
            return std::nullopt;
        });
        fixture.couch().hold();
        QVERIFY(fixture.load(ids.mid(0, 30)));
        processEvents();
        QVERIFY(fixture.load(ids.mid(30)));
        processEvents();
        QCOMPARE(fixture.couch().calls().size(), 1);
        fixture.couch().release();
        QTRY_COMPARE(fixture.answers.size(), 51);
        QCOMPARE(fixture.couch().calls().size(), 3);
        QCOMPARE(fixture.couch().calls().at(0).keys(), ids.mid(0, 25));
        QCOMPARE(fixture.couch().calls().at(1).keys(), ids.mid(25, 25));
        QCOMPARE(fixture.couch().calls().at(2).keys(), ids.mid(50));
        QCOMPARE(overlapping, 0);
    }

    void delaysGrowWithEachFailure()
    {
        DatabaseFixture fixture;
        fixture.store("a"_s);
        fixture.loadAgainWhatFails();
        int runs = 0;
        for (const QList<std::chrono::seconds> &delays :
             { QList<std::chrono::seconds> { 3s, 13s, 23s, 33s, 43s, 53s, 60s, 60s, 60s },
               QList<std::chrono::seconds> { 3s, 13s } }) { // a success ends the run
            fixture.couch().failNext(int(delays.size()), 500);
            QVERIFY(fixture.load("a"_l));
            processEvents();
            for (const std::chrono::seconds delay : delays) {
                const auto count = fixture.couch().calls().size();
                fixture.clock.advance(delay - 1ms);
                processEvents();
                QCOMPARE(fixture.couch().calls().size(), count);
                fixture.clock.advance(1ms);
                processEvents();
                QCOMPARE(fixture.couch().calls().size(), count + 1);
            }
            QCOMPARE(fixture.answers.constLast(), "loaded a"_s);
            QCOMPARE(fixture.log.count(failure), ++runs);
            QVERIFY(fixture.log.contains("loadqueue|info|Document load request succeeded after "
                                         "%1 failed attempts"_s.arg(delays.size())));
        }
    }

    void aRunOfEqualFailuresLogsOneLine()
    {
        DatabaseFixture fixture;
        fixture.loadAgainWhatFails();
        fixture.couch().failNext(2, 500);
        fixture.couch().failNext(2, 503);
        fixture.couch().breakNext(2, QNetworkReply::ConnectionRefusedError);
        fixture.couch().breakNext(1, QNetworkReply::HostNotFoundError);
        fixture.couch().answerNext("{}");
        fixture.couch().answerNext("<html>");
        fixture.couch().failNext(1, 500);
        QVERIFY(fixture.load("a"_l));
        for (int i = 0; i < 10; ++i) {
            processEvents();
            fixture.clock.advance(60s);
        }
        QCOMPARE(fixture.log.lines().filter("|critical|"_s).replaceInStrings(failure, ""_s),
                 " with HTTP status 500 InternalServerError| with HTTP status 503 "
                 "ServiceUnavailableError| with network error ConnectionRefusedError| with network "
                 "error HostNotFoundError|: the answer with HTTP status 200 lacks documents that "
                 "were asked for| with HTTP status 500 InternalServerError"_lines);
    }

    void faultyAnswersLoseNothing_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QStringList>("expected"); // for a and b
        const auto row = [](int status, const QByteArray &body, const QStringList &expected) {
            QTest::addRow("%d %s", status, body.constData()) << status << body << expected;
        };
        const QByteArray a = R"({"key":"a","doc":{"_id":"a"}})";
        const QByteArray b = R"({"key":"b","doc":{"_id":"b"}})";
        const QByteArray both = R"({"rows":[)" + a + ',' + b + "]}";
        for (const QByteArray &body :
             { QByteArray(), QByteArray("<html>Please log in</html>"), "[" + a + "]",
               both.chopped(1), QByteArray("{}"), QByteArray(R"({"rows":{"a":{}}})"),
               QByteArray(R"({"rows":null})"), QByteArray(R"({"rows":[]})") }) {
            row(200, body, "failed a|failed b"_lines);
        }
        for (const int status : { 202, 302, 401, 404, 500 }) {
            row(status, both, "failed a|failed b"_lines);
        }
        // The row for b is as it should be; these stand in the place of the one for a.
        const auto rowForA = [&](const QByteArray &rows, const QStringList &expected) {
            row(200, R"({"rows":[)" + rows + ',' + b + "]}", expected);
        };
        for (const char *rows :
             { "null", R"(1,"a",[])", "{}", R"({"key":""})", R"({"key":1,"doc":null})",
               R"({"key":"a","doc":"a"})", R"({"key":"a","doc":1})", R"({"key":"a","doc":[]})",
               R"({"key":"a","doc":{}})", R"({"key":"a","doc":{"_id":1}})",
               R"({"key":"a","doc":{"_id":""}})", R"({"key":"a","doc":{"_id":"b"}})",
               R"({"key":"a","doc":{"_id":"z"}})" }) {
            rowForA(rows, "failed a|loaded b"_lines);
        }
        for (const char *rows : { R"({"key":"a","error":"not_found"})",
                                  R"({"key":"a","value":{"deleted":true},"doc":null})" }) {
            rowForA(rows, "loaded b|notFound a"_lines);
        }
        for (const char *more : { R"({"key":"a","doc":{"_id":"a"}})", R"({"key":"a","doc":null})",
                                  R"({"key":"z","doc":{"_id":"z"}})" }) {
            rowForA(a + ',' + more, "loaded a|loaded b"_lines);
        }
    }
    void faultyAnswersLoseNothing()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(QStringList, expected);
        DatabaseFixture fixture;
        fixture.store("a"_s);
        fixture.store("b"_s);
        fixture.couch().answerNext(body, status);
        QVERIFY(fixture.load("a b"_l));
        processEvents();
        fixture.answers.sort();
        QCOMPARE(fixture.answers, expected);
        const bool fails = expected.contains("failed a"_s);
        QCOMPARE(fixture.log.count(failure), fails ? 1 : 0);
        QVERIFY(!fixture->documentCache()->contains(""_s));
        QVERIFY(!fixture->documentCache()->contains("z"_s));
        QCOMPARE(fixture->documentCache()->contains("a"_s), expected.contains("loaded a"_s));

        // The next request answers them, after the delay if there was a fault.
        fixture.answers.clear();
        QVERIFY(fixture.load("a b"_l));
        processEvents();
        QCOMPARE(fixture.answers.isEmpty(), fails);
        fixture.clock.advance(3s);
        processEvents();
        QCOMPARE(fixture.answers, "loaded a|loaded b"_lines);
    }

    void idsFailWithoutAWayToTheDatabase()
    {
        for (const QString &obstacle :
             "no-manager manager-dies hangs no-url local-file no-database"_l) {
            DatabaseFixture fixture;
            auto couch = std::make_unique<FakeCouch>();
            couch->hangNext(1);
            fixture->setNetworkAccessManager(obstacle == "no-manager"_s ? nullptr : couch.get());
            if (obstacle == "no-database"_s) {
                fixture->setDatabase(""_s);
            } else if (obstacle == "no-url"_s) {
                fixture->setServiceUrl(QUrl());
            } else if (obstacle == "local-file"_s) {
                fixture->setServiceUrl(QUrl("file:///tmp"_s));
            }
            QVERIFY(fixture.load("a b"_l));
            processEvents();
            if (obstacle == "manager-dies"_s) {
                couch.reset();
            } else if (obstacle == "hangs"_s) {
                fixture.loader->findChild<vo::Request *>()->abort(); // as its time limit does
            }
            processEvents();
            QCOMPARE(fixture.answers.join(obstacle), "failed a%1failed b"_s.arg(obstacle));
            QCOMPARE(fixture.log.count(failure + " with network error OperationCanceledError"_s),
                     1);
        }
    }

    void anotherDatabaseGetsNoAnswersOfTheFormerOne_data()
    {
        QTest::addColumn<QStringList>("databases");
        QTest::addColumn<QUrl>("serviceUrl");
        QTest::addColumn<bool>("counts");
        const QUrl same("http://couch.test:5984"_s);
        QTest::newRow("database") << "other"_l << same << false;
        QTest::newRow("server") << ""_l << QUrl("http://new.test"_s) << false;
        QTest::newRow("there and back") << "other first"_l << same << true;
    }
    void anotherDatabaseGetsNoAnswersOfTheFormerOne()
    {
        QFETCH(QStringList, databases);
        QFETCH(QUrl, serviceUrl);
        QFETCH(bool, counts);
        DatabaseFixture fixture;
        fixture->setDatabase("first"_s);
        const QSharedPointer<DocumentCache> former = fixture->documentCache();
        fixture.store("a"_s);
        fixture.couch().hold();
        QVERIFY(fixture.load("a gone"_l));
        processEvents();
        for (const QString &name : std::as_const(databases)) {
            fixture->setDatabase(name);
        }
        fixture->setServiceUrl(serviceUrl);
        fixture.couch().release();
        processEvents();
        QCOMPARE(fixture.answers,
                 counts ? "loaded a|notFound gone"_lines : "failed a|failed gone"_lines);
        QCOMPARE(former->contains("a"_s), counts);
        QVERIFY(!fixture.log.contains(failure)); // the server did nothing wrong,
        QVERIFY(fixture.load("a"_l));            // so there is nothing to wait for
        processEvents();
        QCOMPARE(fixture.answers.constLast(), "loaded a"_s);
        QCOMPARE(fixture.couch().calls().constLast().url.host(), serviceUrl.host());
        QVERIFY(fixture.couch().calls().constLast().url.path().contains(fixture->database()));
    }

    void mayDieAtAnyTime()
    {
        for (const QString &when : "loader|context|loaded a|notFound x|failed a"_lines) {
            DatabaseFixture fixture;
            fixture.store("a"_s);
            fixture.deadly = when;
            if (when == "failed a"_s) {
                fixture.couch().failNext(1, 500);
            }
            fixture.couch().hold();
            QVERIFY(fixture.load("a x y"_l));
            processEvents();
            QCOMPARE(fixture.couch().openCount(), 1);
            if (when == "loader"_s) {
                delete fixture.loader;
            } else if (when == "context"_s) {
                fixture.destroyContext();
            }
            fixture.couch().release();
            processEvents();
            QVERIFY(!fixture.loader);
            QCOMPARE(fixture.couch().openCount(), 0);
            QCOMPARE(fixture.answers.isEmpty() ? when : fixture.answers.constLast(), when);
        }
    }
};

QTEST_GUILESS_MAIN(tst_CouchDBLoader)
#include "tst_couchdbloader.moc"
