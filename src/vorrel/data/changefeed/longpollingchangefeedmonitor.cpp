// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/longpollingchangefeedmonitor.h>

#include <vorrel/data/base/clocktimer_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/changefeed/changefeederrors.h>

#include <vorrel/core/getrequest.h>

#include <QtCore/QJsonParseError>

#include <algorithm>

namespace vo::data {

namespace {

// A failing server is asked with short timeouts, so that the end of the failure shows soon.
std::chrono::milliseconds serverTimeout(int failures)
{
    return failures < 1
        ? tuning::longPollTimeout
        : std::min(failures, tuning::longPollRetryLimit) * tuning::longPollRetryStep;
}

} // namespace

LongPollingChangeFeedMonitor::LongPollingChangeFeedMonitor(const QString &database,
                                                           Context *context)
    : BaseChangeFeedMonitor(database, context)
    , m_pollTimer(new ClockTimer([this] { poll(); }, this))
{
    m_pollTimer->startPeriodic(tuning::longPollPeriod);
    QMetaObject::invokeMethod(
        this, [this] { poll(); }, Qt::QueuedConnection);
}

LongPollingChangeFeedMonitor::~LongPollingChangeFeedMonitor()
{
    if (m_error) {
        Q_EMIT m_error->fixed();
    }
}

void LongPollingChangeFeedMonitor::reportError(Context *context)
{
    if (!m_error) {
        m_error = new LongPollingChangeFeedError(this, context);
        context->addError(m_error);
    }
}

void LongPollingChangeFeedMonitor::poll()
{
    if (!canConnect() || m_request || hasQueuedRecords()) {
        return;
    }
    const QNetworkRequest request(nextFeedUrl(
        { { QStringLiteral("feed"), QStringLiteral("longpoll") },
          { QStringLiteral("timeout"), QString::number(serverTimeout(m_failures).count()) } }));
    qCDebug(lcChangeFeed).noquote()
        << "Polling for changes:" << CouchUrl::displayText(request.url());
    m_request = new GetRequest(request, networkAccessManager(), this);
    m_request->setSuppressErrors(true);
    connect(m_request, &Request::finished, this, &LongPollingChangeFeedMonitor::handleResponse);
}

void LongPollingChangeFeedMonitor::handleResponse()
{
    qCDebug(lcChangeFeed) << "Processing feed response";
    if (!m_request || !m_request->isOk(200)) {
        ++m_failures;
        m_request.clear();
        Q_EMIT error();
        return;
    }
    QJsonParseError parseError {};
    const QJsonObject answer = m_request->responseObject(&parseError);
    if (parseError.error != QJsonParseError::NoError) {
        qCCritical(lcChangeFeed) << "Failed to parse change feed response" << parseError.error
                                 << parseError.errorString();
        return;
    }
    m_failures = 0;
    m_request.clear();
    feedAnswers();
    handleAnswer(answer);
}

} // namespace vo::data

#include "moc_longpollingchangefeedmonitor.cpp"
