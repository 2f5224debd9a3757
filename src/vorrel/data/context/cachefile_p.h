// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/cachetable_p.h>

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

/// Reading and writing of cache files; docs/formats/cache.md has their layout. What happens is told
/// in "vorrel.doccache".
namespace vo::data::cachefile {

/// The content of a file: of a damaged one as much as can be used, of none nothing.
/// Removes what writers have left behind that were killed more than a day ago.
[[nodiscard]] CacheTable load(const QString &path);

/// Puts \p snapshot into the file, in the background. If another one is being written just now,
/// this one follows it, unless a newer one comes in the meantime. The directory has to exist.
/// The program does not end before that, and what comes still later is written at once.
void store(const QString &path, const CacheSnapshot &snapshot);

/// The two halves without a file. A table that was read in full leads to an info line with
/// \p name. \pre \p size is at least that of a header, 16 bytes
[[nodiscard]] CacheTable read(const uchar *file, qint64 size, const QString &name);
[[nodiscard]] bool write(QIODevice &file, const CacheSnapshot &snapshot);

} // namespace vo::data::cachefile
