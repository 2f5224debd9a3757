// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/contexterror.h>

#include <QtCore/QPointer>

namespace vo::data {

class ContinuousChangeFeedMonitor;
class LongPollingChangeFeedMonitor;

/// The continuous feed is interrupted. Fixed by the first line that arrives on a new connection,
/// and by the end of the monitor.
class VORREL_DATACORE_EXPORT ContinuousChangeFeedError : public vo::data::ContextError
{
    Q_OBJECT
public:
    explicit ContinuousChangeFeedError(ContinuousChangeFeedMonitor *monitor, QObject *parent);

    [[nodiscard]] int errorCode() const override;
    [[nodiscard]] QString errorString() const override;
    void tryFix() override;

private:
    const QPointer<ContinuousChangeFeedMonitor> m_monitor;
};

/// Long polls fail. Fixed by the first one that is answered, and by the end of the monitor.
class VORREL_DATACORE_EXPORT LongPollingChangeFeedError : public vo::data::ContextError
{
    Q_OBJECT
public:
    explicit LongPollingChangeFeedError(LongPollingChangeFeedMonitor *monitor, QObject *parent);

    [[nodiscard]] int errorCode() const override;
    [[nodiscard]] QString errorString() const override;
    void tryFix() override;

private:
    const QPointer<LongPollingChangeFeedMonitor> m_monitor;
};

} // namespace vo::data
