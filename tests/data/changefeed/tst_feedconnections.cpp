// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"
#include "support/updatehandler.h"
#include "support/wireserver.h"

#include <vorrel/data/context/contexterror.h>

#include <QtCore/QLoggingCategory>
#include <QtCore/QUrlQuery>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

Q_DECLARE_METATYPE(WireServer::Answer)

namespace {

using Answer = WireServer::Answer;

constexpr char record[] = "{\"seq\":7,\"id\":\"a\",\"changes\":[{\"rev\":\"1-a\"}]}\n";

/// The beginning of an answer that stays open, in a chunk of its own.
Answer stream(const QByteArray &bytes, const QByteArray &type = "application/json")
{
    return Answer::raw("HTTP/1.1 200 OK\r\nContent-Type: " + type
                       + "\r\nTransfer-Encoding: chunked\r\n\r\n"
                       + QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n");
}

/// The same, ended in good order.
Answer ended(Answer answer)
{
    answer.bytes += "0\r\n\r\n";
    return answer;
}

/// A Context on a scripted server.
struct Scene : ContextFixture
{
    Scene()
    {
        QUrl url = server.url();
        url.setUserInfo("reader:secret"_s);
        context()->setServiceUrl(url);
        context()->setChangeFeedMonitorType(Context::ContinuousMonitor);
        server.setHandler([this](const WireServer::Message &message) {
            if (message.method() == "POST") {
                asked << message.body;
                return Answer::status(200, R"({"rows":[]})");
            }
            since = QUrlQuery(QUrl(QString::fromLatin1(message.target())))
                        .queryItemValue("since"_s);
            ++connections;
            return answers.size() > 1 ? answers.takeFirst() : answers.constFirst();
        });
    }
    void open(QNetworkAccessManager *with)
    {
        context()->setNetworkAccessManager(with);
        context()->setDatabase("followed"_s);
    }

    ManualClock clock;
    LogCapture log;
    WireServer server;
    QNetworkAccessManager manager;
    QList<Answer> answers;
    QString since;
    int connections = 0;
    QByteArrayList asked; // for revisions
};

} // namespace

class tst_FeedConnections : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theContinuousFeedComesBackByItself_data()
    {
        QTest::addColumn<Answer>("fault");
        QTest::addColumn<QString>("since");
        const auto row = [](const char *name, const Answer &fault, const char *since = "now") {
            QTest::newRow(name) << fault << QString::fromUtf8(since);
        };
        const Answer two = stream(record + QByteArray("{\"seq\":8,\"id\":\"\xc3\xa4"));
        row("cut in a line", two.cutAfter(int(two.bytes.size()) - 6), "7");
        row("cut in a character", two.cutAfter(int(two.bytes.size()) - 3), "7");
        row("cut in a chunk", stream(QByteArray(record) + record + record).cutAfter(170), "7");
        row("byte by byte", ended(stream(record)).inPieces(1, 0ms), "7");
        row("end in good order", ended(stream(record)), "7");
        row("end of the server", Answer::close());
        row("no JSON", ended(stream("\xff\n[]\n7\n" + QByteArray(record))), "7");
        row("text as sequence", ended(stream("{\"seq\":\"7-g1+/ä\"}\n")), "7-g1+/ä");
        row("null as sequence", ended(stream("{\"seq\":null}\n")));
        row("line without end", stream(QByteArray(65 * 1024 * 1024, 'x')));
        row("portal page", ended(stream("<html>\n</html>\n", "text/html; charset=utf-8")));
        for (const int status : { 204, 401, 404, 500 }) {
            row(QByteArray::number(status).constData(), Answer::status(status, record));
        }
    }
    void theContinuousFeedComesBackByItself()
    {
        QFETCH(Answer, fault);
        QFETCH(QString, since);
        Scene scene;
        scene.create("stored"_s, "1-x"_s);
        // A GET whose connection is closed without an answer is sent once more by Qt itself.
        scene.answers = { fault, fault.bytes.isEmpty() ? fault : Answer::hang(), stream("\n") };
        scene.open(&scene.manager);
        QTRY_COMPARE(scene.since, "now"_s);
        while (scene.connections < 2) {
            QTest::qWait(5);
            scene.clock.advance(8s);
        }
        QTRY_COMPARE(scene->errors().size(), 1);
        QCOMPARE(scene->primaryError()->errorCode(), 3);
        while (scene.connections < 3) {
            QTest::qWait(5);
            scene.clock.advance(20s); // also beyond the silence that is borne
        }
        QCOMPARE(QUrl::fromPercentEncoding(scene.since.toUtf8()), since);
        QCOMPARE(scene->errors().size(), 1);
        const auto isHealed = [&scene] {
            scene->tryFixErrors();
            return scene->errors().isEmpty();
        };
        QTRY_VERIFY(isHealed());
        scene.clock.advance(5s);
        QTRY_COMPARE(scene.asked.size(), since == "now"_s ? 1 : 0);
        for (const WireServer::Message &message : scene.server.messages()) {
            QVERIFY(message.header("Authorization").startsWith("Basic ") && !message.target().contains("secret"));
        }
        QVERIFY(!scene.log.contains("secret"_s));
        QCOMPARE(scene.log.contains("Error parsing change record"_s),
                 QByteArray(QTest::currentDataTag()) == "no JSON");
    }

