// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/context.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimerEvent>

#include <chrono>
#include <functional>
#include <utility>

namespace vo::data {

/// A run that waits until nothing has changed for a while, by a timer of its owner. Whoever waits
/// is busy.
class DelayedRun
{
public:
    /// \p busyChanged may end in the destruction of \p owner and this.
    DelayedRun(QObject *owner, std::chrono::milliseconds delay, std::function<void()> busyChanged)
        : m_owner(owner)
        , m_busyChanged(std::move(busyChanged))
        , m_delay(int(delay.count()))
    { }

    /// In milliseconds. Below 1 there is no wait.
    [[nodiscard]] int delay() const { return m_delay; }
    void setDelay(int milliseconds)
    {
        m_delay = milliseconds;
        m_started = {};
    }
    [[nodiscard]] bool isAtOnce() const { return m_delay < 1; }
    [[nodiscard]] bool isBusy() const { return m_busy; }

    /// Waits from now on.
    void schedule()
    {
        const QPointer<QObject> owner(m_owner);
        m_scheduled = true;
        setBusy(true);
        if (owner) {
            restart();
        }
    }

    /// Stops the timer.
    void cancel()
    {
        if (m_timer != 0) {
            m_owner->killTimer(std::exchange(m_timer, 0));
        }
    }

    /// Whether \p event ends the wait.
    [[nodiscard]] bool isDue(const QTimerEvent &event)
    {
        const bool isDue = event.timerId() == m_timer;
        if (isDue) {
            cancel();
        }
        return isDue;
    }

    void begin() { m_scheduled = false; }

    /// Not busy any more, unless a slot of the run has scheduled the next one.
    void end()
    {
        if (!m_scheduled) {
            setBusy(false);
        }
    }

private:
    /// A list that is filled schedules with each of its documents: a timer that has just been
    /// started will do.
    void restart()
    {
        const auto now = std::chrono::steady_clock::now();
        if (m_timer == 0 || now - m_started >= std::chrono::milliseconds(1)) {
            cancel();
            m_timer = m_owner->startTimer(m_delay, Qt::CoarseTimer);
            m_started = now;
        }
    }

    void setBusy(bool busy)
    {
        if (std::exchange(m_busy, busy) != busy) {
            const auto busyChanged = m_busyChanged;
            busyChanged();
        }
    }

    QObject *const m_owner;
    const std::function<void()> m_busyChanged;
    int m_delay;
    int m_timer = 0;
    std::chrono::steady_clock::time_point m_started; // the timer
    bool m_busy = false;
    bool m_scheduled = false; // since the last run began
};

/// Calls a slot with the documents that change in \p context, instead of those in the one that was
/// \p watched.
template <typename Receiver, typename Slot>
void watchContext(QPointer<Context> &watched, Context *context, Receiver *receiver, Slot slot)
{
    if (context == watched) {
        return;
    }
    if (watched) {
        watched->disconnect(receiver);
    }
    watched = context;
    QObject::connect(context, &Context::documentChanged, receiver, slot);
}

} // namespace vo::data
