// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/manualclock.h"

#include <algorithm>

namespace vo::test {

ManualClock::ManualClock()
{
    setInstance(this);
}

ManualClock::~ManualClock()
{
    setInstance(nullptr);
}

void ManualClock::advance(std::chrono::milliseconds time)
{
    const qint64 end = m_now + time.count();
    for (;;) {
        const auto next =
            std::min_element(m_shots.begin(), m_shots.end(),
                             [](const Shot &a, const Shot &b) { return a.due < b.due; });
        if (next == m_shots.end() || next->due > end) {
            break;
        }
        const Shot shot = *next;
        m_shots.erase(next);
        m_now = shot.due;
        if (shot.receiver) {
            shot.function();
        }
    }
    m_now = end;
}

void ManualClock::singleShot(std::chrono::milliseconds delay, QObject *receiver,
                             std::function<void()> function)
{
    m_shots.append({ m_now + delay.count(), receiver, std::move(function) });
}

} // namespace vo::test
