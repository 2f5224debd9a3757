// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/clock_p.h>

#include <QtCore/QList>
#include <QtCore/QPointer>

namespace vo::test {

/// The clock of the library as long as it lives: it stands still until a test steps it. One at a
/// time.
class ManualClock : public data::Clock
{
public:
    ManualClock();
    ~ManualClock() override;
    Q_DISABLE_COPY_MOVE(ManualClock)

    /// Lets time pass, and calls what becomes due in that time, in its order.
    void advance(std::chrono::milliseconds time);

    [[nodiscard]] qint64 currentMSecsSinceEpoch() const override { return m_now; }
    void singleShot(std::chrono::milliseconds delay, QObject *receiver,
                    std::function<void()> function) override;

private:
    struct Shot
    {
        qint64 due;
        QPointer<QObject> receiver;
        std::function<void()> function;
    };

    qint64 m_now = 1600000000000; // a day in 2020
    QList<Shot> m_shots;
};

} // namespace vo::test
