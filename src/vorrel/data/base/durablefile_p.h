// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QDateTime;
class QSaveFile;
QT_END_NAMESPACE

/// Files that hold the content of a database. They are for the current user alone, and are replaced
/// as a whole or not at all: whatever happens, a crash or a loss of power included, the next start
/// finds the former file or the new one.
namespace vo::data::durablefile {

/// Makes the directory \p path, and those above it that are missing, for the current user alone.
/// An existing one is closed to others.
bool makeDirectory(const QString &path);

/// Opens \p file for writing.
bool open(QSaveFile &file);

/// Puts \p file in the place of the former one, once all of it is on the disk. False, and the
/// former file stays, if this or any write before has failed.
bool commit(QSaveFile &file);

/// Gives a directory its name \p to, once what is in it is on the disk. False if that is taken.
bool renameDirectory(const QString &from, const QString &to);

/// What killed writers of a file \p name, which may be a pattern, have left in \p directory more
/// than a day before \p now, and on demand in the directories below it. A younger one may belong
/// to a writer that runs.
QFileInfoList strays(const QString &directory, const QString &name, QDir::Filters kind,
                     const QDateTime &now,
                     QDirIterator::IteratorFlags flags = QDirIterator::NoIteratorFlags);

} // namespace vo::data::durablefile
