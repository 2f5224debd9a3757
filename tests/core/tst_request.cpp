// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "core/requestscene.h"
#include "support/fakecouch.h"
#include "support/logcapture.h"

#include <vorrel/core/couchurl.h>
#include <vorrel/core/headrequest.h>
#include <vorrel/core/postrequest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonParseError>
#include <QtCore/QLoggingCategory>
#include <QtTest/QSignalSpy>

using namespace std::chrono_literals;
using namespace vo;
using namespace vo::test;
using Answer = WireServer::Answer;

namespace {

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

} // namespace

Q_DECLARE_METATYPE(QJsonValue::Type)

class tst_Request : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void wireForms_data();
    void wireForms();
    void credentials_data();
    void credentials();
    void redirects_data();
    void redirects();
    void httpErrorsKeepTheirBody();
    void parsesJson_data();
    void parsesJson();
    void finishedComesFromTheEventLoopOnly();
    void progressKeepsARequestAlive();
    void waitingForAConnectionIsNoSilence();
    void sinkGetsTheBodyAsItArrives();
    void bulkAnswerOfTheFakeDatabase();
};

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
    const WireServer::Message &message = scene.server.messages().first();
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

    const LogCapture log;
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
    for (const WireServer::Message &message : scene.server.messages()) {
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
    const LogCapture log;
    Scene scene;
    WireServer other;
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
    for (const WireServer::Message &message : scene.server.messages())
        QVERIFY(message.hasHeader("Authorization"));
    QCOMPARE(outcome.errorString.isEmpty(), isFollowed);
}

void tst_Request::httpErrorsKeepTheirBody()
{
    const LogCapture log;
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
    FakeCouch couch;
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

void tst_Request::finishedComesFromTheEventLoopOnly()
{
    const LogCapture log;
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
    const LogCapture log;
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

void tst_Request::bulkAnswerOfTheFakeDatabase()
{
    FakeCouch couch;
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

QTEST_GUILESS_MAIN(tst_Request)
#include "tst_request.moc"
