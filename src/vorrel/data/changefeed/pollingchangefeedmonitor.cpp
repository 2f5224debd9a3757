// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/pollingchangefeedmonitor.h>

#include <vorrel/data/base/clocktimer_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>

#include <vorrel/core/getrequest.h>

#include <QtCore/QJsonParseError>

namespace vo::data {

PollingChangeFeedMonitor::PollingChangeFeedMonitor(const QString &database, Context *context)
    : BaseChangeFeedMonitor(database, context)
    , m_pollTimer(new ClockTimer([this] { poll(); }, this))
{
    m_pollTimer->startPeriodic(tuning::pollPeriod);
    poll();
}

PollingChangeFeedMonitor::~PollingChangeFeedMonitor() = default;

void PollingChangeFeedMonitor::reportError(Context * /*context*/) { }

void PollingChangeFeedMonitor::poll()
{
    if (!canConnect() || m_request || hasQueuedRecords()) {
        return;
    }
    QNetworkRequest request(nextFeedUrl({}));
    request.setRawHeader("Connection", "close");
    qCDebug(lcChangeFeed).noquote()
        << "Polling for changes:" << CouchUrl::displayText(request.url());
    m_request = new GetRequest(request, networkAccessManager(), this);
    m_request->setSuppressErrors(true);
    connect(m_request, &Request::finished, this, &PollingChangeFeedMonitor::handleResponse);
}

void PollingChangeFeedMonitor::handleResponse()
{
    qCDebug(lcChangeFeed) << "Processing feed response";
    if (!m_request || !m_request->isOk(200)) {
        return;
    }
    QJsonParseError error {};
    const QJsonObject answer = m_request->responseObject(&error);
    if (error.error != QJsonParseError::NoError) {
        qCCritical(lcChangeFeed) << "Failed to parse change feed response" << error.error
                                 << error.errorString();
        return;
    }
    feedAnswers();
    handleAnswer(answer);
}

} // namespace vo::data

#include "moc_pollingchangefeedmonitor.cpp"
