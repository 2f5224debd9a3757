// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/cacheblock_p.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QVector>

#include <string_view>
#include <vector>

namespace vo::data {

/// Where a document lies in the block: its id, and its JSON right behind it.
struct CacheEntry
{
    quint32 accessTime = 0; // minutes since the epoch
    quint32 offset = 0;     // in the block, in bytes
    quint32 idSize = 0;     // bytes
    quint32 dataSize = 0;   // bytes

    [[nodiscard]] qint64 recordSize() const { return qint64(idSize) + dataSize; }
};

/// What goes to the disk.
struct CacheSnapshot
{
    CacheBlock block;
    QVector<CacheEntry> entries; // in no order
};

/// The documents of a cache, by id. Ids are only in the block: the index on them is a flat hash
/// table of positions in the list of entries, 16 to 32 bytes for each, which is filled in a
/// fraction of the time that a node for each entry takes.
///
/// A record that is replaced or removed stays in the block as garbage, until compact().
class VORREL_DATACORE_EXPORT CacheTable
{
public:
    CacheTable();

    /// \pre the record of each entry is in \p block. Of several with the same id the last one
    /// counts. The block does not grow beyond \p sizeLimit bytes.
    CacheTable(const QByteArray &block, const QVector<CacheEntry> &entries,
               qint64 sizeLimit = tuning::cacheSizeLimit);

    [[nodiscard]] int size() const { return int(m_entries.size()); }
    [[nodiscard]] qint64 blockSize() const { return m_block.size(); }

    /// Bytes of the block that no entry needs. Negative if entries overlap, as they may in a file
    /// from elsewhere.
    [[nodiscard]] qint64 garbage() const { return m_block.size() - m_used; }

    /// A position, good until the next change; -1 if there is no such entry.
    [[nodiscard]] int find(std::string_view id) const;

    [[nodiscard]] std::string_view id(int position) const;
    [[nodiscard]] std::string_view json(int position) const;
    void setAccessTime(int position, quint32 minutes);

    /// Appends the record to the block, after a compact() if it needs the room. An entry of this id
    /// is replaced; if the record does not fit, it is removed, and the first time a warning is
    /// logged.
    void insert(std::string_view id, std::string_view json, quint32 minutes);

    void remove(int position);

    /// Drops the garbage, by a copy of all that is left, with an info line. \pre garbage() is not
    /// negative
    void compact();

    [[nodiscard]] CacheSnapshot snapshot() const { return { m_block, m_entries }; }

private:
    struct Slot
    {
        quint32 hash = 0;
        int position = none;
    };

    static constexpr int none = -1;

    [[nodiscard]] quint32 hashOf(std::string_view id) const;
    [[nodiscard]] size_t mask() const { return m_slots.size() - 1; }
    [[nodiscard]] size_t probe(std::string_view id, quint32 hash) const;
    [[nodiscard]] bool makeRoom(std::string_view id, qint64 recordSize);
    void put(std::string_view id, quint32 hash, const CacheEntry &entry);
    void clearSlot(size_t hole);
    void resize(int count);

    CacheBlock m_block;
    QVector<CacheEntry> m_entries;
    std::vector<Slot> m_slots; // a power of two, at most three quarters of them taken
    qint64 m_used = 0;         // bytes of all records
    qint64 m_sizeLimit;
    bool m_toldFull = false;
    quint32 m_seed; // ids come from outside, and must not be made to collide
};

} // namespace vo::data
