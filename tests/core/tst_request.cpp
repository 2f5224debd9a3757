// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/fakecouch.h"
#include "support/logcapture.h"
#include "support/wireserver.h"

#include <vorrel/core/couchurl.h>
#include <vorrel/core/getrequest.h>
#include <vorrel/core/headrequest.h>
#include <vorrel/core/postrequest.h>
#include <vorrel/core/putrequest.h>

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QLoggingCategory>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace std::chrono_literals;
using namespace vo;
using Answer = test::WireServer::Answer;

namespace {

/// A request that waits less long than the real ones.
template <typename Base>
class Impatient : public Base
{
public:
    using Base::Base;

protected:
    [[nodiscard]] int timeout() const override { return 400; }
};

/// Takes a few bytes and then fails, as a disk that fills up.
class FullDevice : public QIODevice
{
protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 size) override { return std::min<qint64>(size, 5); }
};

/// Gives its content once, piece by piece, and does not know its size.
class Pipe : public QIODevice
{
public:
    using QIODevice::QIODevice;
    QByteArray content { "0123456789" };
    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        if (content.isEmpty())
            return -1;
        const QByteArray piece = content.left(int(std::min<qint64>(maximum, 4)));
        content.remove(0, int(piece.size()));
        std::copy(piece.begin(), piece.end(), data);
        return piece.size();
    }
    qint64 writeData(const char *, qint64) override { return -1; }
};

/// What a test needs around a request, and what became of the request.
struct Scene
{
    test::WireServer server;
    std::unique_ptr<QNetworkAccessManager> manager { new QNetworkAccessManager };
    QObject owner;
    FullDevice fullDevice;

    [[nodiscard]] QNetworkRequest to(const QString &path = QStringLiteral("/db/x")) const
    {
        return QNetworkRequest(server.url(path));
    }
    Request *get() { return new GetRequest(to(), manager.get(), &owner); }
    Request *getInto(QIODevice *device)
    {
        Request *request = get();
        request->setDataSink(device);
        return request;
    }
    Request *put(QIODevice *body) { return new PutRequest(to(), manager.get(), body, &owner); }
    QBuffer *buffer(const QByteArray &data)
    {
        auto *buffer = new QBuffer(&owner);
        buffer->setData(data);
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }
    /// Calls \p function when the server has the request.
    void onArrival(const std::function<void()> &function)
    {
        server.setHandler([function](const test::WireServer::Message &) {
            function();
            return Answer::hang();
        });
    }
};

struct Outcome
{
    int finished = 0;
    bool isGone = false;
    bool isOk = false;
    int code = -1;
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QString errorString;
    QByteArray body;
};

Outcome outcomeOf(Request *request)
{
    Outcome outcome;
    const QPointer<Request> guard(request);
    QObject::connect(request, &Request::finished, request, [request, &outcome] {
        ++outcome.finished;
        outcome.isOk = request->isOk(200);
        outcome.code = request->responseCode();
        outcome.error = request->error();
        outcome.errorString = request->errorString();
        outcome.body = request->rawResponse();
        request->abort();
    });
    outcome.isGone = QTest::qWaitFor([guard] { return guard.isNull(); }, 20000);
    QCoreApplication::processEvents();
    return outcome;
}

using Script = std::function<Request *(Scene &)>;

} // namespace

Q_DECLARE_METATYPE(Script)
Q_DECLARE_METATYPE(QJsonValue::Type)

class tst_Request : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void wireForms_data();
    void wireForms();
    void credentials_data();
    void credentials();
    void redirects_data();
    void redirects();
    void failsExactlyOnce_data();
    void failsExactlyOnce();
    void suppressionSparesRefusals();
    void httpErrorsKeepTheirBody();
    void parsesJson_data();
    void parsesJson();
    void destroyedRequestIsSilent_data();
    void destroyedRequestIsSilent();
    void finishedComesFromTheEventLoopOnly();
    void slotsMayDeleteRequestAndManager();
    void progressKeepsARequestAlive();
    void waitingForAConnectionIsNoSilence();
    void sinkGetsTheBodyAsItArrives();
    void conflictDuringUpload();
    void bulkAnswerOfTheFakeDatabase();
    void faultsOfTheFakeDatabase();
};

void tst_Request::cleanup()
{
    QLoggingCategory::setFilterRules(QString());
}

