// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/request.h>

#include <vorrel/core/couchurl.h>
#include <vorrel/core/preparedrequest.h>
#include <vorrel/core/timelimits_p.h>

#include <QtCore/QBasicTimer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileDevice>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonParseError>
#include <QtCore/QLoggingCategory>
#include <QtCore/QPointer>
#include <QtCore/QTimerEvent>

#include <algorithm>

namespace vo {

namespace {

Q_LOGGING_CATEGORY(lcRequest, "vorrel.request", QtInfoMsg)

constexpr qint64 maximumSizeInMemory = qint64(256) * 1024 * 1024;

// Read in pieces, so that a compressed answer is not unpacked as a whole before it is measured.
constexpr qint64 pieceSize = qint64(1024) * 1024;

// What a network access manager has per host; a change feed that it carries may hold one more.
constexpr int connectionsPerHost = 6;
constexpr int connectionsForRequests = connectionsPerHost - 1;

const char *verb(QNetworkAccessManager::Operation operation)
{
    switch (operation) {
    case QNetworkAccessManager::HeadOperation:
        return "HEAD";
    case QNetworkAccessManager::GetOperation:
        return "GET";
    case QNetworkAccessManager::PutOperation:
        return "PUT";
    case QNetworkAccessManager::PostOperation:
        return "POST";
    case QNetworkAccessManager::DeleteOperation:
        return "DELETE";
    default:
        return "Request";
    }
}

} // namespace

struct Request::Private
{
    // Waiting and Running end in Ended exactly once; Delivered follows with the signal.
    enum class State { Waiting, Running, Ended, Delivered };

    Private(Request *request, QNetworkAccessManager::Operation op, const QNetworkRequest &what,
            QNetworkAccessManager *with)
        : q(request)
        , operation(op)
        , prepared(op, what)
        , manager(with)
    { }

    void start();
    void watch();
    void progress();
    void checkTime();
    [[nodiscard]] bool waitsForConnection() const;
    void readHeaders();
    bool readBody();
    bool keep(const QByteArray &data);
    bool flushSink();
    bool checkSink(bool isFine);
    void replyFinished();
    void end(const QString &reason);
    void deliver();
    void report() const;

