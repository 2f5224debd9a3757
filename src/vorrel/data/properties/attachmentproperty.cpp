// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/attachmentproperty.h>

#include <vorrel/core/couchurl.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/change.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/store/attachmentstore.h>
#include <vorrel/data/store/mimemap.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonObject>
#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

namespace {

/// The edit that puts another file into a property. Each is a step of its own.
class AttachmentHashChange : public Change
{
public:
    struct File
    {
        QByteArray hash;
        QByteArray mimeType;
    };

    AttachmentHashChange(AttachmentProperty *property, File former, File present)
        : Change(property->d_())
        , m_property(property)
        , m_former(std::move(former))
        , m_present(std::move(present))
    { }

    void apply() override { set(m_present); }
    void unapply() override { set(m_former); }
    [[nodiscard]] bool isValid() const override { return document() != nullptr; }

private:
    void set(const File &file)
    {
        if (document()) {
            m_property->set(file.hash, file.mimeType);
        }
    }

    AttachmentProperty *const m_property; // lives as long as the document
    const File m_former;
    const File m_present;
};

/// The MD5 of a file that is open for reading, which is then at its start again. Empty if it cannot
/// be read.
QByteArray digest(QFile &file)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    return hash.addData(&file) && file.seek(0) ? hash.result() : QByteArray();
}

} // namespace

AttachmentProperty::AttachmentProperty(const char *name, Document *document)
    : AttachmentProperty(name, Attachment::defaultUsage, document)
{ }

AttachmentProperty::AttachmentProperty(const char *name, Attachment::UsageFlags usage,
                                       Document *document)
    : PropertyBase(name, document)
    , m_usageFlags(usage)
{ }

AttachmentProperty::~AttachmentProperty()
{
    // It goes a little later, with the document, and may be asked for something until then.
    if (m_attachment) {
        m_attachment->m_property = nullptr;
    }
}

Attachment *AttachmentProperty::attachment()
{
    if (!m_attachment) {
        m_attachment = new Attachment(this);
    }
    return m_attachment;
}

int AttachmentProperty::type() const
{
    return AttachmentFile;
}

void AttachmentProperty::setAutoDownload(bool autoDownload)
{
    m_autoDownload = autoDownload;
}

qint64 AttachmentProperty::size() const
{
    const qint64 size = AttachmentStore::fileSize(m_rawHash);
    return size < 0 ? m_size : size;
}

QUrl AttachmentProperty::get() const
{
    if (!canRead() || !AttachmentStore::isHash(m_rawHash)) {
        return {};
    }
    const QUrl file = AttachmentStore::find(m_rawHash);
    return file.isEmpty() ? d_()->attachmentUrl(hash()) : file;
}

// Edits

int AttachmentProperty::set(const QByteArray &hash, const QByteArray &mimeType)
{
    constexpr int unchanged = 1;
    constexpr int changed = 2;
    if (!canWrite()) {
        return d_()->accessLevel();
    }
    if (hash == m_rawHash) {
        return unchanged;
    }
    const AttachmentHashChange::File former { m_rawHash, m_mimeType };
    m_rawHash = hash;
    m_mimeType = mimeType;
    m_oddText.clear();
    recordApplied([&] {
        return std::make_unique<AttachmentHashChange>(
            this, former, AttachmentHashChange::File { hash, mimeType });
    });
    markDirtyAndNotify();
    return changed;
}

void AttachmentProperty::set(const QUrl &localFile)
{
    const QByteArray hash = store(localFile);
    if (!hash.isEmpty()) {
        set(hash, MimeMap::mimeTypeForFile(localFile.toLocalFile()));
    }
}

QByteArray AttachmentProperty::store(const QUrl &localFile)
{
    if (!localFile.isLocalFile()) {
        qCCritical(lcData) << "Cannot set file to non-local file"
                           << CouchUrl::displayText(localFile);
        return {};
    }
    QFile file(localFile.toLocalFile());
    // To open anything else might wait for ever.
    const bool isOpen = QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly);
    const QByteArray hash = isOpen ? digest(file) : QByteArray();
    if (hash.isEmpty()) {
        qCCritical(lcData) << "Failed to open file" << file.fileName();
        return {};
    }
    AttachmentStore::storeAttachment(&file, hash);
    return AttachmentStore::contains(hash) ? hash : QByteArray(); // else the store has told why
}

void AttachmentProperty::copy(PropertyBase *source)
{
    auto *other = static_cast<AttachmentProperty *>(source);
    if (other->canRead() && !other->m_rawHash.isEmpty()) {
        other->fetch({}); // there is nothing to upload for the copy otherwise
        set(other->m_rawHash, other->m_mimeType);
    }
}

// Stored data

void AttachmentProperty::fromJson(const QJsonValue &json)
{
    assign(json.isUndefined() ? QJsonValue() : json, {});
}

QByteArray AttachmentProperty::assign(const QJsonValue &json, const QJsonObject &attachments)
{
    const QByteArray former = m_rawHash;
    if (!json.isUndefined()) {
        const QString text = json.toString();
        m_rawHash = QByteArray::fromHex(text.toLatin1());
        const bool isOdd = !AttachmentStore::isHash(m_rawHash)
            || text.compare(QLatin1String(hash()), Qt::CaseInsensitive) != 0;
        m_oddText = isOdd ? text : QString();
    }
    const QJsonObject entry = attachments.value(QLatin1String(hash())).toObject();
    if (!entry.isEmpty()) {
        m_mimeType = entry.value(jsonkeys::contentType).toString().toLatin1();
        m_size = std::max<qint64>(0, qint64(entry.value(jsonkeys::length).toDouble()));
    }
    const QByteArray stored = json.isUndefined() && entry.isEmpty() ? QByteArray() : hash();
    if (m_rawHash != former) {
        const QPointer<Document> guard(d_());
        fetchIfWanted();
        if (guard) {
            notify();
        }
    }
    return stored;
}

void AttachmentProperty::fetchIfWanted()
{
    DocumentStore &store = documentStore(d_()->context());
    if (!AttachmentStore::isHash(m_rawHash)
        || !(m_autoDownload || store.attachmentDownloadEnabled())) {
        return;
    }
    std::function<void()> tell;
    if (m_autoDownload) {
        tell = [document = d_()] { document->attachmentDownloadFinished(); };
    }
    if (!AttachmentStore::contains(m_rawHash)) {
        fetch(tell);
    } else if (tell) {
        tell();
    }
}

// Inline documents have no attachments in the database.
void AttachmentProperty::fetch(const std::function<void()> &finished)
{
    auto *document = qobject_cast<LinkedDocument *>(d_());
    if (document && !AttachmentStore::contains(m_rawHash)) {
        documentStore(document->context())
            .fetchAttachment(document, QString::fromLatin1(name()), finished);
    }
}

QJsonValue AttachmentProperty::toJson() const
{
    if (!m_oddText.isEmpty()) {
        return m_oddText;
    }
    return m_rawHash.isEmpty() ? QJsonValue() : QJsonValue(QString::fromLatin1(hash()));
}

} // namespace vo::data