void tst_Request::wireForms_data()
{
    QTest::addColumn<Script>("script");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QByteArray>("body");
    const QString json = QStringLiteral("accept: application/json");
    const QString expect = QStringLiteral("expect: 100-continue");
    QTest::newRow("GET") << Script([](Scene &s) { return s.get(); })
                         << QByteArray("GET /db/x HTTP/1.1") << QStringList { json }
                         << QByteArray();
    QTest::newRow("GET with own accept and encoded id")
        << Script([](Scene &s) {
               QNetworkRequest request(CouchUrl::documentUrl(s.server.url(), QStringLiteral("db"),
                                                             QStringLiteral("a/b?c+ü")));
               request.setRawHeader("Accept", "image/png");
               return new GetRequest(request, s.manager.get(), &s.owner);
           })
        << QByteArray("GET /db/a%2Fb%3Fc%2B%C3%BC HTTP/1.1")
        << QStringList { QStringLiteral("accept: image/png") } << QByteArray();
    QTest::newRow("HEAD") << Script([](Scene &s) {
        return new HeadRequest(s.to(), s.manager.get(), &s.owner);
    }) << QByteArray("HEAD /db/x HTTP/1.1")
                          << QStringList { json } << QByteArray();
    QTest::newRow("POST") << Script([](Scene &s) {
        const QJsonObject body { { QStringLiteral("keys"), QJsonArray { QStringLiteral("ü") } } };
        return new PostRequest(s.to(), s.manager.get(), body, &s.owner);
    }) << QByteArray("POST /db/x HTTP/1.1")
                          << QStringList { json, expect,
                                           QStringLiteral("content-type: application/json"),
                                           QStringLiteral("content-length: 15") }
                          << QByteArray("{\"keys\":[\"\xc3\xbc\"]}");
    QTest::newRow("PUT from the middle of a device")
        << Script([](Scene &s) {
               QNetworkRequest request = s.to();
               request.setRawHeader("Content-Type", "text/plain");
               request.setRawHeader("If-Match", "3-abc");
               QBuffer *body = s.buffer("0123456789");
               body->seek(4);
               return new PutRequest(request, s.manager.get(), body, &s.owner);
           })
        << QByteArray("PUT /db/x HTTP/1.1")
        << QStringList { json, expect, QStringLiteral("content-type: text/plain"),
                         QStringLiteral("if-match: 3-abc"), QStringLiteral("content-length: 6") }
        << QByteArray("456789");
    QTest::newRow("PUT of a sequential device")
        << Script([](Scene &s) {
               auto *pipe = new Pipe(&s.owner);
               pipe->open(QIODevice::ReadOnly);
               return s.put(pipe);
           })
        << QByteArray("PUT /db/x HTTP/1.1")
        << QStringList { json, expect, QStringLiteral("content-length: 10") }
        << QByteArray("0123456789");
}

void tst_Request::wireForms()
{
    QFETCH(Script, script);
    QFETCH(QByteArray, line);
    QFETCH(QStringList, fields);
    QFETCH(QByteArray, body);
    Scene scene;
    const Outcome outcome = outcomeOf(script(scene));
    QVERIFY(outcome.isOk);
    QCOMPARE(int(scene.server.messages().size()), 1);
    const test::WireServer::Message &message = scene.server.messages().first();
    QCOMPARE(message.head.left(message.head.indexOf('\r')), line);
    QCOMPARE(message.body, body);

    // What Qt sends by itself is not ours to fix.
    QStringList sent;
    const QStringList lines =
        QString::fromLatin1(message.head.trimmed()).split(QStringLiteral("\r\n"));
    for (const QString &field : lines.mid(1)) {
        const QString name = field.section(QLatin1Char(':'), 0, 0).toLower();
        if (!QByteArrayList { "host", "user-agent", "connection", "accept-language",
                              "accept-encoding" }
                 .contains(name.toLatin1()))
            sent.append(name + field.mid(name.size()));
    }
    sent.sort();
    fields.sort();
    QCOMPARE(sent, fields);
}

void tst_Request::credentials_data()
{
    QTest::addColumn<QString>("userInfo");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("none") << QString() << QByteArray();
    QTest::newRow("plain") << QStringLiteral("anna:secret42") << QByteArray("anna:secret42");
    QTest::newRow("outside ASCII")
        << QStringLiteral("jürgen:pässwört€") << QByteArray("j\xc3\xbcrgen:p\xc3\xa4sswört€");
    QTest::newRow("special characters")
        << QStringLiteral("a%40b:se%3Acret%2F%3F%23%25") << QByteArray("a@b:se:cret/?#%");
    QTest::newRow("no password") << QStringLiteral("onlyname") << QByteArray("onlyname:");
}

