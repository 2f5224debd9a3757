// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/cacheblock_p.h>

#include <vorrel/data/base/tuning_p.h>

#include <algorithm>

namespace vo::data {

CacheBlock::CacheBlock(const QByteArray &bytes)
    : m_segments { { 0, bytes } }
    , m_size(bytes.size())
{ }

const char *CacheBlock::at(quint32 offset) const
{
    const auto behind = std::upper_bound(
        m_segments.cbegin(), m_segments.cend(), offset,
        [](qint64 wanted, const Segment &segment) { return wanted < segment.offset; });
    const Segment &segment = *std::prev(behind);
    return segment.bytes.constData() + (offset - segment.offset);
}

quint32 CacheBlock::append(std::string_view id, std::string_view json)
{
    const qint64 needed = qint64(id.size()) + qint64(json.size());
    const auto room = [](const QByteArray &bytes) { return bytes.capacity() - bytes.size(); };
    if (m_segments.isEmpty() || room(std::as_const(m_segments).last().bytes) < needed) {
        Segment segment { m_size, {} };
        segment.bytes.reserve(int(std::max(needed, tuning::cacheSegmentSize)));
        m_segments.append(std::move(segment));
    }
    QByteArray &bytes = m_segments.last().bytes;
    bytes.append(id.data(), int(id.size()));
    bytes.append(json.data(), int(json.size()));
    m_size += needed;
    return quint32(m_size - needed);
}

QByteArray CacheBlock::joined() const
{
    if (m_segments.size() == 1) {
        return m_segments.first().bytes;
    }
    QByteArray bytes;
    bytes.reserve(int(m_size));
    for (const Segment &segment : m_segments) {
        bytes.append(segment.bytes);
    }
    return bytes;
}

} // namespace vo::data
