// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QUrl>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace vo::data {

/// The contents of attachments on this machine, each in a file that is found by the MD5 of its
/// bytes. It belongs to no Context: all documents of a program find their files here. A hash leads
/// to a whole file, which never changes, or to nothing, also after a crash or a loss of power.
///
/// A hash is the raw digest of 16 bytes; the store does not compare it with what it is given. One
/// of another length is never there and cannot be stored. Before init() every operation fails.
/// Nothing goes away by itself: see unreferencedAttachments().
///
/// All functions may be called on any thread. One file is written at a time; whoever asks
/// meanwhile waits. Log lines are in "vorrel.attachmentstore".
class VORREL_DATACORE_EXPORT AttachmentStore
{
public:
    AttachmentStore() = delete;

    /// Whether \p hash is one under which there can be a file.
    [[nodiscard]] static bool isHash(const QByteArray &hash);

    /// Makes the directories below Locations::cacheLocation(), for the current user alone, if there
    /// are none yet. What killed writers have left there goes a day later; to look for it takes
    /// some 3 ms for every 1000 files. A Context calls it; the second call does nothing. Ends the
    /// program if the directories cannot be made.
    static void init();

    /// Forgets what is known to be on the disk, so that each file is looked for again. Removes no
    /// file.
    static void clear();

    [[nodiscard]] static bool contains(const QByteArray &hash);

    /// In bytes, -1 without a file.
    [[nodiscard]] static qint64 fileSize(const QByteArray &hash);

    /// The URL of the local file, an invalid one without it.
    [[nodiscard]] static QUrl find(const QByteArray &hash);

    /// Stores the bytes unless the hash is there already, and gives the URL of the local file. If
    /// that fails, there is a critical line, an invalid URL and no file.
    static QUrl storeAttachment(const QByteArray &data, const QByteArray &hash);

    /// The same with the content of \p device from its start, in little memory. A device that is
    /// not open is opened for reading, and stays open. It is not touched if the hash is there.
    ///
    /// If only the last step fails, in which the file takes its name, there is a critical line, but
    /// the URL is valid: ask contains() before you rely on the file.
    static QUrl storeAttachment(QIODevice *device, const QByteArray &hash);

    /// Removes the file. False if there is none or it cannot be removed.
    static bool removeAttachment(const QByteArray &hash);

    /// The directory of the store. \pre init() was called.
    [[nodiscard]] static QDir storeDir();

    /// The hashes of all files but those in \p referenced, in no order. They may be removed if no
    /// document names them. Reads the whole directory.
    [[nodiscard]] static QList<QByteArray> unreferencedAttachments(
        const QSet<QByteArray> &referenced);

private:
    friend class Attachment; // tells where its file is, or will be

    /// The file of this hash, whether or not it exists. Empty if there cannot be one.
    static QString pathForHash(const QByteArray &hash);

    struct Private;
    static Private &d();
};

} // namespace vo::data
