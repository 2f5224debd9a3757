// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/feedserver.h"
#include "support/literals.h"

#include <vorrel/data/context/contexterror.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QLoggingCategory>
#include <QtCore/QUrlQuery>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

using Answer = WireServer::Answer;
Q_DECLARE_METATYPE(WireServer::Answer)
Q_DECLARE_METATYPE(std::optional<WireServer::Answer>)
Q_DECLARE_METATYPE(std::chrono::seconds)

const QByteArray record = "{\"seq\":7,\"id\":\"a\",\"changes\":[{\"rev\":\"1-a\"}]}\n";

class tst_FeedConnections : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("vorrel.*=true"_s); }

    void theContinuousFeedComesBackByItself_data()
    {
        QTest::addColumn<Answer>("fault");
        QTest::addColumn<QString>("since");
        const auto row = [](const char *name, const Answer &fault, const char *since = "now") {
            QTest::newRow(name) << fault << QString::fromUtf8(since);
        };
        const Answer two = FeedServer::stream(record + "{\"seq\":8,\"id\":\"\xc3\xa4");
        row("cut in a line", two.cutAfter(int(two.bytes.size()) - 6), "7");
        row("cut in a character", two.cutAfter(int(two.bytes.size()) - 3), "7");
        row("cut in a chunk", FeedServer::stream(record.repeated(3)).cutAfter(170), "7");
        row("byte by byte", FeedServer::ended(record).inPieces(1, 0ms), "7");
        row("no JSON", FeedServer::ended("\xff\n[]\n7\n" + record), "7");
        row("text as sequence", FeedServer::ended("{\"seq\":\"7-g1+/ä\"}\n"), "7-g1+/ä");
        row("null as sequence", FeedServer::ended("{\"seq\":null}\n"));
        row("line without end", FeedServer::stream(QByteArray(65 << 20, 'x')));
        row("portal page", FeedServer::ended("<html>\n" + record, "text/html; charset=utf-8"));
        for (const int status : { 204, 404 }) {
            row(QByteArray::number(status).constData(), Answer::status(status, record));
        }
    }
    void theContinuousFeedComesBackByItself()
    {
        QFETCH(Answer, fault);
        QFETCH(QString, since);
        FeedFixture scene;
        scene.create("stored"_s, "1-x"_s);
        // A GET whose connection is closed without an answer is sent once more by Qt itself.
        scene.server.feeds = { fault, fault.bytes.isEmpty() ? fault : Answer::hang(),
                               FeedServer::stream("\n") };
        scene.open(&scene.manager, Context::ContinuousMonitor);
        QTRY_COMPARE(scene.server.since, "now"_s);
        for (const auto &[connections, step] : { std::pair(2, 8s), std::pair(3, 20s) }) {
            while (scene.server.connections < connections) {
                QTest::qWait(5);
                scene.clock.advance(step);
            }
            QTRY_COMPARE(scene->errors().size(), 1);
        }
        QCOMPARE(scene->primaryError()->errorCode(), 3);
        QCOMPARE(scene.server.since, since);
        QTRY_VERIFY((scene->tryFixErrors(), scene->errors().isEmpty()));
        scene.clock.advance(5s);
        QTRY_COMPARE(scene.server.enquiries, since == "now"_s ? 1 : 0);
        QVERIFY(scene.server.messages().constLast().hasHeader("Authorization"));
        QVERIFY(!scene.log.contains("secret"_s));
    }

    void aRequestIsMadeAgainWhateverHappenedToIt_data()
    {
        QTest::addColumn<QByteArray>("kind"); // as its URL has it
        QTest::addColumn<Context::ChangeFeedMonitorType>("type");
        QTest::addColumn<std::chrono::seconds>("period");
        QTest::addColumn<std::optional<Answer>>("fault"); // none: there is no server
        const Answer page = FeedServer::ended("<html>\n" + record, "text/html; charset=utf-8");
        const auto row = [&](const char *kind, Context::ChangeFeedMonitorType type,
                             std::chrono::seconds period, std::chrono::seconds silence) {
            const auto add = [&](const QString &name, const std::optional<Answer> &fault) {
                QTest::addRow("%s, %s", kind, qPrintable(name))
                    << QByteArray(kind) << type << (name == "hangs"_s ? silence : period) << fault;
            };
            add("refused"_s, std::nullopt);
            add("closed in the headers"_s, page.cutAfter(40));
            add("closed in the body"_s, page.cutAfter(int(page.bytes.size()) - 9));
            add("hangs"_s, Answer::hang());
            add("500"_s, Answer::status(500, record));
            add("401"_s, Answer::status(401, record, "WWW-Authenticate: Basic realm=\"x\"\r\n"));
            add("portal page"_s, page);
        };
        row("feed=continuous", Context::ContinuousMonitor, 8s, 60s);
        row("feed=longpoll", Context::LongPollingMonitor, 2s, 2s);
        row("_changes", Context::PollingMonitor, 40s, 40s);
        row("_all_docs", Context::PollingMonitor, 5s, 5s);
        row("/a", Context::LongPollingMonitor, 5s, 5s);
    }
    void aRequestIsMadeAgainWhateverHappenedToIt()
    {
        QFETCH(QByteArray, kind);
        QFETCH(Context::ChangeFeedMonitorType, type);
        QFETCH(std::chrono::seconds, period);
        QFETCH(std::optional<Answer>, fault);
        FeedFixture scene;
        int failures = 0;
        bool isBroken = true;
        scene.server.setHandler([&](const WireServer::Message &message) {
            const QByteArray target = message.target();
            if (isBroken && fault && target.contains(kind)) {
                ++failures;
                return *fault;
            }
            const bool isEnquiry = target.contains("_all_docs");
            if (isEnquiry || target.contains("_changes")) {
                const QByteArray news = isEnquiry != (kind == "_all_docs") ? ""
                    : isEnquiry ? R"({"id":"a","value":{"rev":"2-a"}})"
                                : R"({"id":"a","changes":[{"rev":"2-a"}]})";
                return target.contains("continuous")
                    ? FeedServer::stream(news + '\n')
                    : Answer::status(200, R"({"rows":[)" + news + R"(],"results":[)" + news + "]}");
            }
            return Answer::status(200, R"({"_id":"a","_rev":"2-a","type":"tag","label":"new"})");
        });
        scene.open(nullptr, type);
        const quint16 port = scene.server.serverPort();
        const bool hangs = fault && fault->bytes.isEmpty();
        if (!fault) {
            scene.server.close();
        }
        scene->setFollowsRemoteEdits(true);
        scene->documentCache()->insert("a"_s, R"({"_id":"a","_rev":"1-a","type":"tag"})"_json);
        const QPointer<LinkedDocument> document = scene.load("a"_s);
        scene->setNetworkAccessManager(&scene.manager);
        const auto pass = [&] {
            scene.clock.advance(period);
            const auto areEnded = [&] {
                processEvents();
                auto replies = scene.manager.findChildren<QNetworkReply *>();
                if (isBroken && hangs) {
                    for (QNetworkReply *reply : std::as_const(replies)) {
                        if (reply->url().toEncoded().contains(kind)) {
                            reply->abort(); // as its time limit does
                        }
                    }
                } else if (isBroken) {
                    replies += scene->findChildren<QNetworkReply *>(); // of the continuous feed
                }
                return std::all_of(replies.begin(), replies.end(),
                                   [](const auto *reply) { return reply->isFinished(); });
            };
            bool wereEnded = false; // for a moment
            QTRY_VERIFY((wereEnded = wereEnded || areEnded()));
            QVERIFY(scene->errors().size() <= 1);
        };
        for (int round = 0; round < 3 || (fault && failures < 2); ++round) {
            pass();
        }
        isBroken = false;
        QVERIFY(fault || scene.server.listen(QHostAddress::LocalHost, port));
        pass();
        pass();
        QTRY_VERIFY((scene->tryFixErrors(), scene.finishLoading()) && document
                    && document->label() == "new"_s && scene->errors().isEmpty());
        QVERIFY(!scene.log.contains("secret"_s) && !scene.log.contains("cmVhZGVy"_s));
    }

    void aConnectionEndsAfterSilenceAndWithManagerOrDatabase()
    {
        for (const std::chrono::seconds beginning : { 21s, 19s }) {
            FeedFixture scene;
            scene.server.feeds = { FeedServer::stream("\n") };
            auto manager = std::make_unique<QNetworkAccessManager>();
            scene.open(nullptr, Context::ContinuousMonitor);
            scene.clock.advance(beginning - 1s);
            scene->setNetworkAccessManager(manager.get());
            scene.clock.advance(1s);
            QTRY_COMPARE(scene.server.connections, 1);
            scene.clock.advance(60s - beginning);
            const int replaced = beginning == 19s ? 1 : 0;
            QCOMPARE(scene->errors().size(), replaced);
            QTRY_COMPARE(scene.server.connections, 1 + replaced);
            manager.reset();
            scene->setNetworkAccessManager(&scene.manager);
            scene.clock.advance(1s);
            QTRY_COMPARE(scene.server.connections, 2 + replaced);
            scene.open(&scene.manager, Context::NullMonitor, "second"_s);
            QTRY_VERIFY(scene->errors().isEmpty() && scene.server.openConnections() == 0);
        }
    }

    void pollsGoOnAfterFailures_data()
    {
        QTest::addColumn<Context::ChangeFeedMonitorType>("type");
        QTest::addColumn<QStringList>("items");
        QTest::newRow("long poll")
            << Context::LongPollingMonitor
            << "now:12000 now:2000 now:4000 now:6000 now:8000 now:10000 now:10000 now:10000 now:10000 9:12000"_l;
        QTest::newRow("poll") << Context::PollingMonitor
                              << "now: now: now: now: now: now: now: now: now: 9:"_l;
    }
    void pollsGoOnAfterFailures()
    {
        QFETCH(Context::ChangeFeedMonitorType, type);
        const bool isLong = type == Context::LongPollingMonitor;
        FeedFixture scene;
        scene.couch().failNext(7, 500);
        scene.couch().answerNext("<html>");
        scene.couch().answerNext(R"({"results":[{"id":"a","changes":[{"rev":"2-a"}]}],
                                     "last_seq":9})");
        scene.couch().hangNext(1);
        scene.open(&scene.couch(), type);
        for (int poll = 1; poll <= 9; ++poll) {
            processEvents();
            QCOMPARE(scene->errors().size(), isLong ? 1 : 0);
            scene.clock.advance(isLong ? 2s : 40s);
        }
        processEvents();
        QTRY_VERIFY((scene->tryFixErrors(), scene->errors().isEmpty()));
        QCOMPARE(scene.log.count("|critical|Failed to parse change feed response"_s), 1);
        QVERIFY(scene.log.contains("2-a"_s) && !scene.log.contains("secret"_s));
        QStringList items;
        for (const FakeCouch::Call &call : scene.couch().calls()) {
            const QUrlQuery query(call.url);
            items << query.queryItemValue("since"_s) + ":"_s + query.queryItemValue("timeout"_s);
            QCOMPARE(call.request.hasRawHeader("Connection"), !isLong);
        }
        QTEST(items, "items");
    }
};

QTEST_GUILESS_MAIN(tst_FeedConnections)
#include "tst_feedconnections.moc"
