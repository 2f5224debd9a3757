// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/clock_p.h>

#include <QtCore/QPointer>

#include <map>

namespace vo::test {

/// The clock of the library as long as it lives: it stands still until a test steps it. One at a
/// time.
class ManualClock : public data::Clock
{
public:
    ManualClock() { setInstance(this); }
    ~ManualClock() override { setInstance(nullptr); }
    Q_DISABLE_COPY_MOVE(ManualClock)

    /// Lets time pass, and calls what becomes due in that time, in its order.
    void advance(std::chrono::milliseconds time)
    {
        const qint64 end = m_now + time.count();
        while (!m_shots.empty() && m_shots.begin()->first <= end) {
            const auto shot = m_shots.extract(m_shots.begin());
            m_now = shot.key();
            shot.mapped()();
        }
        m_now = end;
    }

    [[nodiscard]] qint64 currentMSecsSinceEpoch() const override { return m_now; }

    void singleShot(std::chrono::milliseconds delay, QObject *receiver,
                    std::function<void()> function) override
    {
        const QPointer<QObject> guard(receiver);
        m_shots.emplace(m_now + delay.count(), [guard, function = std::move(function)] {
            if (guard) {
                function();
            }
        });
    }

private:
    qint64 m_now = 1600000000000; // a day in 2020
    std::multimap<qint64, std::function<void()>> m_shots;
};

} // namespace vo::test
