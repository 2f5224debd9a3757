// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/cachefile_p.h>

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/durablefile_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/util/lz4.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>
#include <QtCore/QSaveFile>
#include <QtCore/QThreadPool>
#include <QtCore/QWaitCondition>
#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <optional>

namespace vo::data::cachefile {

namespace {

constexpr std::array<char, 4> magic = { 'V', 'C', 'F', 'F' };
constexpr char version = 1;
constexpr char flags = 0;
constexpr qint64 headerSize = 16;
constexpr qint64 entrySize = 16;
constexpr qint64 smallestFile = 64;

// Places in the header
constexpr int versionAt = 4;
constexpr int flagsAt = 5;
constexpr int countAt = 8;
constexpr int dataSizeAt = 12;

quint32 readNumber(const uchar *from)
{
    return qFromLittleEndian<quint32>(from);
}

char *writeNumbers(char *to, std::initializer_list<quint32> numbers)
{
    for (const quint32 number : numbers) {
        qToLittleEndian(number, to);
        to += sizeof number;
    }
    return to;
}

CacheEntry readEntry(const uchar *from)
{
    return { readNumber(from), readNumber(from + 4), readNumber(from + 8), readNumber(from + 12) };
}

bool isHeaderValid(const uchar *header)
{
    if (std::memcmp(header, magic.data(), magic.size()) != 0) {
        qCCritical(lcDocCache, "Invalid cache file header - wrong magic");
        return false;
    }
    if (header[versionAt] != version || header[flagsAt] != flags) {
        qCCritical(lcDocCache, "Invalid cache file header - unknown version");
        return false;
    }
    return true;
}

QByteArray unpack(const uchar *block, qint64 size, quint32 dataSize)
{
    constexpr qint64 limit = std::numeric_limits<int>::max();
    QByteArray data;
    if (size <= limit && dataSize <= limit) {
        const auto *bytes = reinterpret_cast<const char *>(block);
        data = util::LZ4::decompress(QByteArray::fromRawData(bytes, int(size)), int(dataSize));
    }
    if (data.isEmpty()) {
        qCCritical(lcDocCache, "Failed to decompress cache data");
    }
    return data;
}

void persist(const QString &path, const CacheSnapshot &snapshot)
{
    QElapsedTimer timer;
    timer.start();
    QSaveFile file(path);
    if (!durablefile::open(file)) {
        qCCritical(lcDocCache, "Failed to persist document cache - open failed");
        return;
    }
    if (!write(file, snapshot)) {
        file.cancelWriting();
    }
    if (!durablefile::commit(file)) {
        qCCritical(lcDocCache, "Failed to persist document cache - commit failed");
        return;
    }
    qCDebug(lcDocCache, "Finished persisting %d entries in cache", int(snapshot.entries.size()));
    qCInfo(lcDocCache, "Persisted cache as %s in %lld msecs", qPrintable(file.fileName()),
           timer.elapsed());
}

// Each path that is being written, with what comes after that. Without it, the older one of two
// snapshots might be the last to finish.
struct Writers
{
    QMutex mutex; // for all that follows
    QWaitCondition pathDone;
    QHash<QString, std::optional<CacheSnapshot>> next;
    bool exits = false; // the program, and its threads may end any time
};

// Never destroyed, since the threads of the pool may outlive static objects.
Writers &writers()
{
    static auto &instance = *new Writers;
    return instance;
}

void persistAll(const QString &path, CacheSnapshot snapshot)
{
    for (;;) {
        persist(path, snapshot);
        const QMutexLocker locker(&writers().mutex);
        const auto own = writers().next.find(path);
        if (!*own) {
            writers().next.erase(own);
            writers().pathDone.wakeAll();
            return;
        }
        snapshot = **own;
        own->reset();
    }
}

// Lets the end of the program wait for the writers. A QCoreApplication does so, too, but not every
// program has one, and exit() leaves it standing.
void finishBeforeExit()
{
#ifdef Q_OS_UNIX // elsewhere the threads are gone by the time at which this could wait
    struct Finisher
    {
        Finisher() = default;
        ~Finisher()
        {
            const QMutexLocker locker(&writers().mutex);
            writers().exits = true;
            while (!writers().next.isEmpty()) {
                writers().pathDone.wait(&writers().mutex);
            }
        }
        Q_DISABLE_COPY_MOVE(Finisher)
    };
    static const Finisher finisher;
#endif
}

void removeStrays(const QString &path)
{
    const QFileInfo cache(path);
    const auto now = QDateTime::fromMSecsSinceEpoch(Clock::instance().currentMSecsSinceEpoch());
    const auto files = durablefile::strays(cache.path(), cache.fileName(), QDir::Files, now);
    for (const QFileInfo &file : files) {
        QFile::remove(file.filePath());
    }
}

} // namespace

CacheTable read(const uchar *file, qint64 size, const QString &name)
{
    QElapsedTimer timer;
    timer.start();
    if (!isHeaderValid(file)) {
        return {};
    }
    const quint32 count = readNumber(file + countAt);
    const quint32 dataSize = readNumber(file + dataSizeAt);
    if (count == 0 || dataSize == 0) {
        qCWarning(lcDocCache, "Empty cache - nothing to load");
        return {};
    }
    const qint64 dataAt = headerSize + count * entrySize;
    if (dataAt >= size) {
        qCCritical(lcDocCache, "Corrupted cache file - aborting");
        return {};
    }
    const QByteArray data = unpack(file + dataAt, size - dataAt, dataSize);
    if (data.isEmpty()) {
        return {};
    }
    QVector<CacheEntry> entries;
    entries.reserve(int(count));
    for (const uchar *next = file + headerSize; next < file + dataAt; next += entrySize) {
        const CacheEntry entry = readEntry(next);
        if (entry.offset + entry.recordSize() > data.size()) {
            qCCritical(lcDocCache, "Corrupted cache file - aborting");
            return CacheTable(data, entries);
        }
        entries.append(entry);
    }
    CacheTable table(data, entries);
    qCInfo(lcDocCache, "Loaded persisted cache from %s in %lld msecs", qPrintable(name),
           timer.elapsed());
    return table;
}

bool write(QIODevice &file, const CacheSnapshot &snapshot)
{
    QByteArray head(int(headerSize + snapshot.entries.size() * entrySize), '\0');
    std::copy(magic.begin(), magic.end(), head.begin());
    head[versionAt] = version;
    head[flagsAt] = flags;
    char *end = writeNumbers(head.data() + countAt,
                             { quint32(snapshot.entries.size()), quint32(snapshot.block.size()) });
    for (const CacheEntry &entry : snapshot.entries) {
        end = writeNumbers(end, { entry.accessTime, entry.offset, entry.idSize, entry.dataSize });
    }
    const QByteArray block = util::LZ4::compress(snapshot.block.joined());
    return !block.isEmpty() && file.write(head) == head.size() && file.write(block) == block.size();
}

CacheTable load(const QString &path)
{
    removeStrays(path);
    QFile file(path);
    if (!file.exists() || file.size() < smallestFile) {
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        qCCritical(lcDocCache, "Failed to open cache file for loading");
        return {};
    }
    // Only for as long as it is read: a file that shrinks while it is mapped ends the process.
    const qint64 size = file.size();
    const uchar *content = file.map(0, size);
    if (!content) {
        qCCritical(lcDocCache, "Cache file mapping failed");
        return {};
    }
    return read(content, size, path);
}

void store(const QString &path, const CacheSnapshot &snapshot)
{
    finishBeforeExit();
    QMutexLocker locker(&writers().mutex);
    const auto own = writers().next.find(path);
    if (own != writers().next.end()) {
        *own = snapshot;
        return;
    }
    writers().next.insert(path, std::nullopt);
    const bool hasThreads = !writers().exits && !QCoreApplication::closingDown();
    locker.unlock();
    if (hasThreads) {
        QThreadPool::globalInstance()->start([path, snapshot] { persistAll(path, snapshot); });
    } else {
        persistAll(path, snapshot);
    }
}

} // namespace vo::data::cachefile
