// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/changefeed/basechangefeedmonitor.h>

namespace vo {
class GetRequest;
}

namespace vo::data {

class ClockTimer;
class LongPollingChangeFeedError;

/// Asks for changes in requests that the database answers when there is one, or after a while. For
/// proxies that do not pass on an endless answer. While polls fail, one LongPollingChangeFeedError
/// stands.
class VORREL_DATACORE_EXPORT LongPollingChangeFeedMonitor : public BaseChangeFeedMonitor
{
    Q_OBJECT
public:
    LongPollingChangeFeedMonitor(const QString &database, Context *context);

    /// Declares its error fixed.
    ~LongPollingChangeFeedMonitor() override;

    void reportError(Context *context) override;

    /// How many polls have failed since the last one that was answered.
    [[nodiscard]] int failures() const { return m_failures; }

private:
    void poll();
    void handleResponse();

    QPointer<GetRequest> m_request;
    QPointer<LongPollingChangeFeedError> m_error;
    int m_failures = 0;
    ClockTimer *const m_pollTimer;
};

} // namespace vo::data
