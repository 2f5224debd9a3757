// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "core/requestscene.h"
#include "support/fakecouch.h"
#include "support/logcapture.h"

#include <vorrel/core/headrequest.h>

#include <QtCore/QFile>
#include <QtTest/QSignalSpy>

using namespace std::chrono_literals;
using namespace vo;
using namespace vo::test;
using Answer = WireServer::Answer;

namespace {

/// Takes a few bytes and then fails, as a disk that fills up.
class FullDevice : public QIODevice
{
public:
    using QIODevice::QIODevice;

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 size) override { return std::min<qint64>(size, 5); }
};

} // namespace

class tst_RequestFaults : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void failsExactlyOnce_data();
    void failsExactlyOnce();
    void suppressionSparesRefusals();
    void destroyedRequestIsSilent_data();
    void destroyedRequestIsSilent();
    void slotsMayDeleteRequestAndManager();
    void conflictDuringUpload();
    void faultsOfTheFakeDatabase();
};

void tst_RequestFaults::failsExactlyOnce_data()
{
    QTest::addColumn<Script>("script");
    QTest::addColumn<QString>("errorString");
    const auto row = [](const char *name, const QString &text, const Script &script) {
        QTest::newRow(name) << script << text;
    };
    row("null manager", QStringLiteral("No network access manager"), [](Scene &s) {
        s.manager.reset();
        return s.get();
    });
    row("manager destroyed before the start", QStringLiteral("No network access manager"),
        [](Scene &s) {
            Request *request = s.get();
            s.manager.reset();
            return request;
        });
    row("manager destroyed", QStringLiteral("manager was destroyed"), [](Scene &s) {
        s.onArrival([&s] { s.manager.reset(); });
        return s.get();
    });
    row("aborted before the start", QStringLiteral("Cancelled"), [](Scene &s) {
        Request *request = s.get();
        request->abort();
        return request;
    });
    row("aborted", QStringLiteral("Cancelled"), [](Scene &s) {
        Request *request = s.get();
        s.onArrival([request] {
            request->abort();
            request->abort();
        });
        return request;
    });
    row("aborted in the middle of the body", QStringLiteral("Cancelled"), [](Scene &s) {
        s.server.enqueue(Answer::status(200, QByteArray(1000, ' ')).inPieces(100, 20ms));
        Request *request = s.get();
        QObject::connect(request, &Request::downloadProgress, request, &Request::abort);
        return request;
    });
    row("time limit", QStringLiteral("No progress for 400 ms"), [](Scene &s) {
        s.server.enqueue(Answer::hang());
        return new Impatient<GetRequest>(s.to(), s.manager.get(), &s.owner);
    });
    row("time limit in the body", QStringLiteral("No progress for 400 ms"), [](Scene &s) {
        Answer half = Answer::status(200, "0123456789");
        half.bytes.chop(5);
        s.server.enqueue(half);
        return new Impatient<GetRequest>(s.to(), s.manager.get(), &s.owner);
    });
    row("closed without an answer", QStringLiteral("onnection closed"), [](Scene &s) {
        s.server.setHandler([](const auto &) { return Answer::close(); });
        return s.get();
    });
    row("cut in the body", QStringLiteral("onnection closed"), [](Scene &s) {
        s.server.enqueue(Answer::status(200, "0123456789").cutAfter(50));
        return s.get();
    });
    row("cut in a chunk", QStringLiteral("onnection closed"), [](Scene &s) {
        s.server.enqueue(Answer::raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                                     "a\r\n0123")
                             .cutAfter(1000));
        return s.get();
    });
    row("no HTTP", QString(), [](Scene &s) {
        s.server.setHandler([](const auto &) {
            return Answer::raw("220 mail.example ESMTP\r\n\r\n").cutAfter(1000);
        });
        return s.get();
    });
    row("too large", QStringLiteral("larger than 9 bytes"), [](Scene &s) {
        s.server.enqueue(Answer::status(200, "0123456789"));
        Request *request = s.get();
        request->setMaximumSize(9);
        return request;
    });
    row("too large for the sink", QStringLiteral("larger than 9 bytes"), [](Scene &s) {
        s.server.enqueue(Answer::status(200, "0123456789"));
        auto *sink = new QBuffer(&s.owner);
        sink->open(QIODevice::WriteOnly);
        Request *request = s.getInto(sink);
        request->setMaximumSize(9);
        return request;
    });
    row("full sink", QStringLiteral("Writing to the data sink failed"), [](Scene &s) {
        s.server.enqueue(Answer::status(200, "0123456789"));
        auto *sink = new FullDevice(&s.owner);
        sink->open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        return s.getInto(sink);
    });
    row("full disk seen late", QStringLiteral("Writing to the data sink failed"), [](Scene &s) {
        auto *file = new QFile(QStringLiteral("/dev/full"), &s.owner);
        file->open(QIODevice::WriteOnly);
        return s.getInto(file);
    });
    row("closed sink", QStringLiteral("not open for writing"),
        [](Scene &s) { return s.getInto(new QBuffer(&s.owner)); });
    row("destroyed sink", QStringLiteral("it was destroyed"), [](Scene &s) {
        auto *sink = new QBuffer(&s.owner);
        sink->open(QIODevice::WriteOnly);
        s.server.setHandler([sink](const auto &) {
            delete sink;
            return Answer::status(200); // nothing to write, and yet no success
        });
        return s.getInto(sink);
    });
    row("closed body", QStringLiteral("not open for reading"),
        [](Scene &s) { return s.put(new QBuffer(&s.owner)); });
    row("destroyed body", QStringLiteral("body was destroyed"), [](Scene &s) {
        QBuffer *body = s.buffer(QByteArray(1000, 'x'));
        s.onArrival([body] { delete body; });
        return s.put(body);
    });
    row("line break in a header", QStringLiteral("Control character in header field If-Match"),
        [](Scene &s) {
            QNetworkRequest request = s.to();
            request.setRawHeader("If-Match", "1-a\r\nX-Evil: yes");
            return new GetRequest(request, s.manager.get(), &s.owner);
        });
    for (const char *url : { "", "relative/path", "file:///etc/passwd", "http://" }) {
        row(qPrintable(QStringLiteral("URL \"%1\"").arg(QLatin1String(url))), QStringLiteral("URL"),
            [url](Scene &s) {
                const QNetworkRequest request(QUrl(QString::fromLatin1(url)));
                return new GetRequest(request, s.manager.get(), &s.owner);
            });
    }
    row("compression bomb", QString(), [](Scene &s) {
        const QByteArray packed = qCompress(QByteArray(64'000'000, ' '), 9).mid(4);
        s.server.enqueue(Answer::status(200, packed, "Content-Encoding: deflate\r\n"));
        Request *request = s.get();
        request->setMaximumSize(1024);
        return request;
    });
}

