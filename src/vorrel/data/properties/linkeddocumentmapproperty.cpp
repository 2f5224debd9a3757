// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/linkeddocumentmapproperty.h>

#include <vorrel/data/core/documentids_p.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentstore_p.h>

#include <algorithm>

namespace vo::data {

LinkedDocumentMapPropertyBase::LinkedDocumentMapPropertyBase(const char *name, Document *document)
    : DocumentMapPropertyBase(name, document)
{ }

LinkedDocumentMapPropertyBase::~LinkedDocumentMapPropertyBase()
{
    for (const QPointer<LinkedDocument> &target : std::as_const(m_targets)) {
        abandon(target);
    }
}

// Stored data

void LinkedDocumentMapPropertyBase::fromJson(const QJsonValue &json)
{
    m_pendingIds.clear();
    m_built.clear();
    const QJsonObject object = json.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QString id = it.value().toString();
        m_pendingIds.insert(it.key(), isStorableId(id) ? id.toLatin1() : QByteArray());
    }
    if (m_pendingIds.isEmpty()) {
        assign({});
    } else {
        store().incubate(this);
    }
}

bool LinkedDocumentMapPropertyBase::incubate(Context * /*context*/)
{
    const QPointer<Document> guard(d_());
    if (!m_pendingIds.isEmpty()) {
        buildNext();
    }
    if (guard && m_pendingIds.isEmpty()) {
        deliverNotification();
    }
    return guard && !m_pendingIds.isEmpty();
}

void LinkedDocumentMapPropertyBase::buildNext()
{
    const QPointer<Document> guard(d_());
    const QString key = m_pendingIds.firstKey();
    const QByteArray id = m_pendingIds.first();
    const DocumentNode *node = store().documentNode(id);
    LinkedDocument *document = node ? node->document() : nullptr;
    if (!guard || m_pendingIds.value(key) != id) {
        return; // building it brought other data
    }
    m_pendingIds.remove(key);
    if (document && accepts(document)) {
        m_built.insert(key, document);
    }
    if (m_pendingIds.isEmpty() && exchange(std::exchange(m_built, {}))) {
        notifyLater();
    }
}

void LinkedDocumentMapPropertyBase::finishLoading() const
{
    auto *self = const_cast<LinkedDocumentMapPropertyBase *>(this);
    const QPointer<Document> guard(d_());
    while (guard && !m_pendingIds.isEmpty()) {
        self->buildNext();
    }
}

const LinkedDocumentMapPropertyBase::Targets &LinkedDocumentMapPropertyBase::targets() const
{
    finishLoading();
    return m_targets;
}

// Data and edits alike end here. False when nothing changed or a slot destroyed the document.
bool LinkedDocumentMapPropertyBase::assign(const Targets &targets)
{
    return exchange(targets) && notify();
}

// The same without telling.
bool LinkedDocumentMapPropertyBase::exchange(const Targets &targets)
{
    if (targets == m_targets) {
        return false;
    }
    const QPointer<Document> guard(d_());
    const Targets former = std::exchange(m_targets, targets);
    // Attached anew before they are let go, so that what stays never looks unreferenced.
    for (const QPointer<LinkedDocument> &target : targets) {
        if (guard && target) {
            attach(target);
        }
    }
    for (const QPointer<LinkedDocument> &target : former) {
        if (guard && target) {
            detach(target);
        }
    }
    return !guard.isNull();
}

QJsonValue LinkedDocumentMapPropertyBase::toJson() const
{
    QJsonObject object;
    // What is still being built is stored as it came.
    const Targets &present = m_pendingIds.isEmpty() ? m_targets : m_built;
    for (auto it = present.begin(); it != present.end(); ++it) {
        if (it.value()) {
            object.insert(it.key(), it.value()->documentId());
        }
    }
    for (auto it = m_pendingIds.begin(); it != m_pendingIds.end(); ++it) {
        object.insert(it.key(), QString::fromLatin1(it.value()));
    }
    return object;
}

void LinkedDocumentMapPropertyBase::aggregateReferences(QSet<QString> &ids) const
{
    const QJsonObject object = toJson().toObject();
    for (const QJsonValue &id : object) {
        ids.insert(id.toString());
    }
}

bool LinkedDocumentMapPropertyBase::isComplete() const
{
    return m_pendingIds.isEmpty();
}

QList<Document *> LinkedDocumentMapPropertyBase::referencedDocuments() const
{
    QList<Document *> documents;
    const Targets all = targets();
    for (const QPointer<LinkedDocument> &target : all) {
        if (target) {
            documents.append(target);
        }
    }
    return documents;
}

// Editing

bool LinkedDocumentMapPropertyBase::edit(const Targets &targets)
{
    applyEdit([this, targets, old = m_targets](bool forward) {
        Targets wanted = forward ? targets : old;
        for (auto it = wanted.begin(); it != wanted.end();) {
            it = it.value() ? std::next(it) : wanted.erase(it); // it has gone meanwhile
        }
        return assign(wanted);
    });
    return true;
}

bool LinkedDocumentMapPropertyBase::insert(const QString &key, Document *document)
{
    if (!canWrite()) {
        return false;
    }
    if (!document) {
        return remove(key);
    }
    auto *target = qobject_cast<LinkedDocument *>(document);
    if (!target || !accepts(target) || !acceptsContext(target) || d_()->performCycleCheck(target)) {
        return false;
    }
    Targets changed = targets();
    if (changed.value(key) == target) {
        return false;
    }
    const auto present = std::find(changed.cbegin(), changed.cend(), target);
    if (present != changed.cend()) {
        return rename(present.key(), key);
    }
    changed.insert(key, target);
    return edit(changed);
}

bool LinkedDocumentMapPropertyBase::remove(const QString &key)
{
    Targets changed = targets();
    return canWrite() && changed.remove(key) > 0 && edit(changed);
}

bool LinkedDocumentMapPropertyBase::rename(const QString &from, const QString &to)
{
    Targets changed = targets();
    if (!canWrite() || from == to || !changed.contains(from)) {
        return false;
    }
    const QPointer<LinkedDocument> target = changed.take(from);
    changed.insert(to, target);
    return edit(changed);
}

void LinkedDocumentMapPropertyBase::clear()
{
    if (canWrite() && !targets().isEmpty()) {
        edit({});
    }
}

void LinkedDocumentMapPropertyBase::copy(PropertyBase *source)
{
    const auto *other = static_cast<LinkedDocumentMapPropertyBase *>(source);
    const Targets copied = other->canRead() ? other->targets() : Targets();
    if (canWrite() && copied != targets()) {
        edit(copied);
    }
}

void LinkedDocumentMapPropertyBase::removeDocument(Document *document)
{
    Targets changed = targets();
    for (auto it = changed.begin(); it != changed.end();) {
        it = it.value() == document ? changed.erase(it) : std::next(it);
    }
    if (canWrite() && changed != m_targets) {
        edit(changed);
    }
}

} // namespace vo::data