// The password must not reach a log line of any category and level, also when things fail.
void tst_Request::credentials()
{
    QFETCH(QString, userInfo);
    QFETCH(QByteArray, expected);
    Scene scene;
    scene.server.enqueue(Answer::status(200, "{}"));
    scene.server.enqueue(Answer::status(401, "{}", "WWW-Authenticate: Basic realm=\"x\"\r\n"));
    scene.server.setHandler([](const auto &) { return Answer::close(); });
    QUrl url = scene.server.url(QStringLiteral("/db/x"));
    url.setUserInfo(userInfo);

    const test::LogCapture log;
    QLoggingCategory::setFilterRules(QStringLiteral("*=true"));
    QStringList texts;
    for (int i = 0; i < 3; ++i) {
        auto *request =
            new PostRequest(QNetworkRequest(url), scene.manager.get(), {}, &scene.owner);
        texts.append(request->url().toString());
        texts.append(outcomeOf(request).errorString);
    }
    QLoggingCategory::setFilterRules(QString());

    QVERIFY(scene.server.messages().size() >= 3);
    for (const test::WireServer::Message &message : scene.server.messages()) {
        QCOMPARE(message.header("Authorization"),
                 expected.isEmpty() ? QByteArray() : "Basic " + expected.toBase64());
    }
    QCOMPARE(log.count(QStringLiteral("vorrel.request|warning|POST")), 2);
    texts += log.lines();
    const QString encoded = url.password(QUrl::FullyEncoded);
    for (const QString &secret :
         { url.password(QUrl::FullyDecoded), encoded, QString::fromLatin1(expected.toBase64()) })
        QVERIFY2(secret.isEmpty() || texts.filter(secret).isEmpty(),
                 qPrintable(texts.filter(secret).value(0)));
}

void tst_Request::redirects_data()
{
    QTest::addColumn<QByteArray>("verb");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("toOtherOrigin");
    QTest::addColumn<bool>("isFollowed");
    for (const int status : { 301, 302, 307, 308 }) {
        QTest::addRow("GET %d, same origin", status)
            << QByteArray("GET") << status << false << true;
        QTest::addRow("GET %d, other origin", status)
            << QByteArray("GET") << status << true << false;
        for (const char *verb : { "HEAD", "POST", "PUT" })
            QTest::addRow("%s %d", verb, status) << QByteArray(verb) << status << false << false;
    }
}

void tst_Request::redirects()
{
    QFETCH(QByteArray, verb);
    QFETCH(int, status);
    QFETCH(bool, toOtherOrigin);
    QFETCH(bool, isFollowed);
    const test::LogCapture log;
    Scene scene;
    test::WireServer other;
    const QUrl target = (toOtherOrigin ? other : scene.server).url(QStringLiteral("/moved"));
    scene.server.enqueue(Answer::redirect(status, target));
    QNetworkRequest to = scene.to();
    to.setUrl(
        QUrl(to.url().toString().replace(QLatin1String("//"), QLatin1String("//name:word@"))));

    QNetworkAccessManager *manager = scene.manager.get();
    Request *request = nullptr;
    if (verb == "GET")
        request = new GetRequest(to, manager, &scene.owner);
    else if (verb == "HEAD")
        request = new HeadRequest(to, manager, &scene.owner);
    else if (verb == "POST")
        request = new PostRequest(to, manager, {}, &scene.owner);
    else
        request = new PutRequest(to, manager, scene.buffer("x"), &scene.owner);
    const Outcome outcome = outcomeOf(request);
    QCOMPARE(outcome.finished, 1);
    QCOMPARE(outcome.isOk, isFollowed);
    QCOMPARE(int(scene.server.messages().size()), isFollowed ? 2 : 1);
    QVERIFY(other.messages().isEmpty());
    for (const test::WireServer::Message &message : scene.server.messages())
        QVERIFY(message.hasHeader("Authorization"));
    QCOMPARE(outcome.errorString.isEmpty(), isFollowed);
}

void tst_Request::failsExactlyOnce_data()
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
        s.fullDevice.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        return s.getInto(&s.fullDevice);
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
            return Answer::status(200, "{}");
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
        const QByteArray packed = qCompress(QByteArray(64 * 1024 * 1024, ' '), 9).mid(4);
        s.server.enqueue(Answer::status(200, packed, "Content-Encoding: deflate\r\n"));
        Request *request = s.get();
        request->setMaximumSize(1024);
        return request;
    });
}

