// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSharedPointer>
#include <QtCore/QUrl>
#include <QtQml/qqml.h>

namespace vo::data {

class AttachmentProperty;
class AttachmentRequest;
class Document;
class DocumentStore;
struct DownloadProgress;

/// The file of one attachment property, as QML sees it: where its bytes are, and a way to get them
/// here. There is at most one for each property, made when LinkedDocument::attachment() is first
/// asked for it; it belongs to the document and dies with it. To show a file use AttachmentLoader.
///
/// Nothing here looks at access rights. Remote URLs hold the user and password of the service URL,
/// if it has any: not for logs.
class VORREL_DATACORE_EXPORT Attachment : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Attachment)
    QML_UNCREATABLE("Attachments belong to documents")
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(bool local READ isLocal NOTIFY localChanged)
    Q_PROPERTY(QString hash READ hash NOTIFY hashChanged)
    Q_PROPERTY(QUrl url READ url NOTIFY urlChanged)
    Q_PROPERTY(QUrl remoteUrl READ remoteUrl NOTIFY hashChanged)
    Q_PROPERTY(QString localPath READ localPath NOTIFY hashChanged)
    Q_PROPERTY(QUrl localUrl READ localUrl NOTIFY hashChanged)
    Q_PROPERTY(qlonglong size READ size NOTIFY hashChanged)
    Q_PROPERTY(vo::data::Attachment::UsageFlags usageFlags READ usageFlags CONSTANT)

public:
    /// What a file is good for.
    enum UsageFlag {
        NoUse = 0,
        StaticRenderUse = 1,
        DynamicRenderUse = 2,
        PreviewUse = 4,
    };
    Q_DECLARE_FLAGS(UsageFlags, UsageFlag)
    Q_FLAG(UsageFlags)

    static constexpr UsageFlags defaultUsage { int(StaticRenderUse) | int(DynamicRenderUse) };

    ~Attachment() override;

    /// That of the property.
    [[nodiscard]] QString name() const;

    /// Whether the file is in the AttachmentStore.
    [[nodiscard]] bool isLocal() const;

    /// The MD5 of the content, in lower-case hexadecimal digits and in 16 bytes. Empty without a
    /// file.
    [[nodiscard]] QString hash() const;
    [[nodiscard]] QByteArray rawHash() const;
    [[nodiscard]] QByteArray mimeType() const;

    /// Whether there is a file at all, here or in the database.
    [[nodiscard]] bool hasFile() const;

    /// localUrl() if the file is local, else remoteUrl(). All are empty without a file.
    [[nodiscard]] QUrl url() const;
    [[nodiscard]] QUrl remoteUrl() const;

    /// Where the file is in the store, or will be.
    [[nodiscard]] QString localPath() const;
    [[nodiscard]] QUrl localUrl() const;

    /// In bytes: see AttachmentProperty::size().
    [[nodiscard]] qlonglong size() const;
    [[nodiscard]] UsageFlags usageFlags() const;

    /// Null only while the document is being destroyed.
    [[nodiscard]] Document *document() const;

    /// How far the running download has come, null without one.
    [[nodiscard]] QSharedPointer<DownloadProgress> downloadStatus() const;

public Q_SLOTS:
    /// Gets the file from the database; downloadFinished() follows. Does nothing if that is going
    /// on, if the file is local and without a file. If the hash changes meanwhile, the new file is
    /// downloaded instead, and downloadFinished() comes only if that is not local.
    ///
    /// What has arrived is compared with the hash; what differs is dropped, with a critical log
    /// line in "vorrel.attachmentstore".
    void download();

Q_SIGNALS:
    void downloadFinished(bool success);

    /// In bytes. The total is 0 or less as long as it is not known.
    void downloadProgress(qlonglong done, qlonglong total);
    void localChanged();
    void hashChanged();
    void urlChanged();

private:
    friend class AttachmentProperty;

    explicit Attachment(AttachmentProperty *property);

    void reset();
    void cancel();
    void endDownload();
    void updateDownloadProgress(qint64 done, qint64 total);
    void requestFinished();

    AttachmentProperty *m_property; // null once it is gone: the document is being destroyed
    DocumentStore &m_store;
    QPointer<AttachmentRequest> m_request;       // child; null when idle
    QSharedPointer<DownloadProgress> m_progress; // null when idle
    bool m_failed = false;                       // the last time, with this hash
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Attachment::UsageFlags)

} // namespace vo::data
