// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/archive/documentexporter_p.h>

#include <vorrel/core/couchurl.h>
#include <vorrel/data/archive/archiveformat_p.h>
#include <vorrel/data/base/durablefile_p.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QMetaClassInfo>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <limits>

namespace vo::data {

namespace {

/// What a new document at the target gets anew.
const std::initializer_list<QLatin1String> ownKeys {
    jsonkeys::id,      jsonkeys::revision,        jsonkeys::attachments, jsonkeys::type,
    jsonkeys::created, jsonkeys::creationVersion, jsonkeys::edited,
};

bool isLeftOut(const QString &type)
{
    static const QStringList types { QStringLiteral("asset:font"),
                                     QStringLiteral("asset:font:package"),
                                     QStringLiteral("schema:dataclass"),
                                     QStringLiteral("template") };
    return types.contains(type);
}

/// Empty if the class of the document does not say it.
QString classInfo(const Document *document, const char *key)
{
    const int index = document->metaObject()->indexOfClassInfo(key);
    return index < 0 ? QString()
                     : QString::fromUtf8(document->metaObject()->classInfo(index).value());
}

LinkedDocument *loadedDocument(const Context *context, const QString &id)
{
    return context ? qobject_cast<LinkedDocument *>(context->loadedDocument(id)) : nullptr;
}

} // namespace

DocumentExporter::DocumentExporter(const Document *document, const QStringList &dependencies)
    : m_context(document->context())
    , m_rootId(document->documentId())
    , m_dependencies(dependencies)
{
    exclude();
    collect();
}

// Sorted, so that the same documents make the same file.
QStringList DocumentExporter::references(const QString &id) const
{
    const LinkedDocument *document = loadedDocument(m_context, id);
    QSet<QString> ids;
    if (document) {
        document->aggregateReferences(ids);
    }
    ids.remove(QString());
    QStringList sorted = ids.values();
    sorted.sort();
    return sorted;
}

void DocumentExporter::exclude()
{
    QStringList pending = m_dependencies;
    while (!pending.isEmpty()) {
        const QString id = pending.takeLast();
        if (!m_excluded.contains(id)) {
            m_excluded.insert(id);
            pending.append(references(id));
        }
    }
}

void DocumentExporter::collect()
{
    util::DependencyGraph<QString> graph;
    graph.addNode(m_rootId);
    QSet<QString> seen { m_rootId };
    QStringList pending { m_rootId };
    while (!pending.isEmpty()) {
        const QString id = pending.takeLast();
        const QStringList targets = references(id);
        for (const QString &target : targets) {
            if (m_excluded.contains(target)) {
                continue;
            }
            if (!loadedDocument(m_context, target)) {
                m_missing.append(ExportGap { id, target, {} });
                continue;
            }
            graph.addDependency(id, target);
            if (!seen.contains(target)) {
                seen.insert(target);
                pending.append(target);
            }
        }
    }
    const QList<QString> order = graph.order();
    for (const QString &id : order) {
        m_documents.append(loadedDocument(m_context, id));
    }
}

QList<ExportGap> DocumentExporter::gaps() const
{
    QList<ExportGap> gaps = m_missing;
    for (const LinkedDocument *document : m_documents) {
        if (!document || isLeftOut(document->type())) {
            continue;
        }
        const QList<AttachmentProperty *> properties = document->attachmentProperties();
        for (const AttachmentProperty *property : properties) {
            if (!property->rawHash().isEmpty() && !AttachmentStore::contains(property->rawHash())) {
                gaps.append(ExportGap {
                    document->documentId(), {}, QString::fromLatin1(property->name()) });
            }
        }
    }
    return gaps;
}

bool DocumentExporter::write(const QString &path, const QStringList &excludedKeys) const
{
    if (!m_missing.isEmpty()) {
        qFatal("Could not find document reference %s",
               qPrintable(m_missing.constFirst().missingId));
    }
    if (!loadedDocument(m_context, m_rootId)) {
        qCCritical(lcData, "Document %s is deleted! aborting export to %s", qPrintable(m_rootId),
                   qPrintable(path));
        return false;
    }
    QList<Document *> documents;
    for (LinkedDocument *document : m_documents) {
        if (document) {
            documents.append(document);
        }
    }
    Document::completeCache(documents);
    if (!m_context || m_context->isBusy()) {
        qCCritical(lcData, "context is busy! aborting export to %s", qPrintable(path));
        return false;
    }
    // The former archive stays if the program is killed or the disk is full.
    QSaveFile file(path);
    bool isWritten = file.open(QIODevice::WriteOnly);
    if (isWritten) {
        archiveformat::Writer writer(file);
        writeChunks(writer, excludedKeys);
        isWritten = writer.finish() && durablefile::commit(file);
        if (writer.chunkCount() > std::numeric_limits<quint16>::max()) {
            qCCritical(lcData, "The archive %s is unusable: %d chunks are more than it can count",
                       qPrintable(path), writer.chunkCount());
        }
    }
    if (!isWritten) {
        qCCritical(lcData, "Failed to write archive %s: %s", qPrintable(path),
                   qPrintable(file.errorString()));
    }
    return true; // also after a failure: see the header of Document
}

void DocumentExporter::writeChunks(archiveformat::Writer &writer,
                                   const QStringList &excludedKeys) const
{
    writer.add(DocumentChunk::RootId, m_rootId.toLatin1());
    for (const LinkedDocument *document : m_documents) {
        if (document && !isLeftOut(document->type())) {
            writeGroup(writer, document, excludedKeys);
        }
    }
    for (const QString &id : m_dependencies) {
        writer.add(DocumentChunk::Dependency, id.toLatin1());
    }
}

void DocumentExporter::writeGroup(archiveformat::Writer &writer, const LinkedDocument *document,
                                  const QStringList &excludedKeys)
{
    const QString exportType = classInfo(document, "ExportType");
    const QString exportLabel = classInfo(document, "ExportLabel");
    writer.add(DocumentChunk::DocumentId, document->id());
    writer.add(DocumentChunk::DocumentType,
               (exportType.isEmpty() ? document->type() : exportType).toLatin1());
    QJsonObject json = document->serialize();
    for (const QLatin1String &key : ownKeys) {
        json.remove(key);
    }
    for (const QString &key : excludedKeys) {
        json.remove(key);
    }
    if (!exportLabel.isEmpty()) {
        json.insert(jsonkeys::label, exportLabel);
    }
    writer.add(DocumentChunk::JsonText, QJsonDocument(json).toJson(QJsonDocument::Compact));
    const QList<AttachmentProperty *> properties = document->attachmentProperties();
    for (const AttachmentProperty *property : properties) {
        if (!property->rawHash().isEmpty() && !writeAttachment(writer, property)) {
            return;
        }
    }
}

bool DocumentExporter::writeAttachment(archiveformat::Writer &writer,
                                       const AttachmentProperty *property)
{
    const QUrl url = AttachmentStore::find(property->rawHash());
    if (!url.isLocalFile()) {
        const QUrl remote = property->d_()->attachmentUrl(property->hash());
        qCCritical(lcData, "Cannot export remote attachment %s",
                   qPrintable(CouchUrl::displayText(remote)));
        return false;
    }
    QFile file(url.toLocalFile());
    const archiveformat::AttachmentPayload description {
        property->name(), property->rawHash(), property->mimeType(), {}
    };
    if (!file.open(QIODevice::ReadOnly) || !writer.addAttachment(description, file)) {
        qCCritical(lcData, "Failed to open attachment file %s", qPrintable(file.fileName()));
        return false;
    }
    return true;
}

} // namespace vo::data
