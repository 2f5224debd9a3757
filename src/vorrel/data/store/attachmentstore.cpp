// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/store/attachmentstore.h>

#include <vorrel/core/locations.h>
#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/durablefile_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>

#include <QtCore/QDateTime>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QMutex>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryDir>

#include <array>
#include <mutex>

namespace vo::data {

namespace {

constexpr int hashSize = 16; // bytes
constexpr int directoryCount = 256;
constexpr int directoryDigits = 2;
constexpr int fileDigits = 2 * hashSize - directoryDigits;

using Locker = std::unique_lock<QMutex>;

// Without the lock, since a message handler may use the store.
void complain(Locker &locker, const QString &text)
{
    locker.unlock();
    qCCritical(lcAttachmentStore, "%s", qPrintable(text));
}

// Under another name first: a store that exists is not looked at, so it has to be complete.
// Gives the text of the failure; empty if there is none.
QString makeStore(const QString &path)
{
    const QString failure = QStringLiteral("Failed to create attachment store directory");
    if (!durablefile::makeDirectory(QFileInfo(path).path())) {
        return failure;
    }
    QTemporaryDir store(path + QStringLiteral(".XXXXXX"));
    if (!store.isValid()) {
        return failure;
    }
    for (int number = 0; number < directoryCount; ++number) {
        const QString name =
            QStringLiteral("%1").arg(number, directoryDigits, 16, QLatin1Char('0'));
        if (!durablefile::makeDirectory(store.filePath(name))) {
            return failure + QLatin1Char(' ') + name;
        }
    }
    store.setAutoRemove(!durablefile::renameDirectory(store.path(), path));
    // Another program may have been faster.
    return QFileInfo::exists(path) ? QString() : failure;
}

void removeStrays(const QString &path, const QDateTime &now)
{
    const QFileInfo store(path);
    const auto unfinished =
        durablefile::strays(store.path(), store.fileName(), QDir::Dirs | QDir::NoSymLinks, now);
    for (const QFileInfo &directory : unfinished) {
        QDir(directory.filePath()).removeRecursively();
    }
    const QString anyFile(fileDigits, QLatin1Char('?'));
    const auto files =
        durablefile::strays(path, anyFile, QDir::Files, now, QDirIterator::Subdirectories);
    for (const QFileInfo &file : files) {
        QFile::remove(file.filePath());
    }
}

} // namespace

struct AttachmentStore::Private
{
    QMutex lock; // for all that follows
    bool initialized = false;
    QDir storeDir;
    QSet<QByteArray> stored; // that are known to be on the disk; others may be there, too
    std::array<char, tuning::attachmentCopySize> copyBuffer;

