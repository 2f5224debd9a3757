// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

#include <chrono>
#include <functional>

namespace vo::data {

/// A timer over Clock, for periods of a second and more. Starting it again forgets the earlier
/// start, so that it never has more than one call outstanding.
class ClockTimer : public QObject
{
public:
    ClockTimer(std::function<void()> function, QObject *parent);

    /// Calls the function once, after \p delay.
    void start(std::chrono::milliseconds delay);

    /// Calls the function every \p period.
    void startPeriodic(std::chrono::milliseconds period);
    void stop();

private:
    void schedule(std::chrono::milliseconds delay, bool periodic);

    const std::function<void()> m_function;
    int m_start = 0; // number of the present start
};

} // namespace vo::data
