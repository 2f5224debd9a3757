// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/base/clocktimer_p.h>

#include <vorrel/data/base/clock_p.h>

namespace vo::data {

ClockTimer::ClockTimer(std::function<void()> function, QObject *parent)
    : QObject(parent)
    , m_function(std::move(function))
{ }

void ClockTimer::start(std::chrono::milliseconds delay)
{
    ++m_start;
    schedule(delay, false);
}

void ClockTimer::startPeriodic(std::chrono::milliseconds period)
{
    ++m_start;
    schedule(period, true);
}

void ClockTimer::stop()
{
    ++m_start;
}

void ClockTimer::schedule(std::chrono::milliseconds delay, bool periodic)
{
    Clock::instance().singleShot(delay, this, [this, delay, periodic, start = m_start] {
        if (start != m_start) {
            return;
        }
        // Scheduled before the call, which may stop or destroy this timer.
        if (periodic) {
            schedule(delay, true);
        }
        const std::function<void()> function = m_function;
        function();
    });
}

} // namespace vo::data
