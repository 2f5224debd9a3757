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

namespace vo {

namespace {

Q_LOGGING_CATEGORY(lcRequest, "vorrel.request", QtInfoMsg)

constexpr qint64 maximumSizeInMemory = 256 * 1024 * 1024;

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
    void readHeaders();
    bool readBody();
    bool keep(const QByteArray &data);
    void replyFinished();
    void end(const QString &reason);
    void deliver();
    void report() const;
    [[nodiscard]] bool hasFailed() const;

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
    if (!reply) {
        if (state == State::Waiting)
            end(QStringLiteral("Nothing was sent"));
        return;
    }
    watch();
}

void Request::Private::watch()
{
    state = State::Running;
    lastProgress.start();
    if (q->timeout() > 0)
        timer.start(q->timeout(), q);
    connect(reply, &QNetworkReply::metaDataChanged, q, [this] { readHeaders(); });
    connect(reply, &QNetworkReply::readyRead, q, [this] { readBody(); });
    connect(reply, &QNetworkReply::finished, q, [this] { replyFinished(); });
    connect(reply, &QNetworkReply::downloadProgress, q, [this](qint64 bytes, qint64 total) {
        lastProgress.restart();
        Q_EMIT q->downloadProgress(bytes, total);
    });
    connect(reply, &QNetworkReply::uploadProgress, q, [this](qint64 bytes, qint64 total) {
        lastProgress.restart();
        Q_EMIT q->uploadProgress(bytes, total);
    });
    connect(reply, &QObject::destroyed, q,
            [this] { end(QStringLiteral("The network access manager was destroyed")); });
    if (reply->isFinished())
        QMetaObject::invokeMethod(
            q, [this] { replyFinished(); }, Qt::QueuedConnection);
}

void Request::Private::readHeaders()
{
    lastProgress.restart();
    status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

bool Request::Private::readBody()
{
    lastProgress.restart();
    const QByteArray data = reply->readAll();
    return data.isEmpty() || keep(data);
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
    if (sink && sink->write(data) == data.size())
        return true;
    end(QStringLiteral("Writing to the data sink failed: %1")
            .arg(sink ? sink->errorString() : QStringLiteral("it was destroyed")));
    return false;
}

void Request::Private::replyFinished()
{
    if (state != State::Running)
        return;
    readHeaders();
    if (!readBody())
        return;
    // What a full disk refuses may still stand in the buffer of the file.
    if (auto *file = qobject_cast<QFileDevice *>(sink.data()); file && !file->flush())
        return end(QStringLiteral("Writing to the data sink failed: %1").arg(file->errorString()));
    timer.stop();
    reply->disconnect(q);
    state = State::Ended;
    error = reply->error();
    if (status != 0 && status / 100 != 2) {
        const QVariant phrase = reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute);
        errorString = QStringLiteral("HTTP status %1 %2").arg(status).arg(phrase.toString());
    } else if (error != QNetworkReply::NoError) {
        errorString = reply->errorString();
    }
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
    if (event->timerId() != d->timer.timerId())
        return QObject::timerEvent(event);
    const qint64 left = timeout() - d->lastProgress.elapsed();
    if (timeout() > 0 && left <= 0)
        fail(QStringLiteral("Nothing came for %1 ms").arg(timeout()));
    else
        d->timer.start(int(left), this);
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
