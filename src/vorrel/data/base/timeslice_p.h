// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace vo::data {

/// The budget of work for one turn of the event loop; it runs from construction.
class TimeSlice
{
public:
    explicit TimeSlice(std::chrono::milliseconds budget)
        : m_end(Clock::now() + budget)
    { }

    [[nodiscard]] bool isOver() const { return Clock::now() >= m_end; }

private:
    using Clock = std::chrono::steady_clock;

    const Clock::time_point m_end;
};

} // namespace vo::data
