// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/downloadstatus.h>

#include <algorithm>

namespace vo::data {

DownloadStatus::DownloadStatus(QObject *parent)
    : QObject(parent)
{ }

DownloadStatus::~DownloadStatus() = default;

qint64 DownloadStatus::received() const
{
    return m_received;
}

qint64 DownloadStatus::total() const
{
    return m_total;
}

double DownloadStatus::percent() const
{
    if (m_finished) {
        return 1;
    }
    return m_total > 0 ? std::min(double(m_received) / double(m_total), 1.0) : 0;
}

void DownloadStatus::report(qint64 received, qint64 total)
{
    set(received, total, false);
}

void DownloadStatus::finish()
{
    const qint64 total = m_total > 0 ? m_total : m_received;
    set(total, total, true);
}

void DownloadStatus::set(qint64 received, qint64 total, bool finished)
{
    if (received != m_received || total != m_total || finished != m_finished) {
        m_received = received;
        m_total = total;
        m_finished = finished;
        Q_EMIT changed();
    }
}

} // namespace vo::data

#include "moc_downloadstatus.cpp"
