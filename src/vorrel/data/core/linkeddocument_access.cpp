// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: who may read and change it.

#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documenttasks_p.h>
#include <vorrel/data/core/linkeddocument_p.h>

#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>

#include <algorithm>

namespace vo::data {

AccessController *LinkedDocument::accessController() const
{
    if (!d->accessController) {
        d->accessController = d->store.createAccessController(d->q);
    }
    return d->accessController.get();
}

Document::AccessLevel LinkedDocument::accessLevel() const
{
    if (d->accessLevel == UnknownAccess) {
        // The first question is no change.
        const QSignalBlocker blocker(d->q);
        d->q->updateAccessLevel();
    }
    return d->accessLevel;
}

bool LinkedDocument::implicitReadAccess() const
{
    return d->implicitRead;
}

void LinkedDocument::overrideAccessLevel()
{
    d->accessLevel = WriteAccess;
}

void LinkedDocument::scheduleAccessLevelUpdate()
{
    if (d->accessUpdatePending) {
        return;
    }
    d->accessUpdatePending = true;
    d->store.addDocumentGraphTask(std::make_unique<DocumentAccessLevelUpdateTask>(this));
}

bool LinkedDocument::hasImplicitReadAccess() const
{
    const DocumentNode *node = d->store.documentNode(id());
    if (!node) {
        return false;
    }
    const QList<DocumentEdge *> &edges = node->incoming();
    return std::any_of(edges.begin(), edges.end(), [](const DocumentEdge *edge) {
        const LinkedDocument *source = edge->source->document();
        return source && source->accessLevel() >= ReadAccess;
    });
}

void LinkedDocument::updateAccessLevel()
{
    if (!d->accessUpdatePending) {
        return;
    }
    const QPointer<LinkedDocument> self(this);
    const AccessLevel oldLevel = d->accessLevel;
    const bool wasImplicit = d->implicitRead;
    AccessLevel level = accessController()->accessLevel();
    d->implicitRead = level < ReadAccess && hasImplicitReadAccess();
    if (d->implicitRead || (isDirty() && level < ReadAccess)) {
        level = ReadAccess;
    }
    d->accessLevel = level;
    // Cleared before anything is emitted: a slot that changes the access asks for another round.
    d->accessUpdatePending = false;

    if (level != oldLevel) {
        Q_EMIT accessLevelChanged();
    }
    if (self && d->implicitRead != wasImplicit) {
        Q_EMIT implicitReadAccessChanged();
    }
    // The first answer is no change: nobody has seen another one.
    if (self && oldLevel != UnknownAccess && (level < ReadAccess) != (oldLevel < ReadAccess)) {
        readAccessChanged();
    }
}

// What readers of this document see, and who reads through it, is different now.
void LinkedDocument::readAccessChanged()
{
    if (const DocumentNode *node = d->store.documentNode(id())) {
        for (const DocumentEdge *edge : node->outgoing()) {
            if (LinkedDocument *target = edge->target->document()) {
                target->scheduleAccessLevelUpdate();
            }
        }
    }
    const QPointer<LinkedDocument> self(this);
    allPropertiesChanged();
    if (self) {
        scheduleDependencyUpdate();
    }
}

} // namespace vo::data
