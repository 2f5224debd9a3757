// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/attachment.h>
#include <vorrel/data/properties/propertybase.h>

#include <QtCore/QUrl>

#include <functional>

namespace vo::data {

/// A stored field that is a file: it holds the MD5 of the content, the content lies in the
/// AttachmentStore and in the database. Its type in C++ and QML is QUrl: see get().
///
/// The value is stored as a text of hexadecimal digits. A text that is no MD5 is kept and written
/// again as it came, and counts as a file that cannot be had.
class VORREL_DATACORE_EXPORT AttachmentProperty : public PropertyBase
{
public:
    AttachmentProperty(const char *name, Document *document);

    /// \p usage tells what the file is good for.
    AttachmentProperty(const char *name, Attachment::UsageFlags usage, Document *document);
    ~AttachmentProperty() override;

    /// The MD5 in 16 bytes, empty without a file. Without any access check, as all of these.
    [[nodiscard]] QByteArray rawHash() const { return m_rawHash; }

    /// The same in lower-case hexadecimal digits.
    [[nodiscard]] QByteArray hash() const { return m_rawHash.toHex(); }
    [[nodiscard]] QByteArray mimeType() const { return m_mimeType; }

    /// In bytes: that of the local file, or what the database said. 0 if nothing is known.
    [[nodiscard]] qint64 size() const;

    /// The local file, or where the database has it; starts no download. Empty without a file and
    /// below ReadAccess. A remote URL holds the user and password of the service URL, if it has
    /// any: not for logs.
    [[nodiscard]] QUrl get() const;

    /// An edit. The access level of the document if that forbids it, 1 if the hash is that already,
    /// whatever the MIME type, and 2 for a success. Slots of the change signal may destroy the
    /// document.
    int set(const QByteArray &hash, const QByteArray &mimeType);

    /// Copies a local file into the store(), and makes it the value if that works, as an edit. The
    /// MIME type comes from the name of the file.
    void set(const QUrl &localFile);

    /// Copies a local file into the store and gives its hash in 16 bytes. If that fails there is a
    /// critical log line, and the hash is empty.
    [[nodiscard]] static QByteArray store(const QUrl &localFile);

    /// Whether the file is downloaded as soon as the document is read. The document is then told by
    /// attachmentDownloadFinished() that it is there.
    void setAutoDownload(bool autoDownload);
    [[nodiscard]] Attachment::UsageFlags usageFlags() const { return m_usageFlags; }

    /// The object for QML, made on first demand.
    [[nodiscard]] Attachment *attachment();

    [[nodiscard]] int type() const override;

    /// Starts the download of a file that is missing here, if the Context or this property says so.
    void fromJson(const QJsonValue &json) override;
    [[nodiscard]] QJsonValue toJson() const override;

    /// Nothing if \p source is empty.
    void copy(PropertyBase *source) override;

private:
    friend class Attachment;
    friend class Document;

    /// Takes the value \p json, undefined if there is none, out of a stored document with these
    /// "_attachments". Gives the hash() if the document has the file. Slots may destroy everything.
    QByteArray assign(const QJsonValue &json, const QJsonObject &attachments);
    void fetchIfWanted();
    void fetch(const std::function<void()> &finished);

    Attachment *m_attachment = nullptr; // child of the document; null as long as nobody asks
    QByteArray m_rawHash;
    QByteArray m_mimeType;
    QString m_oddText; // that was stored and is no MD5
    qint64 m_size = 0; // that the database told
    const Attachment::UsageFlags m_usageFlags;
    bool m_autoDownload = false;
};

} // namespace vo::data
