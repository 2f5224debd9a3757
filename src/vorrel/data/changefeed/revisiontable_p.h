// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

#include <array>
#include <numeric>

namespace vo::data {

/// The newest known revision of each document of a database. Many small hashes in the place of a
/// large one, since that would take some 40 ms to grow at the 65,537th document.
class RevisionTable
{
public:
    /// Empty for an unknown id.
    [[nodiscard]] QString value(const QString &id) const { return m_parts[part(id)].value(id); }
    [[nodiscard]] bool contains(const QString &id) const { return m_parts[part(id)].contains(id); }
    [[nodiscard]] int count() const
    {
        return std::accumulate(m_parts.begin(), m_parts.end(), 0,
                               [](int sum, const auto &part) { return sum + int(part.size()); });
    }
    void insert(const QString &id, const QString &revision)
    {
        m_parts[part(id)].insert(id, revision);
    }

private:
    static constexpr size_t partCount = 256;

    // By other bits than those by which a hash chooses its buckets.
    static size_t part(const QString &id) { return (qHash(id, 0) >> 16) % partCount; }

    std::array<QHash<QString, QString>, partCount> m_parts;
};

} // namespace vo::data
