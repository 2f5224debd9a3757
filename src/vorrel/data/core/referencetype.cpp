// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/referencetype_p.h>

#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentreferenceincubator_p.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

namespace {

LinkedDocument *loadedDocument(const LinkedDocument *owner, const QByteArray &id)
{
    const DocumentNode *node = documentStore(owner->context()).documentNode(id);
    LinkedDocument *document = node ? node->document() : nullptr;
    return document && !document->deleted() ? document : nullptr;
}

void attachById(LinkedDocument *owner, const QByteArray &id)
{
    DocumentStore &store = documentStore(owner->context());
    const DocumentNode *node = store.documentNode(id);
    if (!node) {
        return;
    }
    if (node->isInstantiated()) {
        owner->attachReference(id, node->document());
    } else {
        store.incubate(new DocumentReferenceIncubator(owner, id));
    }
}

const ReferenceType linkedDocuments {
    &LinkedDocument::staticMetaObject,
    0,
    [](const QObject *object) { return static_cast<const LinkedDocument *>(object)->id(); },
    [](LinkedDocument *owner, const QByteArray &id) {
        LinkedDocument *target = loadedDocument(owner, id);
        return target && !owner->performCycleCheck(target);
    },
    &attachById,
    [](LinkedDocument *owner, QObject *object) {
        auto *target = static_cast<LinkedDocument *>(object);
        owner->attachReference(target->id(), target);
    },
    [](LinkedDocument *owner, const QByteArray &id) { owner->detachReference(id); },
    [](const LinkedDocument *owner, const QByteArray &id) -> QObject * {
        return loadedDocument(owner, id);
    },
    true,
};

} // namespace

const QHash<int, const ReferenceType *> &ReferenceType::all()
{
    static const QHash<int, const ReferenceType *> types { { linkedDocuments.type,
                                                             &linkedDocuments } };
    return types;
}

} // namespace vo::data