void tst_Request::failsExactlyOnce()
{
    QFETCH(Script, script);
    QFETCH(QString, errorString);
    const test::LogCapture log;
    Scene scene;
    const Outcome outcome = outcomeOf(script(scene));
    QCOMPARE(outcome.finished, 1);
    QVERIFY(outcome.isGone);
    QVERIFY(!outcome.isOk);
    QVERIFY(outcome.error != QNetworkReply::NoError);
    QVERIFY2(outcome.errorString.contains(errorString), qPrintable(outcome.errorString));
    QVERIFY(!outcome.errorString.isEmpty());
    QCOMPARE(log.count(QStringLiteral("vorrel.request|warning|")), 1);
    QCOMPARE(log.count(outcome.errorString), 1);
    for (const test::WireServer::Message &message : scene.server.messages())
        QVERIFY(!message.hasHeader("X-Evil"));
}

void tst_Request::suppressionSparesRefusals()
{
    const test::LogCapture log;
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

void tst_Request::httpErrorsKeepTheirBody()
{
    const test::LogCapture log;
    Scene scene;
    scene.server.setHandler([](const auto &) {
        return Answer::status(404, "{\"error\":\"not_found\",\"reason\":\"deleted\"}");
    });
    for (const bool isSuppressed : { false, true }) {
        Request *request = scene.get();
        request->setSuppressErrors(isSuppressed);
        QSignalSpy spy(request, &Request::finished);
        QVERIFY(spy.wait());
        QCOMPARE(request->responseCode(), 404);
        QCOMPARE(request->error(), QNetworkReply::ContentNotFoundError);
        QVERIFY(!request->isOk(200) && !request->isOk(404));
        QCOMPARE(request->errorString(), QStringLiteral("HTTP status 404"));
        QCOMPARE(request->responseObject(nullptr).value(QLatin1String("reason")).toString(),
                 QStringLiteral("deleted"));
        QCOMPARE(int(log.lines().size()), 1);
    }
}

void tst_Request::parsesJson_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QJsonValue::Type>("type");
    QTest::addColumn<bool>("isObject");
    QTest::newRow("object") << QByteArray("{\"a\":1}") << QJsonValue::Object << true;
    QTest::newRow("array") << QByteArray("[{\"a\":1}]") << QJsonValue::Array << false;
    QTest::newRow("page of a proxy") << QByteArray("<html/>") << QJsonValue::Undefined << false;
    QTest::newRow("cut") << QByteArray("{\"a\":1") << QJsonValue::Undefined << false;
    QTest::newRow("empty") << QByteArray() << QJsonValue::Undefined << false;
}

void tst_Request::parsesJson()
{
    QFETCH(QByteArray, body);
    QFETCH(QJsonValue::Type, type);
    QFETCH(bool, isObject);
    test::FakeCouch couch;
    couch.answerNext(body);
    auto *request =
        new GetRequest(QNetworkRequest(QUrl(QStringLiteral("http://host/db/x"))), &couch);
    QSignalSpy spy(request, &Request::finished);
    QVERIFY(spy.wait());
    QVERIFY(request->isOk(200));
    QCOMPARE(request->rawResponse(), body);
    QJsonParseError error;
    QCOMPARE(request->response(&error).type(), type);
    QCOMPARE(error.error == QJsonParseError::NoError, type != QJsonValue::Undefined);
    QCOMPARE(request->response(nullptr).type(), type);
    QCOMPARE(request->responseObject(&error).isEmpty(), !isObject);
    QCOMPARE(error.error == QJsonParseError::NoError, isObject);
    QCOMPARE(request->responseObject(nullptr).isEmpty(), !isObject);
}

void tst_Request::destroyedRequestIsSilent_data()
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

void tst_Request::destroyedRequestIsSilent()
{
    QFETCH(Script, script);
    const test::LogCapture log;
    Scene scene;
    QPointer<Request> request = script(scene);
    QSignalSpy finished(request.data(), &Request::finished);
    QTRY_VERIFY(!request);
    QTRY_COMPARE(scene.server.openConnections(), 0);
    QCOMPARE(int(finished.size()), 0);
    QVERIFY2(log.lines().isEmpty(), qPrintable(log.lines().value(0)));
}

void tst_Request::finishedComesFromTheEventLoopOnly()
{
    const test::LogCapture log;
    Scene scene;
    const QPointer<Request> request = scene.get();
    QSignalSpy spy(request.data(), &Request::finished);
    request->abort();
    QCOMPARE(int(spy.size()), 0);
    QVERIFY(!request->isOk(200));
    QVERIFY(spy.wait());
    QVERIFY(request);
    QCOMPARE(request->reply(), nullptr);
    QTRY_VERIFY(!request);
    QVERIFY(scene.server.messages().isEmpty());
}

