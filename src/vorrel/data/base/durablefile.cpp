// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/base/durablefile_p.h>

#include <vorrel/data/base/tuning_p.h>

#include <QtCore/QDateTime>
#include <QtCore/QSaveFile>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace vo::data::durablefile {

namespace {

#ifdef Q_OS_UNIX

// Some file systems cannot do this and say so; there is nothing more to be had from them.
bool sync(int descriptor)
{
    return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

// The file has its name already, so that a failure only means that a loss of power may undo it.
void syncDirectory(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor >= 0) {
        sync(descriptor);
        close(descriptor);
    }
}

#else

bool sync(int)
{
    return true; // QSaveFile asks for it
}

void syncDirectory(const QString &) { }

#endif

} // namespace

bool makeDirectory(const QString &path)
{
    const QString parent = QFileInfo(path).path();
    if (!QFileInfo::exists(path)
        && ((!QFileInfo::exists(parent) && !makeDirectory(parent))
            // Another program may make it at the same time.
            || (!QDir().mkdir(path) && !QFileInfo(path).isDir()))) {
        return false;
    }
    return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool open(QSaveFile &file)
{
    return file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

bool commit(QSaveFile &file)
{
    // QSaveFile syncs as well, but does not look whether that worked.
    if (!file.flush() || !sync(file.handle())) {
        file.cancelWriting();
    }
    if (!file.commit()) {
        return false;
    }
    syncDirectory(QFileInfo(file.fileName()).path());
    return true;
}

bool renameDirectory(const QString &from, const QString &to)
{
    syncDirectory(from);
    if (!QDir().rename(from, to)) {
        return false;
    }
    syncDirectory(QFileInfo(to).path());
    return true;
}

QFileInfoList strays(const QString &directory, const QString &name, QDir::Filters kind,
                     const QDateTime &now, QDirIterator::IteratorFlags flags)
{
    // QSaveFile writes into a file of this name, and QTemporaryDir is told to.
    QDirIterator found(directory, { name + QStringLiteral(".??????") },
                       kind | QDir::Hidden | QDir::System, flags);
    QFileInfoList old;
    while (found.hasNext()) {
        found.next();
        if (found.fileInfo().lastModified().secsTo(now) > tuning::strayFileAge.count()) {
            old.append(found.fileInfo());
        }
    }
    return old;
}

} // namespace vo::data::durablefile
