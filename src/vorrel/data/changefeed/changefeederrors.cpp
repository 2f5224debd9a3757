// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/changefeederrors.h>

#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/changefeed/continuouschangefeedmonitor.h>
#include <vorrel/data/changefeed/longpollingchangefeedmonitor.h>

namespace vo::data {

namespace {
constexpr int changeFeedErrorCode = 3;
}

ContinuousChangeFeedError::ContinuousChangeFeedError(ContinuousChangeFeedMonitor *monitor,
                                                     QObject *parent)
    : ContextError(Blocking, parent)
    , m_monitor(monitor)
{ }

int ContinuousChangeFeedError::errorCode() const
{
    return changeFeedErrorCode;
}

QString ContinuousChangeFeedError::errorString() const
{
    return qtTrId(textids::changeFeedError);
}

void ContinuousChangeFeedError::tryFix()
{
    if (m_monitor && m_monitor->isReceiving()) {
        Q_EMIT fixed();
    }
}

LongPollingChangeFeedError::LongPollingChangeFeedError(LongPollingChangeFeedMonitor *monitor,
                                                       QObject *parent)
    : ContextError(Blocking, parent)
    , m_monitor(monitor)
{ }

int LongPollingChangeFeedError::errorCode() const
{
    return changeFeedErrorCode;
}

QString LongPollingChangeFeedError::errorString() const
{
    return qtTrId(textids::changeFeedError);
}

void LongPollingChangeFeedError::tryFix()
{
    if (m_monitor && m_monitor->failures() < 1) {
        Q_EMIT fixed();
    }
}

} // namespace vo::data

#include "moc_changefeederrors.cpp"