void tst_RequestFaults::failsExactlyOnce()
{
    QFETCH(Script, script);
    QFETCH(QString, errorString);
    const LogCapture log;
    Scene scene;
    const Outcome outcome = outcomeOf(script(scene));
    QCOMPARE(outcome.finished, 1);
    QVERIFY(outcome.isGone);
    QVERIFY(!outcome.replyRuns);
    QVERIFY(!outcome.isOk);
    QVERIFY(outcome.error != QNetworkReply::NoError);
    QVERIFY2(outcome.errorString.contains(errorString), qPrintable(outcome.errorString));
    QVERIFY(!outcome.errorString.isEmpty());
    QCOMPARE(log.count(QStringLiteral("vorrel.request|warning|")), 1);
    QCOMPARE(log.count(outcome.errorString), 1);
    for (const WireServer::Message &message : scene.server.messages())
        QVERIFY(!message.hasHeader("X-Evil"));
}

void tst_RequestFaults::suppressionSparesRefusals()
{
    const LogCapture log;
    Scene scene;
    scene.server.setHandler([](const auto &) { return Answer::close(); });
    QNetworkRequest bad = scene.to();
    bad.setRawHeader("If-Match", "\n");
    for (const QNetworkRequest &to : { scene.to(), bad }) {
        auto *request = new GetRequest(to, scene.manager.get(), &scene.owner);
        request->setSuppressErrors(true);
        QVERIFY(!outcomeOf(request).isOk);
    }
    QCOMPARE(int(log.lines().size()), 1);
    QVERIFY(log.contains(QStringLiteral("Control character")));
}

