// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QVector>

#include <string_view>

namespace vo::data {

/// The bytes of all documents in a cache, which only ever grow at their end. They lie in segments,
/// so that nothing has to be copied when they grow; a record never crosses from one to the next. A
/// copy costs next to nothing, and stays what it was when the other one grows.
class CacheBlock
{
public:
    CacheBlock() = default;

    /// One segment. Records are then wherever they are said to be.
    explicit CacheBlock(const QByteArray &bytes);

    [[nodiscard]] qint64 size() const { return m_size; }

    /// The record at \p offset. \pre it begins before the end of the block
    [[nodiscard]] const char *at(quint32 offset) const;

    /// Appends both parts of a record and tells its offset.
    quint32 append(std::string_view id, std::string_view json);

    /// All in one piece; without a copy if it is that already.
    [[nodiscard]] QByteArray joined() const;

private:
    struct Segment
    {
        qint64 offset = 0;
        QByteArray bytes;
    };

    QVector<Segment> m_segments;
    qint64 m_size = 0;
};

} // namespace vo::data
