// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>

#include <optional>

namespace vo::data {

/// Cuts a stream of bytes that arrives in pieces into its lines. Looks at each byte once, however
/// the pieces lie.
class VORREL_DATACORE_EXPORT LineSplitter
{
public:
    /// \p limit is the length in bytes that a line without its end may reach.
    explicit LineSplitter(int limit)
        : m_limit(limit)
    { }

    void append(const QByteArray &bytes);

    /// The next whole line, without its line feed; nothing until one is there.
    [[nodiscard]] std::optional<QByteArray> takeLine();

    /// Whether what is left, once takeLine() gives nothing, has outgrown the limit.
    [[nodiscard]] bool isTooLong() const { return m_buffer.size() - m_begin > m_limit; }
    void clear();

private:
    const int m_limit;
    QByteArray m_buffer;
    int m_begin = 0;   // of the next line
    int m_scanned = 0; // no line feed lies between the two
};

} // namespace vo::data
