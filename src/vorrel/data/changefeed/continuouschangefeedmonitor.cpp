// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/continuouschangefeedmonitor.h>

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/clocktimer_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/changefeed/changefeederrors.h>
#include <vorrel/data/changefeed/linesplitter_p.h>

#include <vorrel/core/preparedrequest.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QMetaEnum>

#include <optional>

namespace vo::data {

namespace {

// Bytes taken from the connection at a time. More would be copied once more in long streams.
constexpr qint64 pieceSize = qint64(64) * 1024;

qint64 now()
{
    return Clock::instance().currentMSecsSinceEpoch();
}

} // namespace

struct ContinuousChangeFeedMonitor::Private
{
    bool receiving = false; // a line has come on the present connection
    QPointer<ContinuousChangeFeedError> error;
    std::optional<qint64> lastActivity; // milliseconds since the epoch; none before the first
    ClockTimer *watchdog = nullptr;
    ClockTimer *reconnectTimer = nullptr; // one for all reasons, so that they do not pile up
    QPointer<QNetworkReply> reply;
    const QObject *replyManager = nullptr; // only compared
    LineSplitter lines { tuning::maximumFeedLine };
    bool readScheduled = false;
};

ContinuousChangeFeedMonitor::ContinuousChangeFeedMonitor(const QString &database, Context *context)
    : BaseChangeFeedMonitor(database, context)
    , d(new Private)
{
    d->reconnectTimer = new ClockTimer([this] { reconnect(); }, this);
    reconnect();
    d->watchdog = new ClockTimer([this] { checkActivity(); }, this);
    d->watchdog->startPeriodic(tuning::feedWatchdog);
}

ContinuousChangeFeedMonitor::~ContinuousChangeFeedMonitor()
{
    dropReply();
    if (d->error) {
        Q_EMIT d->error->fixed();
    }
}

bool ContinuousChangeFeedMonitor::isReceiving() const
{
    return d->receiving;
}

void ContinuousChangeFeedMonitor::reportError(Context *context)
{
    if (!d->error) {
        d->error = new ContinuousChangeFeedError(this, context);
        context->addError(d->error);
    }
}

// The connection

void ContinuousChangeFeedMonitor::reconnect()
{
    d->reconnectTimer->stop();
    if (!closeReply()) {
        return;
    }
    if (canConnect()) {
        open(networkAccessManager());
    } else {
        d->reconnectTimer->start(tuning::feedManagerWait);
    }
}

// False when a slot has destroyed this monitor.
bool ContinuousChangeFeedMonitor::closeReply()
{
    if (!d->reply || !networkAccessManager()) {
        return true;
    }
    const QPointer<ContinuousChangeFeedMonitor> self(this);
    Q_EMIT error();
    if (self) {
        dropReply();
    }
    return !self.isNull();
}

void ContinuousChangeFeedMonitor::dropReply()
{
    if (QNetworkReply *reply = d->reply) {
        d->reply.clear();
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
    d->receiving = false;
    d->lines.clear();
}

void ContinuousChangeFeedMonitor::open(QNetworkAccessManager *manager)
{
    QNetworkRequest request(nextFeedUrl(
        { { QStringLiteral("feed"), QStringLiteral("continuous") },
          { QStringLiteral("heartbeat"), QString::number(tuning::feedHeartbeat.count()) } }));
    qCInfo(lcChangeFeed).noquote()
        << "Starting continuous change feed:" << CouchUrl::displayText(request.url());
    // What is compressed comes in blocks, and a block waits for its last record.
    request.setRawHeader("Accept-Encoding", "identity");
    const PreparedRequest prepared(QNetworkAccessManager::GetOperation, request);
    if (!prepared.isValid()) {
        qCCritical(lcChangeFeed) << "Network error" << prepared.errorString();
        d->reconnectTimer->start(tuning::feedReconnect);
        Q_EMIT error();
        return;
    }
    d->reply = manager->get(prepared.networkRequest());
    d->reply->setParent(this);
    d->replyManager = manager;
    connect(d->reply, &QNetworkReply::errorOccurred, this,
            &ContinuousChangeFeedMonitor::handleNetworkError);
    connect(d->reply, &QNetworkReply::readyRead, this,
            &ContinuousChangeFeedMonitor::handleReadyRead);
    connect(d->reply, &QNetworkReply::finished, this, &ContinuousChangeFeedMonitor::handleFinished);
    connect(manager, &QObject::destroyed, this,
            &ContinuousChangeFeedMonitor::handleManagerDestroyed, Qt::UniqueConnection);
    d->lastActivity = now();
}

void ContinuousChangeFeedMonitor::checkActivity()
{
    if (!d->lastActivity) {
        return;
    }
    const std::chrono::milliseconds silence(now() - *d->lastActivity);
    if (silence > tuning::feedSilence) {
        reconnect();
    } else if (silence < std::chrono::milliseconds::zero()) {
        d->lastActivity = now(); // the clock was set back
    }
}

void ContinuousChangeFeedMonitor::handleNetworkError(QNetworkReply::NetworkError code)
{
    qCCritical(lcChangeFeed) << "Network error"
                             << QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(code)
                             << d->reply->errorString();
    Q_EMIT error();
}

void ContinuousChangeFeedMonitor::handleFinished()
{
    if (d->reply) {
        d->reconnectTimer->start(tuning::feedReconnect);
    }
}

// The reply belongs to this monitor and so outlives its manager, which it may not use any more.
void ContinuousChangeFeedMonitor::handleManagerDestroyed(QObject *manager)
{
    if (manager == d->replyManager && d->reply) {
        d->reply->disconnect(this);
        delete d->reply;
        d->receiving = false;
        d->lines.clear();
        d->reconnectTimer->start(tuning::feedManagerWait);
    }
}

// The stream

void ContinuousChangeFeedMonitor::handleReadyRead()
{
    d->lastActivity = now();
    if (!d->readScheduled) {
        readSlice();
    }
}

// A JSON body under another status than 200 would be lines, too, and so would the page of a portal.
bool ContinuousChangeFeedMonitor::isFeed() const
{
    const QString type = d->reply->header(QNetworkRequest::ContentTypeHeader).toString();
    return d->reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == 200
        && !type.startsWith(QLatin1String("text/html"), Qt::CaseInsensitive);
}

void ContinuousChangeFeedMonitor::readSlice()
{
    const QPointer<ContinuousChangeFeedMonitor> self(this);
    const QPointer<QNetworkReply> reply = d->reply;
    const TimeSlice slice(tuning::changeFeedSlice);
    while (self && reply && reply == d->reply) {
        if (!isFeed()) {
            reply->skip(reply->bytesAvailable());
            return;
        }
        if (slice.isOver()) {
            d->readScheduled = true;
            QMetaObject::invokeMethod(
                this,
                [this] {
                    d->readScheduled = false;
                    readSlice();
                },
                Qt::QueuedConnection);
            return;
        }
        if (const std::optional<QByteArray> line = d->lines.takeLine()) {
            handleLine(*line);
        } else if (d->lines.isTooLong()) {
            giveUpLine();
        } else if (const QByteArray piece = reply->read(pieceSize); !piece.isEmpty()) {
            d->lines.append(piece);
        } else {
            return;
        }
    }
}

void ContinuousChangeFeedMonitor::handleLine(const QByteArray &line)
{
    if (!std::exchange(d->receiving, true)) {
        feedAnswers();
    }
    const QByteArray text = line.trimmed();
    if (text.isEmpty()) {
        return; // a sign of life
    }
    QJsonParseError error {};
    const QJsonDocument record = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        qCCritical(lcChangeFeed) << "Error parsing change record" << error.errorString();
    } else {
        handleRecord(record.object());
    }
}

void ContinuousChangeFeedMonitor::giveUpLine()
{
    qCCritical(lcChangeFeed, "Dropping the change feed: a line is longer than %d bytes",
               tuning::maximumFeedLine);
    d->reconnectTimer->start(tuning::feedReconnect);
    closeReply();
}

} // namespace vo::data

#include "moc_continuouschangefeedmonitor.cpp"
