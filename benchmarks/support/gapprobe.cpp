// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/gapprobe.h"

#include <algorithm>

namespace vo::benchmark {

GapProbe::GapProbe()
{
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        m_gaps << double(m_clock.nsecsElapsed()) / 1e6;
        m_clock.restart();
    });
    m_clock.start();
    m_timer.start(0);
}

double GapProbe::longest() const
{
    return percentile(1);
}

double GapProbe::percentile(double p) const
{
    QList<double> sorted = m_gaps;
    std::sort(sorted.begin(), sorted.end());
    return sorted.isEmpty() ? 0 : sorted.at(int(p * double(sorted.size() - 1)));
}

int GapProbe::countAbove(double limit) const
{
    return int(
        std::count_if(m_gaps.begin(), m_gaps.end(), [limit](double gap) { return gap > limit; }));
}

} // namespace vo::benchmark