    bool isStored(const QByteArray &hash)
    {
        if (stored.contains(hash)) {
            return true;
        }
        const QString path = pathForHash(hash);
        if (path.isEmpty() || !QFileInfo(path).isFile()) {
            return false;
        }
        stored.insert(hash);
        return true;
    }
};

// Never destroyed, since threads may outlive static objects.
AttachmentStore::Private &AttachmentStore::d()
{
    static auto &instance = *new Private;
    return instance;
}

bool AttachmentStore::isHash(const QByteArray &hash)
{
    return hash.size() == hashSize;
}

void AttachmentStore::init()
{
    Locker locker(d().lock);
    if (d().initialized) {
        return;
    }
    // The cache location may be relative to a working directory that changes.
    const QString path = Locations::cacheLocation().absoluteFilePath(QStringLiteral("_data/att"));
    const QString failure = QFileInfo::exists(path) ? QString() : makeStore(path);
    d().storeDir.setPath(path);
    d().initialized = failure.isEmpty();
    locker.unlock();
    qCInfo(lcAttachmentStore, "Initializing attachment store");
    if (!failure.isEmpty()) {
        qFatal("%s", qPrintable(failure));
    }
    const auto now = QDateTime::fromMSecsSinceEpoch(Clock::instance().currentMSecsSinceEpoch());
    removeStrays(path, now);
}

void AttachmentStore::clear()
{
    const Locker locker(d().lock);
    d().stored.clear();
}

bool AttachmentStore::contains(const QByteArray &hash)
{
    const Locker locker(d().lock);
    return d().isStored(hash);
}

qint64 AttachmentStore::fileSize(const QByteArray &hash)
{
    return contains(hash) ? QFileInfo(pathForHash(hash)).size() : -1;
}

QUrl AttachmentStore::find(const QByteArray &hash)
{
    const Locker locker(d().lock);
    return d().isStored(hash) ? QUrl::fromLocalFile(pathForHash(hash)) : QUrl();
}

QUrl AttachmentStore::storeAttachment(const QByteArray &data, const QByteArray &hash)
{
    Locker locker(d().lock);
    const QString path = pathForHash(hash);
    if (d().isStored(hash)) {
        return QUrl::fromLocalFile(path);
    }
    QSaveFile file(path);
    if (path.isEmpty() || !durablefile::open(file)) {
        complain(locker,
                 QStringLiteral("Failed to open store file %1 for writing: %2")
                     .arg(path, file.errorString()));
        return QUrl();
    }
    const QString failure = QStringLiteral("Failed to write store file %1 %2");
    if (file.write(data) != data.size()) {
        complain(locker, failure.arg(path, file.errorString()));
        return QUrl();
    }
    if (!durablefile::commit(file)) {
        complain(locker, failure.arg(path, QStringLiteral("- commit failed")));
        return QUrl();
    }
    d().stored.insert(hash);
    return QUrl::fromLocalFile(path);
}

QUrl AttachmentStore::storeAttachment(QIODevice *device, const QByteArray &hash)
{
    Locker locker(d().lock);
    const QString path = pathForHash(hash);
    if (d().isStored(hash)) {
        return QUrl::fromLocalFile(path);
    }
    const auto fail = [&](const char *text) {
        complain(locker, QLatin1String(text) + QLatin1Char(' ') + QLatin1String(hash.toHex()));
        return QUrl();
    };
    QSaveFile file(path);
    if (path.isEmpty() || !durablefile::open(file)) {
        return fail("Failed to open file in attachment store:");
    }
    if (!device->isOpen() && !device->open(QIODevice::ReadOnly)) {
        return fail("Failed to file for reading:");
    }
    if (device->pos() > 0 && !device->seek(0)) {
        return fail("Failed to rewind to file start:");
    }
    while (!device->atEnd()) {
        const qint64 size = device->read(d().copyBuffer.data(), qint64(d().copyBuffer.size()));
        if (size <= 0) { // it would never reach its end
            return fail("Failed to read source file:");
        }
        if (file.write(d().copyBuffer.data(), size) < size) {
            return fail("Failed to write to target file:");
        }
    }
    if (!durablefile::commit(file)) {
        fail("Failed to commit file in attachment store:"); // and no more than that: see the header
    }
    return QUrl::fromLocalFile(path);
}

bool AttachmentStore::removeAttachment(const QByteArray &hash)
{
    const Locker locker(d().lock);
    const QString path = pathForHash(hash);
    if (path.isEmpty() || !QFile::remove(path)) {
        return false;
    }
    d().stored.remove(hash);
    return true;
}

QDir AttachmentStore::storeDir()
{
    const Locker locker(d().lock);
    return d().storeDir;
}

QList<QByteArray> AttachmentStore::unreferencedAttachments(const QSet<QByteArray> &referenced)
{
    QList<QByteArray> hashes;
    const QString anyFile(fileDigits, QLatin1Char('?'));
    Locker locker(d().lock);
    if (!d().initialized) {
        return hashes;
    }
    QDirIterator files(d().storeDir.path(), { anyFile }, QDir::Files, QDirIterator::Subdirectories);
    locker.unlock();
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        const QString digits = file.dir().dirName() + file.fileName();
        const QByteArray hash = QByteArray::fromHex(digits.toLatin1());
        if (pathForHash(hash) == file.filePath() && !referenced.contains(hash)) {
            hashes << hash;
        }
    }
    return hashes;
}

QString AttachmentStore::pathForHash(const QByteArray &hash)
{
    if (!d().initialized || !isHash(hash)) {
        return QString();
    }
    const QString digits = QString::fromLatin1(hash.toHex());
    return d().storeDir.filePath(digits.left(directoryDigits) + QLatin1Char('/')
                                 + digits.mid(directoryDigits));
}

} // namespace vo::data