void tst_Request::slotsMayDeleteRequestAndManager()
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

void tst_Request::progressKeepsARequestAlive()
{
    Scene scene;
    scene.server.enqueue(Answer::status(200, QByteArray(500, ' ')).inPieces(50, 60ms));
    QElapsedTimer time;
    time.start();
    const Outcome outcome =
        outcomeOf(new Impatient<GetRequest>(scene.to(), scene.manager.get(), &scene.owner));
    QVERIFY(outcome.isOk);
    QVERIFY(time.elapsed() > 400);
}

// A manager sends six requests at a time. The time limit of the seventh begins when one of them
// has ended.
void tst_Request::waitingForAConnectionIsNoSilence()
{
    const test::LogCapture log;
    Scene scene;
    for (int i = 0; i < 6; ++i)
        scene.server.enqueue(Answer::hang());
    const auto make = [&scene] {
        return new Impatient<GetRequest>(scene.to(), scene.manager.get(), &scene.owner);
    };
    QList<QPointer<Request>> hanging;
    for (int i = 0; i < 6; ++i)
        hanging.append(make());
    const Outcome outcome = outcomeOf(make());
    QVERIFY2(outcome.isOk, qPrintable(outcome.errorString));
    for (const QPointer<Request> &request : std::as_const(hanging))
        QTRY_VERIFY(!request);
    QCOMPARE(log.count(QStringLiteral("No progress for 400 ms")), 6);
}

void tst_Request::sinkGetsTheBodyAsItArrives()
{
    Scene scene;
    const Answer answer = Answer::status(200, "0123456789");
    scene.server.enqueue(answer.inPieces(int(answer.bytes.size()) - 5, 200ms));
    QBuffer sink;
    sink.open(QIODevice::WriteOnly);
    Request *request = scene.getInto(&sink);
    QSignalSpy progress(request, &Request::downloadProgress);
    QSignalSpy finished(request, &Request::finished);
    QTRY_COMPARE(sink.data(), QByteArray("01234"));
    QVERIFY(finished.wait());
    QCOMPARE(sink.data(), QByteArray("0123456789"));
    QVERIFY(request->isOk(200));
    QVERIFY(request->rawResponse().isEmpty());
    QCOMPARE(progress.last(), (QVariantList { qint64(10), qint64(10) }));
}

// The server refuses before it has the body, and closes.
void tst_Request::conflictDuringUpload()
{
    const test::LogCapture log;
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

void tst_Request::bulkAnswerOfTheFakeDatabase()
{
    test::FakeCouch couch;
    couch.store({ { QStringLiteral("_id"), QStringLiteral("here") } });
    couch.markDeleted(QStringLiteral("gone"));
    const QUrl url = CouchUrl::resource(
        QUrl(QStringLiteral("http://host")), QStringLiteral("db"), QStringLiteral("_all_docs"),
        { { QStringLiteral("include_docs"), QStringLiteral("true") } });
    const QJsonArray keys { QStringLiteral("here"), QStringLiteral("gone"),
                            QStringLiteral("never") };
    auto *request =
        new PostRequest(QNetworkRequest(url), &couch, { { QStringLiteral("keys"), keys } });
    QSignalSpy spy(request, &Request::finished);
    QVERIFY(spy.wait());
    QVERIFY(request->isOk(200));
    const QJsonArray rows = request->responseObject(nullptr).value(QLatin1String("rows")).toArray();
    QCOMPARE(rows.at(0)[QStringLiteral("doc")][QStringLiteral("_rev")].toString(),
             QStringLiteral("1-here"));
    QVERIFY(rows.at(1)[QStringLiteral("doc")].isNull());
    QVERIFY(rows.at(1)[QStringLiteral("value")][QStringLiteral("deleted")].toBool());
    QCOMPARE(rows.at(2)[QStringLiteral("error")].toString(), QStringLiteral("not_found"));
    QCOMPARE(couch.calls().first().keys().join(QLatin1Char(',')),
             QStringLiteral("here,gone,never"));
}

void tst_Request::faultsOfTheFakeDatabase()
{
    const test::LogCapture log;
    test::FakeCouch couch;
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

QTEST_GUILESS_MAIN(tst_Request)
#include "tst_request.moc"