void tst_RequestFaults::destroyedRequestIsSilent_data()
{
    QTest::addColumn<Script>("script");
    QTest::newRow("before the start") << Script([](Scene &s) {
        Request *request = s.get();
        QMetaObject::invokeMethod(
            &s.owner, [request] { delete request; }, Qt::QueuedConnection);
        return request;
    });
    QTest::newRow("while it runs") << Script([](Scene &s) {
        Request *request = s.get();
        s.onArrival([request] { delete request; });
        return request;
    });
    QTest::newRow("with the body it uploads") << Script([](Scene &s) {
        QBuffer *body = s.buffer(QByteArray(20'000'000, 'x'));
        Request *request = s.put(body);
        body->setParent(request);
        QObject::connect(request, &Request::uploadProgress, &s.owner,
                         [request] { delete request; });
        return request;
    });
    QTest::newRow("between abort and finished") << Script([](Scene &s) {
        Request *request = s.get();
        s.onArrival([request] {
            request->abort();
            delete request;
        });
        return request;
    });
    QTest::newRow("in the middle of the body") << Script([](Scene &s) {
        s.server.enqueue(Answer::status(200, QByteArray(1000, ' ')).inPieces(100, 20ms));
        Request *request = s.get();
        QObject::connect(request, &Request::downloadProgress, &s.owner,
                         [request] { delete request; });
        return request;
    });
}

void tst_RequestFaults::destroyedRequestIsSilent()
{
    QFETCH(Script, script);
    const LogCapture log;
    Scene scene;
    QPointer<Request> request = script(scene);
    QSignalSpy finished(request.data(), &Request::finished);
    QTRY_VERIFY(!request);
    QTRY_COMPARE(scene.server.openConnections(), 0);
    QCOMPARE(int(finished.size()), 0);
    QVERIFY2(log.lines().isEmpty(), qPrintable(log.lines().value(0)));
}

void tst_RequestFaults::slotsMayDeleteRequestAndManager()
{
    Scene scene;
    Request *first = scene.get();
    QSignalSpy gone(first, &QObject::destroyed);
    connect(first, &Request::finished, &scene.owner, [first] { delete first; });
    QVERIFY(gone.wait());

    const QPointer<Request> second = scene.get();
    int rows = 0;
    connect(second.data(), &Request::finished, &scene.owner, [&scene, &rows, second] {
        QVERIFY(second->reply());
        scene.manager.reset();
        QVERIFY(second->isOk(200));
        QCOMPARE(second->reply(), nullptr);
        ++rows;
    });
    QTRY_VERIFY(!second);
    QCOMPARE(rows, 1);
}

// The server refuses before it has the body, and closes.
void tst_RequestFaults::conflictDuringUpload()
{
    const LogCapture log;
    Scene scene;
    Answer conflict = Answer::status(409, "{\"error\":\"conflict\"}").early();
    conflict.closes = true;
    scene.server.enqueue(conflict);
    const Outcome outcome = outcomeOf(scene.put(scene.buffer(QByteArray(20'000'000, 'x'))));
    QCOMPARE(outcome.finished, 1);
    QVERIFY(!outcome.isOk);
    QVERIFY2(outcome.code == 409 || outcome.code == 0, qPrintable(outcome.errorString));
    QVERIFY(outcome.error != QNetworkReply::NoError);
    QCOMPARE(int(scene.server.messages().size()), 1);
}

void tst_RequestFaults::faultsOfTheFakeDatabase()
{
    const LogCapture log;
    FakeCouch couch;
    couch.store({ { QStringLiteral("_id"), QStringLiteral("x") } });
    couch.failNext(1, 503);
    couch.breakNext(1, QNetworkReply::HostNotFoundError);
    const QNetworkRequest to(QUrl(QStringLiteral("http://host/db/x")));
    QCOMPARE(outcomeOf(new GetRequest(to, &couch)).code, 503);
    QCOMPARE(outcomeOf(new GetRequest(to, &couch)).error, QNetworkReply::HostNotFoundError);

    couch.hold();
    const QPointer<Request> held = new GetRequest(to, &couch);
    QSignalSpy spy(held.data(), &Request::finished);
    QTRY_COMPARE(couch.openCount(), 1);
    couch.release();
    QVERIFY(spy.wait());
    QVERIFY(held->isOk(200));

    couch.hangNext(1);
    QCOMPARE(outcomeOf(new Impatient<HeadRequest>(to, &couch)).errorString,
             QStringLiteral("No progress for 400 ms"));
    QCOMPARE(couch.openCount(), 0);
}

QTEST_GUILESS_MAIN(tst_RequestFaults)
#include "tst_requestfaults.moc"
