// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/archive/documentimportjob_p.h>

#include <vorrel/data/archive/archiveformat_p.h>
#include <vorrel/data/archive/newids_p.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/genericchange.h>
#include <vorrel/data/core/ichangerecorder.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QCryptographicHash>

#include <algorithm>
#include <array>
#include <utility>

namespace vo::data {

namespace {

/// Keys of the JSON that say nothing about the content. Nobody deletes a document by an archive.
const std::initializer_list<QLatin1String> ignoredKeys {
    jsonkeys::created,
    jsonkeys::creationVersion,
    jsonkeys::edited,
    jsonkeys::deleted,
};

/// The types whose documents keep their ids.
const std::array<QString, 2> &sharedTypes()
{
    static const std::array<QString, 2> types { QStringLiteral("asset"),
                                                QStringLiteral("mediaassetfolder") };
    return types;
}

/// The one of sharedTypes() that \p type lies below; empty for none.
QString sharedTypeOf(const QString &type)
{
    const auto &types = sharedTypes();
    const auto found = std::find_if(types.begin(), types.end(), [&](const QString &base) {
        return Document::isBaseType(base, type);
    });
    return found == types.end() ? QString() : *found;
}

/// For the log, where the numbers of errors mean something else than in the importer.
const char *logText(DocumentImporter::Error error)
{
    constexpr std::array<const char *, 7> texts {
        "No Error",           "No context for import",  "No local file URL for archive",
        "Archive not found",  "Failed to open archive", "Invalid or corrupted archive",
        "Missing Dependency",
    };
    return texts.at(std::size_t(error));
}

const char *reasonOf(DocumentArchive::Error error)
{
    switch (error) {
    case DocumentArchive::NotFound:
        return "there is no such file";
    case DocumentArchive::NotReadable:
        return "the file cannot be read";
    default:
        return "the file is no content archive, or it is damaged";
    }
}

/// The ids of documents in archives. Those with "_" belong to the database itself.
bool isDocumentId(const QByteArray &id)
{
    return !id.isEmpty() && id.size() <= tuning::maximumIdLength && id.at(0) != '_';
}

QString textOf(const DocumentChunk &chunk)
{
    return QString::fromLatin1(archiveformat::payload(chunk));
}

/// Makes all edits one step of undo, while it lives.
class ChangeGroup
{
public:
    explicit ChangeGroup(Context *context)
        : m_context(context)
    {
        if (auto *recorder = qobject_cast<IChangeRecorder *>(context)) {
            recorder->beginRecordChanges();
        }
    }
    ~ChangeGroup()
    {
        if (auto *recorder = qobject_cast<IChangeRecorder *>(m_context.data())) {
            recorder->endRecordChanges();
        }
    }
    Q_DISABLE_COPY_MOVE(ChangeGroup)

private:
    const QPointer<Context> m_context;
};

} // namespace

DocumentImportJob::DocumentImportJob(Context *context, const QString &path, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_archive(std::make_shared<DocumentArchive>(path))
{
    if (m_archive->error() != DocumentArchive::NoError) {
        qCCritical(lcData, "Cannot import \"%s\": %s", qPrintable(path),
                   reasonOf(m_archive->error()));
    }
}

DocumentImportJob::~DocumentImportJob() = default;

Document *DocumentImportJob::result() const
{
    return m_result;
}

QStringList DocumentImportJob::missingDependencies() const
{
    QStringList missing;
    for (const QString &id : m_dependencies) {
        if (!m_context || !m_context->loadedDocument(id)) {
            missing.append(id);
        }
    }
    return missing;
}

void DocumentImportJob::setProgress(double progress)
{
    constexpr double step = 0.01;
    if (progress - m_progress >= step) {
        m_progress = progress;
        Q_EMIT progressChanged();
    }
}

void DocumentImportJob::fail(DocumentImporter::Error error)
{
    m_error = error;
    qCCritical(lcData, "Error %d: %s", int(error), logText(error));
    Q_EMIT finished();
}

// Before anything is changed

void DocumentImportJob::start()
{
    if (!m_context) {
        qCCritical(lcData, "Cannot import data without context");
        fail(DocumentImporter::NoContext);
        return;
    }
    m_chunks = m_archive->chunks();
    if (m_archive->error() != DocumentArchive::NoError || !collectIds()) {
        fail(DocumentImporter::InvalidArchive);
        return;
    }
    loadDocuments();
}

bool DocumentImportJob::collectIds()
{
    for (const DocumentChunk &chunk : std::as_const(m_chunks)) {
        const bool isDependency = chunk.type == DocumentChunk::Dependency;
        if (!isDependency && chunk.type != DocumentChunk::DocumentId) {
            continue;
        }
        const QByteArray id = archiveformat::payload(chunk);
        if (!isDocumentId(id)) {
            qCCritical(lcData, "Cannot import an archive with the document id \"%s\"",
                       id.left(tuning::maximumIdLength).constData());
            return false;
        }
        m_idsToLoad.append(QString::fromLatin1(id));
        if (isDependency) {
            m_dependencies.append(m_idsToLoad.constLast());
        }
    }
    return true;
}

void DocumentImportJob::loadDocuments()
{
    const QPointer<DocumentImportJob> self(this);
    if (!m_idsToLoad.isEmpty()) {
        m_request = m_context->loadDocuments(m_idsToLoad);
        if (self && m_context) {
            m_context->updateBusyState(); // which would follow in a later turn
        }
    }
    if (!self) {
        return;
    }
    if (!m_context || !m_context->isBusy()) {
        apply();
        return;
    }
    connect(m_context, &Context::busyChanged, this, &DocumentImportJob::applyWhenIdle);
    connect(m_context, &Context::documentNodeAdded, this, &DocumentImportJob::updateLoadProgress);
    connect(m_context, &QObject::destroyed, this, &DocumentImportJob::apply);
}

void DocumentImportJob::updateLoadProgress()
{
    if (m_request) {
        const auto pending = double(m_request->pendingDocuments().size());
        setProgress((1 - pending / double(m_idsToLoad.size())) / 2);
    }
}

void DocumentImportJob::applyWhenIdle()
{
    if (!m_context->isBusy()) {
        m_context->disconnect(this);
        apply();
    }
}

// The import itself, in which slots may destroy everything

void DocumentImportJob::apply()
{
    if (!m_context) {
        fail(DocumentImporter::NoContext);
        return;
    }
    const QPointer<DocumentImportJob> self(this);
    const QStringList missing = missingDependencies();
    if (self && !missing.isEmpty()) {
        m_error = DocumentImporter::MissingDependency;
        qCCritical(lcData, "Missing Dependency %s", qPrintable(missing.constFirst()));
        Q_EMIT finished();
        return;
    }
    if (self) {
        // What lies in the archive may be in use when a slot destroys this object.
        const std::shared_ptr<const DocumentArchive> archive = m_archive;
        applyChunks();
    }
    if (!self) {
        return;
    }
    if (!m_context) {
        fail(DocumentImporter::NoContext);
        return;
    }
    const QString id = m_idMap.value(m_rootId, m_rootId);
    m_result = qobject_cast<LinkedDocument *>(m_context->loadedDocument(id));
    if (self) {
        Q_EMIT finished();
    }
}

void DocumentImportJob::applyChunks()
{
    const ChangeGroup group(m_context);
    const QPointer<DocumentImportJob> self(this);
    const int count = int(m_chunks.size());
    for (int index = 0; self && m_context && index < count; ++index) {
        setProgress((1 + double(index) / count) / 2);
        if (self && m_context) {
            applyChunk(index);
        }
    }
}

void DocumentImportJob::applyChunk(int index)
{
    const DocumentChunk chunk = m_chunks.at(index);
    switch (chunk.type) {
    case DocumentChunk::RootId:
        m_rootId = textOf(chunk);
        break;
    case DocumentChunk::DocumentId:
        m_currentId = textOf(chunk);
        m_current = nullptr; // no word about it counts before its type is known
        m_files = filesBehind(index);
        break;
    case DocumentChunk::DocumentType:
        beginDocument(textOf(chunk));
        break;
    case DocumentChunk::BinaryJson:
    case DocumentChunk::JsonText:
        if (m_current) {
            applyJson(chunk);
        }
        break;
    case DocumentChunk::Attachment:
        if (m_current) {
            applyAttachment(chunk);
        }
        break;
    default:
        break;
    }
}

void DocumentImportJob::beginDocument(const QString &type)
{
    m_current = nullptr;
    if (m_currentId.isEmpty()) {
        qCCritical(lcData, "Leaving out a document without an id");
        return;
    }
    if (!sharedTypeOf(type).isEmpty()) {
        takeDocument(type);
        return;
    }
    const QPointer<DocumentImportJob> self(this);
    const QPointer<LinkedDocument> document(LinkedDocument::create(type, m_context));
    if (self && document) {
        m_current = document;
        const QString id = document->documentId();
        m_idMap.insert(std::exchange(m_currentId, id), id);
    }
}

/// The document that is there already, or else a new one of the same id.
void DocumentImportJob::takeDocument(const QString &type)
{
    const QPointer<DocumentImportJob> self(this);
    const QPointer<LinkedDocument> present(
        qobject_cast<LinkedDocument *>(m_context->loadedDocument(m_currentId)));
    if (!self || !m_context) {
        return;
    }
    if (!present) {
        const QPointer<LinkedDocument> made(LinkedDocument::create(type, m_currentId, m_context));
        if (self) {
            m_current = made;
        }
    } else if (!present->hasType(sharedTypeOf(type))) {
        qCCritical(lcData, "Leaving out document %s: here it is a %s and not a %s",
                   qPrintable(m_currentId), qPrintable(present->type()), qPrintable(type));
    } else if (present->accessLevel() < Document::WriteAccess) {
        qCCritical(lcData, "Leaving out document %s: it must not be written",
                   qPrintable(m_currentId));
    } else {
        m_current = present;
    }
}

void DocumentImportJob::applyJson(const DocumentChunk &chunk)
{
    const std::optional<QJsonObject> object = archiveformat::readJson(chunk);
    if (!object) {
        qCCritical(lcData, "Leaving out the values of document %s: they are no JSON object",
                   qPrintable(m_currentId));
        return;
    }
    applyObject(m_idMap.isEmpty() ? *object : withNewIds(*object, m_idMap));
}

/// The properties of the attachments in the group that begins here. Those come with their MIME
/// type; the hash alone, which stands in the JSON as well, would keep it from being set.
QSet<QByteArray> DocumentImportJob::filesBehind(int index) const
{
    QSet<QByteArray> names;
    for (int next = index + 1; next < m_chunks.size(); ++next) {
        const DocumentChunk &chunk = m_chunks.at(next);
        if (chunk.type == DocumentChunk::DocumentId) {
            break;
        }
        if (chunk.type == DocumentChunk::Attachment) {
            const auto attachment = archiveformat::readAttachment(chunk);
            names.insert(attachment ? attachment->property : QByteArray());
        }
    }
    return names;
}

void DocumentImportJob::applyObject(const QJsonObject &object)
{
    const QPointer<DocumentImportJob> self(this);
    const QPointer<LinkedDocument> document = m_current;
    for (auto it = object.begin(); self && document && it != object.end(); ++it) {
        const bool isIgnored =
            std::find(ignoredKeys.begin(), ignoredKeys.end(), it.key()) != ignoredKeys.end();
        PropertyBase *property = isIgnored ? nullptr : document->propertyValue(it.key());
        if (property && !m_files.contains(property->name())) {
            applyProperty(property, it.value());
        }
    }
    const QJsonValue data = object.value(jsonkeys::customData);
    if (self && document && !data.isUndefined()) {
        applyCustomData(data.toObject());
    }
}

void DocumentImportJob::applyProperty(PropertyBase *property, const QJsonValue &value)
{
    const QJsonValue former = property->toJson();
    if (former == value) {
        return;
    }
    const QPointer<LinkedDocument> document = m_current;
    document->applyChange(std::make_unique<GenericChange>(document, [=](bool forward) {
        property->fromJson(forward ? value : former);
        if (document) {
            document->markDirty();
        }
    }));
}

void DocumentImportJob::applyCustomData(const QJsonObject &data)
{
    const QJsonObject former = m_current->customData();
    if (former == data) {
        return;
    }
    const QPointer<LinkedDocument> document = m_current;
    document->applyChange(std::make_unique<GenericChange>(document, [=](bool forward) {
        document->assignCustomData(forward ? data : former);
        if (document) {
            document->markDirty();
        }
    }));
}

void DocumentImportJob::applyAttachment(const DocumentChunk &chunk)
{
    const auto attachment = archiveformat::readAttachment(chunk);
    const bool isWhole = attachment
        && QCryptographicHash::hash(attachment->content, QCryptographicHash::Md5)
            == attachment->hash;
    if (!isWhole) {
        // The store serves every database of this machine: nothing may lie there under another
        // name.
        qCCritical(lcData, "Leaving out an attachment of document %s: %s", qPrintable(m_currentId),
                   attachment ? "the content does not have its hash" : "it is damaged");
        return;
    }
    PropertyBase *property = m_current->propertyValue(QString::fromLatin1(attachment->property));
    if (property && property->type() == PropertyBase::AttachmentFile
        && AttachmentStore::storeAttachment(attachment->content, attachment->hash).isValid()) {
        static_cast<AttachmentProperty *>(property)->set(attachment->hash, attachment->mimeType);
    }
}

} // namespace vo::data

#include "moc_documentimportjob_p.cpp"
