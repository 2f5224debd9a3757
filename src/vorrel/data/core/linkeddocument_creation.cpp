// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: how one comes to life. It is locked until it is complete, so that its data does
// not count as edits.

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/documentcreatechange.h>
#include <vorrel/data/core/documentids_p.h>
#include <vorrel/data/core/genericchange.h>
#include <vorrel/data/core/linkeddocument_p.h>
#include <vorrel/data/core/typeregistry_p.h>

#include <QtCore/QPointer>

namespace vo::data {

namespace {

bool acceptsId(const QString &id)
{
    if (!isStorableId(id)) {
        qCWarning(lcContext, "Refusing the document id %s: ids are Latin-1", qPrintable(id));
        return false;
    }
    return true;
}

} // namespace

LinkedDocument *LinkedDocument::createInternal(const QString &type, Context *context)
{
    LinkedDocument *document = TypeRegistry::instance().create(type, context);
    if (!document) {
        qCCritical(lcData, "Creating unknown document: %s", qPrintable(type));
    }
    return document;
}

LinkedDocument *LinkedDocument::create(const QJsonObject &json, Context *context)
{
    if (!acceptsId(json.value(jsonkeys::id).toString())) {
        return nullptr;
    }
    LinkedDocument *document = createInternal(json.value(jsonkeys::type).toString(), context);
    return document && document->complete(json) ? document : nullptr;
}

LinkedDocument *LinkedDocument::create(const QString &type, Context *context)
{
    return create(type, QString(), context);
}

LinkedDocument *LinkedDocument::create(const QString &type, const QString &id, Context *context)
{
    if (!acceptsId(id)) {
        return nullptr;
    }
    // Made before the id is released: an unknown type must not cost a deleted document its place.
    const QPointer<LinkedDocument> document(createInternal(type, context));
    if (!document) {
        return nullptr;
    }
    if (!id.isEmpty()) {
        if (!documentStore(context).releaseId(id.toLatin1())) {
            qCCritical(lcContext, "A document with the id %s exists already", qPrintable(id));
            delete document;
            return nullptr;
        }
        document->setDocumentId(id);
    }
    document->completeNew();
    return document;
}

void LinkedDocument::completeNew()
{
    const QPointer<LinkedDocument> self(this);
    lock();
    executePostRoutines();
    initialize();
    if (!self) {
        return;
    }
    const StorageFlags flags = storageFlags();
    if (!flags.testFlag(CreatedInternally) && changeRecordingActive()) {
        recordChange(new DocumentCreateChange(this));
    }
    unlock();
    if (flags.testFlag(StoreNewDocument)) {
        markDirty();
    }
}

QStringList LinkedDocument::autoInstances(const QString &type)
{
    QStringList ids;
    const QHash<QString, QString> &all = TypeRegistry::instance().autoInstances();
    for (auto it = all.begin(); it != all.end(); ++it) {
        if (isBaseType(type, it.value())) {
            ids.append(it.key());
        }
    }
    return ids;
}

void LinkedDocument::createAutoInstances(Context *context)
{
    const QHash<QString, QString> all = TypeRegistry::instance().autoInstances();
    for (auto it = all.begin(); it != all.end(); ++it) {
        create(it.value(), it.key(), context);
    }
}

LinkedDocument *LinkedDocument::copy()
{
    const QPointer<LinkedDocument> self(this);
    const QPointer<LinkedDocument> document(create(type(), d->context));
    if (!document || !self) {
        return document;
    }
    document->copyProperties(this);
    document->d->assign(d->content().entries);
    if (document && document->changeRecordingActive()) {
        // Taking the creation back drops the references in it.
        document->recordChange(new GenericChange(
            document,
            [copy = document.data(), data = document->d->content().entries](bool forward) {
                if (forward) {
                    copy->assignCustomData(data.toObject());
                }
            }));
    }
    if (!document || !self) {
        return document;
    }
    document->initializeCopy(this);
    return document;
}

void LinkedDocument::initializeCopy(const LinkedDocument * /*source*/) { }

void LinkedDocument::initialize()
{
    const QPointer<LinkedDocument> self(this);
    d->store.addDocument(this);
    if (self) {
        Document::initialize();
    }
}

} // namespace vo::data
