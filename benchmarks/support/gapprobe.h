// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QTimer>

namespace vo::benchmark {

/// Measures how long the event loop is away from other work: a timer without delay notes the time
/// between its turns. Costs some 4 % of a core.
class GapProbe
{
public:
    GapProbe();

    [[nodiscard]] double longest() const;            // ms
    [[nodiscard]] double percentile(double p) const; // ms, p from 0 to 1
    [[nodiscard]] int countAbove(double limit) const;

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    QList<double> m_gaps;
};

} // namespace vo::benchmark