    void silenceOfMoreThan40sEndsAConnection()
    {
        for (const std::chrono::seconds beginning : { 19s, 21s }) {
            Scene scene;
            scene.answers = { stream("\n") };
            scene.open(nullptr);
            scene.clock.advance(beginning - 1s);
            scene->setNetworkAccessManager(&scene.manager);
            scene.clock.advance(1s);
            QTRY_COMPARE(scene.connections, 1);
            scene.clock.advance(60s - beginning);
            QCOMPARE(scene->errors().size(), beginning == 19s ? 1 : 0);
            QTRY_COMPARE(scene.connections, beginning == 19s ? 2 : 1);
        }
    }

    void managerAndDatabaseMayChange()
    {
        Scene scene;
        scene.answers = { stream(record), stream("\n"), Answer::status(500) };
        auto manager = std::make_unique<QNetworkAccessManager>();
        scene.open(manager.get());
        QTRY_COMPARE(scene.connections, 1);
        manager.reset();
        scene->setNetworkAccessManager(&scene.manager);
        scene.clock.advance(1s);
        QTRY_COMPARE(scene.connections, 2);
        scene->setDatabase("second"_s);
        QTRY_COMPARE(scene->errors().size(), 1);
        scene->setChangeFeedMonitorType(Context::NullMonitor);
        scene->setDatabase("third"_s);
        QTRY_VERIFY(scene->errors().isEmpty());
        scene.clock.advance(120s);
        QTest::qWait(20);
        QVERIFY(scene->errors().isEmpty() && scene.connections == 3);
    }

    void pollsGoOnAfterFailures_data()
    {
        QTest::addColumn<Context::ChangeFeedMonitorType>("type");
        QTest::addColumn<int>("period");
        QTest::addColumn<QStringList>("items");
        QStringList timeouts;
        for (const QString &timeout : "12000 2000 4000 6000 8000 10000 10000 10000 10000"_l) {
            timeouts << "since=now&feed=longpoll&timeout="_s + timeout;
        }
        QTest::newRow("long poll") << Context::LongPollingMonitor << 2
                                   << timeouts + "since=9&feed=longpoll&timeout=12000"_l;
        QTest::newRow("poll") << Context::PollingMonitor << 40
                              << "since=now "_s.repeated(9).split(QLatin1Char(' '), Qt::SkipEmptyParts)
                + "since=9"_l;
    }
    void pollsGoOnAfterFailures()
    {
        QFETCH(Context::ChangeFeedMonitorType, type);
        QFETCH(int, period);
        QLoggingCategory::setFilterRules("vorrel.*=true"_s);
        QStringList updated;
        Scene scene;
        scene.couch().failNext(7, 500);
        scene.couch().answerNext("<html>");
        scene.couch().answerNext(R"({"results":[{"seq":9,"id":"a","changes":[{"rev":"2-a"}]}],
                                     "last_seq":9})");
        scene.couch().hangNext(1);
        scene.create("a"_s, "1-a"_s);
        scene->setChangeFeedMonitorType(type);
        const auto pass = [&](int polls) {
            for (; polls > 0; --polls) {
                processEvents();
                scene.clock.advance(std::chrono::seconds(period));
            }
            processEvents();
        };
        scene.open(&scene.couch());
        pass(7);
        QCOMPARE(scene->errors().size(), type == Context::LongPollingMonitor ? 1 : 0);
        scene->setUpdateHandler(new UpdateHandler(&updated, [](LinkedDocument *) {}));
        pass(2);
        scene->tryFixErrors();
        processEvents();
        QVERIFY(scene->errors().isEmpty());
        QCOMPARE(updated, "a end"_l);
        QCOMPARE(scene.log.count("|critical|Failed to parse change feed response"_s), 1);
        QVERIFY(scene.log.contains("/_changes?since=now"_s) != scene.log.contains("secret"_s));
        QStringList items;
        for (const FakeCouch::Call &call : scene.couch().calls()) {
            items << call.url.query();
            QCOMPARE(call.request.rawHeader("Connection").isEmpty(), period == 2);
        }
        QTEST(items, "items");
        QLoggingCategory::setFilterRules(QString());
    }
};

QTEST_GUILESS_MAIN(tst_FeedConnections)
#include "tst_feedconnections.moc"