    Request *const q;
    const QNetworkAccessManager::Operation operation;
    const PreparedRequest prepared;
    const QPointer<QNetworkAccessManager> manager;
    QPointer<QNetworkReply> reply;
    State state = State::Waiting;
    bool suppressErrors = false;
    bool refused = false;
    bool hasSink = false;
    QPointer<QIODevice> sink;
    QByteArray body;
    qint64 received = 0;
    qint64 maximumSize = -1;
    int status = 0;
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QString errorString;
    QBasicTimer timer;
    QElapsedTimer lastProgress;
    bool hasProgressed = false;
    bool isQueued = false;
};

void Request::Private::start()
{
    if (state != State::Waiting)
        return;
    refused = !prepared.isValid();
    if (refused)
        return end(prepared.errorString());
    if (!manager)
        return end(QStringLiteral("No network access manager"));
    q->prepare();
    if (state != State::Waiting)
        return;
    if (hasSink && (!sink || !sink->isWritable()))
        return end(QStringLiteral("The data sink is not open for writing"));
    reply = q->perform();
    if (state != State::Waiting)
        return;
    if (!reply)
        return end(QStringLiteral("Nothing was sent"));
    watch();
}

void Request::Private::watch()
{
    state = State::Running;
    isQueued = waitsForConnection();
    lastProgress.start();
    if (const int limit = q->timeout(); limit > 0)
        timer.start(limit, q);
    connect(reply, &QNetworkReply::metaDataChanged, q, [this] { readHeaders(); });
    connect(reply, &QNetworkReply::readyRead, q, [this] { readBody(); });
    connect(reply, &QNetworkReply::finished, q, [this] { replyFinished(); });
    connect(reply, &QNetworkReply::downloadProgress, q, [this](qint64 bytes, qint64 total) {
        progress();
        Q_EMIT q->downloadProgress(bytes, total);
    });
    connect(reply, &QNetworkReply::uploadProgress, q, [this](qint64 bytes, qint64 total) {
        progress();
        Q_EMIT q->uploadProgress(bytes, total);
    });
    connect(reply, &QObject::destroyed, q,
            [this] { end(QStringLiteral("The network access manager was destroyed")); });
    if (reply->isFinished())
        QMetaObject::invokeMethod(
            q, [this] { replyFinished(); }, Qt::QueuedConnection);
}

void Request::Private::progress()
{
    hasProgressed = true;
    lastProgress.restart();
}

void Request::Private::checkTime()
{
    const int limit = q->timeout();
    if (limit <= 0)
        return timer.stop();
    if (isQueued && !hasProgressed && lastProgress.hasExpired(limit - 1)) {
        // Nothing has been asked of the server yet. Its time begins when the way is free.
        isQueued = waitsForConnection();
        lastProgress.restart();
    }
    const qint64 left = limit - lastProgress.elapsed();
    if (left > 0)
        timer.start(int(left), q);
    else
        end(QStringLiteral("No progress for %1 ms").arg(limit));
}

// Whether enough older requests to the same server are open to occupy all its connections. The
// replies of a manager are its children, in the order in which they were made.
bool Request::Private::waitsForConnection() const
{
    if (!manager)
        return false;
    int older = 0;
    for (const QObject *child : manager->children()) {
        if (child == reply || older == connectionsForRequests)
            break;
        const auto *other = qobject_cast<const QNetworkReply *>(child);
        if (other && other->isRunning() && other->url().authority() == reply->url().authority())
            ++older;
    }
    return older == connectionsForRequests;
}

void Request::Private::readHeaders()
{
    progress();
    status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

bool Request::Private::readBody()
{
    progress();
    while (const qint64 available = std::min(reply->bytesAvailable(), pieceSize)) {
        const QByteArray data = reply->read(available);
        if (data.isEmpty())
            break;
        if (!keep(data))
            return false;
    }
    return true;
}

bool Request::Private::keep(const QByteArray &data)
{
    const qint64 limit = maximumSize >= 0 ? maximumSize : hasSink ? -1 : maximumSizeInMemory;
    received += data.size();
    if (limit >= 0 && received > limit) {
        end(QStringLiteral("The answer is larger than %1 bytes").arg(limit));
        return false;
    }
    if (!hasSink) {
        body.append(data);
        return true;
    }
    return checkSink(sink && sink->write(data) == data.size());
}

// What a full disk refuses may stand in the buffer of the file until now.
bool Request::Private::flushSink()
{
    auto *file = qobject_cast<QFileDevice *>(sink.data());
    return checkSink(!hasSink || (file ? file->flush() : !sink.isNull()));
}

bool Request::Private::checkSink(bool isFine)
{
    if (!isFine) {
        end(QStringLiteral("Writing to the data sink failed: %1")
                .arg(sink ? sink->errorString() : QStringLiteral("it was destroyed")));
    }
    return isFine;
}

void Request::Private::replyFinished()
{
    if (state != State::Running)
        return;
    readHeaders();
    if (!readBody() || !flushSink())
        return;
    timer.stop();
    reply->disconnect(q);
    state = State::Ended;
    error = reply->error();
    // The texts of the reply for a status hold the URL and what the server likes to say.
    if (status != 0 && status / 100 != 2)
        errorString = QStringLiteral("HTTP status %1").arg(status);
    else if (error != QNetworkReply::NoError)
        errorString = reply->errorString();
    deliver();
}

void Request::Private::end(const QString &reason)
{
    if (state != State::Waiting && state != State::Running)
        return;
    timer.stop();
    state = State::Ended;
    error = QNetworkReply::OperationCanceledError;
    errorString = reason;
    if (reply) {
        reply->disconnect(q);
        reply->abort();
    }
    QMetaObject::invokeMethod(
        q, [this] { deliver(); }, Qt::QueuedConnection);
}

void Request::Private::deliver()
{
    state = State::Delivered;
    report();
    const QPointer<Request> alive(q);
    Q_EMIT q->finished();
    if (alive)
        q->deleteLater();
}

void Request::Private::report() const
{
    const QString where = CouchUrl::displayText(q->url());
    if (!errorString.isEmpty() && (refused || !suppressErrors))
        qCWarning(lcRequest).noquote() << verb(operation) << where << "failed:" << errorString;
    else
        qCDebug(lcRequest).noquote() << verb(operation) << where << "ended with status" << status;
}

Request::Request(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
                 QNetworkAccessManager *manager, QObject *parent)
    : QObject(parent)
    , d(new Private(this, operation, request, manager))
{
    QMetaObject::invokeMethod(
        this, [this] { d->start(); }, Qt::QueuedConnection);
}

Request::~Request()
{
    if (!d->reply)
        return;
    d->reply->disconnect(this);
    d->reply->abort();
    d->reply->deleteLater();
}

bool Request::isOk(int code) const
{
    return d->state >= Private::State::Ended && d->error == QNetworkReply::NoError
        && d->status == code;
}

int Request::responseCode() const
{
    return d->status;
}

QNetworkReply::NetworkError Request::error() const
{
    return d->error;
}

QString Request::errorString() const
{
    return d->errorString;
}

QJsonValue Request::response(QJsonParseError *error) const
{
    const QJsonDocument document = QJsonDocument::fromJson(d->body, error);
    if (document.isArray())
        return document.array();
    return document.isObject() ? QJsonValue(document.object()) : QJsonValue(QJsonValue::Undefined);
}

QJsonObject Request::responseObject(QJsonParseError *error) const
{
    const QJsonDocument document = QJsonDocument::fromJson(d->body, error);
    if (error && document.isArray()) {
        error->error = QJsonParseError::IllegalValue;
        error->offset = 0;
    }
    return document.object();
}

QByteArray Request::rawResponse() const
{
    return d->body;
}

QUrl Request::url() const
{
    return d->prepared.networkRequest().url();
}

const QNetworkReply *Request::reply() const
{
    return d->reply;
}

void Request::abort()
{
    fail(QStringLiteral("Cancelled"));
}

void Request::setDataSink(QIODevice *device)
{
    d->hasSink = device != nullptr;
    d->sink = device;
}

void Request::setSuppressErrors(bool suppress)
{
    d->suppressErrors = suppress;
}

void Request::setMaximumSize(qint64 bytes)
{
    d->maximumSize = bytes;
}

void Request::prepare() { }

int Request::timeout() const
{
    return timelimits::milliseconds(d->hasSink ? timelimits::transfer : timelimits::answer);
}

void Request::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == d->timer.timerId())
        d->checkTime();
    else
        QObject::timerEvent(event);
}

const QNetworkRequest &Request::networkRequest() const
{
    return d->prepared.networkRequest();
}

QNetworkAccessManager *Request::networkAccessManager() const
{
    return d->manager;
}

void Request::fail(const QString &reason)
{
    d->end(reason);
}

} // namespace vo

#include "moc_request.cpp"
