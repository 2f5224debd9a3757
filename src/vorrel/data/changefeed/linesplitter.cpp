// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/linesplitter_p.h>

namespace vo::data {

void LineSplitter::append(const QByteArray &bytes)
{
    // Lines that were taken are dropped here, at most once for each piece.
    m_buffer.remove(0, m_begin);
    m_scanned -= m_begin;
    m_begin = 0;
    m_buffer.append(bytes);
}

std::optional<QByteArray> LineSplitter::takeLine()
{
    const int end = int(m_buffer.indexOf('\n', m_scanned));
    if (end < 0) {
        m_scanned = int(m_buffer.size());
        return std::nullopt;
    }
    QByteArray line = m_buffer.mid(m_begin, end - m_begin);
    m_begin = m_scanned = end + 1;
    return line;
}

void LineSplitter::clear()
{
    m_buffer.clear();
    m_begin = m_scanned = 0;
}

} // namespace vo::data
