// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/custom/proxies/datarows.h>

#include <vector>

namespace vo::data {

/// What a sorter has found out about each row, so that it reads a row once and not for each of the
/// rows that it is compared with.
template <typename Key>
class RowKeys
{
public:
    /// \p read gives the key of a row that is not known, or has changed.
    template <typename Read>
    Key of(const DataRows &rows, int row, Read read)
    {
        const auto index = std::size_t(row);
        if (index >= m_entries.size()) {
            m_entries.resize(index + 1);
        }
        const quint64 revision = rows.revision(row);
        if (m_entries[index].revision != revision) {
            m_entries[index] = { revision, read(row) };
        }
        return m_entries[index].key;
    }

private:
    struct Entry
    {
        quint64 revision = 0;
        Key key {};
    };

    std::vector<Entry> m_entries;
};

} // namespace vo::data
