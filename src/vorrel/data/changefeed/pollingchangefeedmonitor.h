// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/changefeed/basechangefeedmonitor.h>

namespace vo {
class GetRequest;
}

namespace vo::data {

class ClockTimer;

/// Asks for changes every 40 s and holds no connection in between. For servers and proxies that
/// cannot do better. Polls that fail are repeated silently.
class VORREL_DATACORE_EXPORT PollingChangeFeedMonitor : public BaseChangeFeedMonitor
{
    Q_OBJECT
public:
    PollingChangeFeedMonitor(const QString &database, Context *context);
    ~PollingChangeFeedMonitor() override;

    void reportError(Context *context) override;

private:
    void poll();
    void handleResponse();

    QPointer<GetRequest> m_request;
    ClockTimer *const m_pollTimer;
};

} // namespace vo::data
