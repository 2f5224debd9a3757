// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QList>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>

#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QNetworkAccessManager;
QT_END_NAMESPACE

namespace vo::data {

class AccessController;
class Context;
class Document;
class DocumentNode;
class DocumentTask;
class IIncubatable;
class LinkedDocument;
class ExportGap;
struct DownloadProgress;

/// All that a document may ask of its Context. The private half of Context implements it, so that
/// the document classes do not need to know that class.
class DocumentStore
{
public:
    virtual ~DocumentStore() = default;

    /// The Context as an object: where a change recorder is looked for.
    virtual QObject *object() = 0;

    /// The parent of all linked documents, a child of the Context.
    virtual QObject *documentParent() = 0;

    /// True while the Context is being destroyed: documents then leave everything as it is.
    [[nodiscard]] virtual bool isClosing() const = 0;

    [[nodiscard]] virtual QString language() const = 0;
    [[nodiscard]] virtual QUrl serviceUrl() const = 0;
    [[nodiscard]] virtual QString database() const = 0;

    /// Null if there is none.
    [[nodiscard]] virtual QNetworkAccessManager *networkManager() const = 0;

    [[nodiscard]] virtual DocumentNode *documentNode(const QByteArray &id) const = 0;

    /// Makes room for a new document: false if a live document has the id, built or not. A deleted
    /// one gives up its node.
    [[nodiscard]] virtual bool releaseId(const QByteArray &id) = 0;
    virtual void addDocument(LinkedDocument *document) = 0;

    /// The document is being destroyed: drop every pointer to it.
    virtual void forgetDocument(LinkedDocument *document) = 0;

    virtual void markDirty(LinkedDocument *document) = 0;
    virtual void markClean(LinkedDocument *document) = 0;
    virtual void reportLocalStateChange(Document *document) = 0;
    virtual void reportDocumentChange(Document *document) = 0;
    virtual void linkDocuments(DocumentNode *from, DocumentNode *to) = 0;
    virtual void unlinkDocuments(DocumentNode *from, DocumentNode *to) = 0;

    /// Has LinkedDocument::updateDependencies() called a little later.
    virtual void delayDependencyUpdate(LinkedDocument *document) = 0;
    virtual void addDocumentGraphTask(std::unique_ptr<DocumentTask> task) = 0;
    virtual void incubate(IIncubatable *object) = 0;
    virtual void finishIncubation() = 0;

    /// Whether the attachments of all documents are downloaded as soon as those are read.
    [[nodiscard]] virtual bool attachmentDownloadEnabled() const = 0;
    [[nodiscard]] virtual QSharedPointer<DownloadProgress> beginDownload() = 0;
    virtual void endDownload(const QSharedPointer<DownloadProgress> &progress) = 0;

    /// Downloads the attachment \p property in the background, again and again until that works,
    /// and calls \p finished, if there is one, unless the document has gone.
    virtual void fetchAttachment(LinkedDocument *document, const QString &property,
                                 const std::function<void()> &finished) = 0;

    /// What Document::exportDocument() and Document::exportGaps() do.
    [[nodiscard]] virtual bool exportDocument(const Document *document, const QUrl &file,
                                              const QStringList &dependencies,
                                              const QStringList &excludedKeys) = 0;
    [[nodiscard]] virtual QList<ExportGap> exportGaps(const Document *document,
                                                      const QStringList &dependencies) = 0;

    [[nodiscard]] virtual std::unique_ptr<AccessController> createAccessController(
        LinkedDocument *document) = 0;
};

/// The store behind \p context. \pre context is not null
DocumentStore &documentStore(const Context *context);

} // namespace vo::data
