// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/base/clock_p.h>

#include <QtCore/QDateTime>
#include <QtCore/QTimer>

namespace vo::data {

namespace {
Clock *&installedClock()
{
    static Clock *clock = nullptr;
    return clock;
}
} // namespace

Clock::~Clock() = default;

qint64 Clock::currentMSecsSinceEpoch() const
{
    return QDateTime::currentMSecsSinceEpoch();
}

void Clock::singleShot(std::chrono::milliseconds delay, QObject *receiver,
                       std::function<void()> function)
{
    QTimer::singleShot(delay, receiver, std::move(function));
}

Clock &Clock::instance()
{
    static auto &system = *new Clock; // never destroyed, since static objects may ask for the time
    Clock *installed = installedClock();
    return installed ? *installed : system;
}

void Clock::setInstance(Clock *clock)
{
    installedClock() = clock;
}

} // namespace vo::data
