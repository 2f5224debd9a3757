// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/cachetable_p.h>

#include <vorrel/data/base/logging_p.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QRandomGenerator>

namespace vo::data {

CacheTable::CacheTable()
    : CacheTable(QByteArray(), {})
{ }

CacheTable::CacheTable(const QByteArray &block, const QVector<CacheEntry> &entries,
                       qint64 sizeLimit)
    : m_block(block)
    , m_sizeLimit(sizeLimit)
    , m_seed(QRandomGenerator::global()->generate())
{
    m_entries.reserve(entries.size());
    resize(int(entries.size()));
    const auto idOf = [&block](const CacheEntry &entry) {
        return std::string_view(block.constData() + entry.offset, entry.idSize);
    };
    // First all hashes, then all slots: in one loop each entry would wait for the memory of both in
    // turn, which takes four times as long.
    std::vector<quint32> hashes;
    hashes.reserve(size_t(entries.size()));
    for (const CacheEntry &entry : entries) {
        hashes.push_back(hashOf(idOf(entry)));
    }
    auto hash = hashes.cbegin();
    for (const CacheEntry &entry : entries) {
        put(idOf(entry), *hash++, entry);
    }
}

quint32 CacheTable::hashOf(std::string_view id) const
{
    return quint32(qHashBits(id.data(), id.size(), m_seed));
}

std::string_view CacheTable::id(int position) const
{
    const CacheEntry &entry = m_entries.at(position);
    return { m_block.at(entry.offset), entry.idSize };
}

std::string_view CacheTable::json(int position) const
{
    const CacheEntry &entry = m_entries.at(position);
    return { m_block.at(entry.offset) + entry.idSize, entry.dataSize };
}

void CacheTable::setAccessTime(int position, quint32 minutes)
{
    m_entries[position].accessTime = minutes;
}

int CacheTable::find(std::string_view wanted) const
{
    return m_slots[probe(wanted, hashOf(wanted))].position;
}

// The slot that this id has, or would have: a free one.
size_t CacheTable::probe(std::string_view wanted, quint32 hash) const
{
    size_t index = hash & mask();
    while (m_slots[index].position != none
           && (m_slots[index].hash != hash || id(m_slots[index].position) != wanted)) {
        index = (index + 1) & mask();
    }
    return index;
}

void CacheTable::insert(std::string_view id, std::string_view json, quint32 minutes)
{
    if (!makeRoom(id, qint64(id.size()) + qint64(json.size()))) {
        if (!std::exchange(m_toldFull, true)) {
            qCWarning(lcDocCache, "The cache is full, document %s is not cached",
                      qPrintable(QString::fromLatin1(id.data(), int(id.size()))));
        }
        return;
    }
    const quint32 offset = m_block.append(id, json);
    put(id, hashOf(id), { minutes, offset, quint32(id.size()), quint32(json.size()) });
}

// False if there is none, even without garbage and the former record of the same id.
bool CacheTable::makeRoom(std::string_view id, qint64 recordSize)
{
    if (m_block.size() + recordSize <= m_sizeLimit) {
        return true;
    }
    // It goes in any case: if the new one does not fit, it must not be taken for that.
    if (const int former = find(id); former != none) {
        remove(former);
    }
    if (m_used + recordSize > m_sizeLimit) {
        return false;
    }
    compact();
    return true;
}

void CacheTable::put(std::string_view id, quint32 hash, const CacheEntry &entry)
{
    if (size_t(size() + 1) * 4 > m_slots.size() * 3) {
        resize(size() + 1);
    }
    Slot &slot = m_slots[probe(id, hash)];
    m_used += entry.recordSize();
    if (slot.position == none) {
        slot = { hash, size() };
        m_entries.append(entry);
    } else {
        m_used -= m_entries.at(slot.position).recordSize();
        m_entries[slot.position] = entry;
    }
}

void CacheTable::remove(int position)
{
    const auto slotOf = [this](int entry) { return probe(id(entry), hashOf(id(entry))); };
    clearSlot(slotOf(position));
    m_used -= m_entries.at(position).recordSize();
    const int last = size() - 1;
    if (position != last) {
        m_slots[slotOf(last)].position = position;
        m_entries[position] = m_entries.at(last);
    }
    m_entries.removeLast();
}

// A search ends at a free slot, so what was put behind this one only because it was taken moves up.
void CacheTable::clearSlot(size_t hole)
{
    for (size_t index = (hole + 1) & mask(); m_slots[index].position != none;
         index = (index + 1) & mask()) {
        const size_t home = m_slots[index].hash & mask();
        if (((index - home) & mask()) >= ((index - hole) & mask())) {
            m_slots[hole] = m_slots[index];
            hole = index;
        }
    }
    m_slots[hole] = {};
}

void CacheTable::resize(int count)
{
    size_t capacity = 16;
    while (size_t(count) * 4 > capacity * 3) {
        capacity *= 2;
    }
    const std::vector<Slot> former = std::exchange(m_slots, std::vector<Slot>(capacity));
    for (const Slot &slot : former) {
        if (slot.position == none) {
            continue;
        }
        size_t index = slot.hash & mask();
        while (m_slots[index].position != none) {
            index = (index + 1) & mask();
        }
        m_slots[index] = slot;
    }
}

void CacheTable::compact()
{
    QElapsedTimer timer;
    timer.start();
    QByteArray block;
    block.reserve(int(m_used));
    for (CacheEntry &entry : m_entries) {
        const quint32 offset = quint32(block.size());
        block.append(m_block.at(entry.offset), int(entry.recordSize()));
        entry.offset = offset;
    }
    qCInfo(lcDocCache, "Finished cache compaction in %lld msecs, dropped %d bytes", timer.elapsed(),
           int(m_block.size() - block.size()));
    m_block = CacheBlock(block);
}

} // namespace vo::data
