// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/document.h>

#include <vorrel/data/core/change.h>
#include <vorrel/data/core/document_p.h>
#include <vorrel/data/core/documentwatch_p.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/exportgap.h>
#include <vorrel/data/core/ichangerecorder.h>
#include <vorrel/data/properties/documentpropertybase.h>

#include <vorrel/core/couchurl.h>

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QStringList>

namespace vo::data {

Document::Document(QObject *parent)
    : QObject(parent)
    , d(new Private)
{ }

Document::~Document()
{
    DocumentWatch::announce(this);
}

QString Document::typeOf(const QMetaObject &metaObject)
{
    static QHash<const QMetaObject *, QString> cache;
    const auto known = cache.constFind(&metaObject);
    if (known != cache.constEnd()) {
        return *known;
    }
    const auto info = [](const QMetaObject &meta, const char *key, int firstIndex) {
        const int index = meta.indexOfClassInfo(key);
        return index < firstIndex ? QString() : QString::fromUtf8(meta.classInfo(index).value());
    };
    QString type;
    if (info(metaObject, "InheritType", 0) == QLatin1String("false")) {
        type = info(metaObject, "DocumentType", 0);
    } else {
        QStringList segments;
        for (const QMetaObject *meta = &metaObject; meta && meta != &staticMetaObject;
             meta = meta->superClass()) {
            const QString segment = info(*meta, "DocumentType", meta->classInfoOffset());
            if (!segment.isEmpty()) {
                segments.prepend(segment);
            }
        }
        type = segments.join(QLatin1Char(':'));
    }
    cache.insert(&metaObject, type);
    return type;
}

bool Document::isBaseType(const QString &base, const QString &type)
{
    // Segment by segment is the same as: a prefix that ends where a segment of the type ends. Qt
    // does not let a null string start with an empty one.
    return (base.isEmpty() || type.startsWith(base))
        && (type.size() == base.size() || type.at(base.size()) == QLatin1Char(':'));
}

bool Document::hasType(const QString &type) const
{
    return isBaseType(type, this->type());
}

void Document::remove()
{
    setDeleted(true);
}

QString Document::documentId() const
{
    return QString::fromLatin1(id());
}

QString Document::database() const
{
    return documentStore(context()).database();
}

QUrl Document::serviceUrl() const
{
    return documentStore(context()).serviceUrl();
}

QUrl Document::documentUrl() const
{
    return CouchUrl::documentUrl(serviceUrl(), database(), documentId());
}

QUrl Document::attachmentUrl(const QByteArray &hash) const
{
    return CouchUrl::attachmentUrl(serviceUrl(), database(), documentId(),
                                   QString::fromLatin1(hash));
}

QString Document::language() const
{
    return documentStore(context()).language();
}

bool Document::isDirty() const
{
    return changeSequenceNumber() > 0;
}

bool Document::hasLocalChanges() const
{
    return isDirty();
}

bool Document::wasCached() const
{
    return d->wasCached;
}

void Document::markAsCached()
{
    d->wasCached = true;
}

bool Document::useLocale() const
{
    return d->useLocale;
}

void Document::setUseLocale(bool useLocale)
{
    d->useLocale = useLocale;
}

bool Document::complete(const QJsonObject &json)
{
    const QPointer<Document> self(this);
    lock();
    executePostRoutines();
    assignData(json);
    if (self) {
        convert(json);
    }
    if (self) {
        initialize();
    }
    if (self) {
        unlock();
    }
    return !self.isNull();
}

void Document::lock()
{
    d->locked = true;
}

void Document::unlock()
{
    d->locked = false;
}

bool Document::isLocked() const
{
    return d->locked;
}

void Document::addPostRoutine(std::function<void()> routine)
{
    if (!d->postRoutines) {
        d->postRoutines = std::make_unique<std::vector<std::function<void()>>>();
    }
    d->postRoutines->push_back(std::move(routine));
}

void Document::executePostRoutines()
{
    // All constructors have run, so no more properties will come.
    d->properties.shrink_to_fit();
    for (const PropertyBase *property : d->properties) {
        if (property->holdsDocuments()) {
            d->documentProperties.push_back(static_cast<const DocumentPropertyBase *>(property));
        }
    }
    const auto routines = std::move(d->postRoutines);
    if (!routines) {
        return;
    }
    for (const auto &routine : *routines) {
        routine();
    }
}

bool Document::exportDocument(const QUrl &file, const QStringList &dependencies,
                              const QStringList &excludedKeys)
{
    return documentStore(context()).exportDocument(this, file, dependencies, excludedKeys);
}

QVariantList Document::exportGaps(const QStringList &dependencies) const
{
    QVariantList list;
    const QList<ExportGap> gaps = documentStore(context()).exportGaps(this, dependencies);
    for (const ExportGap &gap : gaps) {
        list.append(QVariant::fromValue(gap));
    }
    return list;
}

// The change recorder

IChangeRecorder *Document::changeRecorder() const
{
    Context *owner = context();
    return owner ? qobject_cast<IChangeRecorder *>(documentStore(owner).object()) : nullptr;
}

void Document::beginRecordChanges()
{
    if (IChangeRecorder *recorder = changeRecorder()) {
        recorder->beginRecordChanges();
    }
}

void Document::endRecordChanges()
{
    if (IChangeRecorder *recorder = changeRecorder()) {
        recorder->endRecordChanges();
    }
}

void Document::rollbackChanges()
{
    if (IChangeRecorder *recorder = changeRecorder()) {
        recorder->rollbackChanges();
    }
}

bool Document::changeRecordingActive() const
{
    const IChangeRecorder *recorder = changeRecorder();
    return recorder && recorder->changeRecordingActive();
}

void Document::recordChange(Change *change)
{
    if (IChangeRecorder *recorder = changeRecorder()) {
        recorder->recordChange(change);
    } else {
        delete change;
    }
}

void Document::applyChange(std::unique_ptr<Change> &&change)
{
    std::unique_ptr<Change> owned = std::move(change);
    const QPointer<Document> self(this);
    owned->apply();
    // Applying emits signals, and a slot may have destroyed this document.
    IChangeRecorder *recorder = self ? changeRecorder() : nullptr;
    if (recorder && recorder->changeRecordingActive()) {
        recorder->recordChange(owned.release());
    }
}

// What a document without identity answers

void Document::convert(const QJsonObject & /*object*/) { }

QSet<QByteArray> Document::currentAttachments() const
{
    return {};
}

void Document::setCurrentAttachments(const QSet<QByteArray> & /*hashes*/) { }

const Document *Document::linkSource() const
{
    return this;
}

Document::StorageFlags Document::storageFlags() const
{
    return NoStorageFlag;
}

void Document::initialize() { }

void Document::attachmentDownloadFinished() { }

void Document::reportDocumentChange() { }

QString Document::type() const
{
    return typeOf(*metaObject());
}

QString Document::revision() const
{
    return {};
}

QDateTime Document::created() const
{
    return {};
}

qint64 Document::creationTimestamp() const
{
    return 0;
}

QDateTime Document::edited() const
{
    return {};
}

QString Document::creationVersion() const
{
    return {};
}

QString Document::label() const
{
    return {};
}

bool Document::deleted() const
{
    return false;
}

void Document::setDeleted(bool /*deleted*/) { }

Document::AccessLevel Document::accessLevel() const
{
    return WriteAccess;
}

bool Document::implicitReadAccess() const
{
    return false;
}

bool Document::isLocal() const
{
    return false;
}

Attachment *Document::attachment(const QString & /*property*/) const
{
    return nullptr;
}

QList<Attachment *> Document::attachments() const
{
    return {};
}

} // namespace vo::data

#include "moc_document.cpp"
