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
    if (d->accessLevel == UnknownAccess && !d->accessUpdateRunning) {
        // The first question is no change.
        const QSignalBlocker blocker(d->q);
        d->q->updateAccessLevel();
    }
    return d->accessLevel == UnknownAccess ? NoAccess : d->accessLevel;
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

// Documents may refer to each other in long chains and circles, so this asks no source to ask its
// own sources: one that does not know its level yet computes it in a turn of its own, and if it
// proves readable it has this document look again.
bool LinkedDocument::hasImplicitReadAccess() const
{
    const DocumentNode *node = d->store.documentNode(id());
    if (!node) {
        return false;
    }
    for (const DocumentEdge *edge : node->incoming()) {
        LinkedDocument *source = edge->source->document();
        if (!source || source == this) {
            continue;
        }
        if (source->d->accessLevel != UnknownAccess) {
            if (source->d->accessLevel >= ReadAccess) {
                return true;
            }
        } else if (source->accessController()->accessLevel() >= ReadAccess) {
            return true;
        } else {
            d->store.addDocumentGraphTask(
                std::make_unique<DocumentAccessLevelUpdateTask>(source));
        }
    }
    return false;
}

void LinkedDocument::updateAccessLevel()
{
    if (!d->accessUpdatePending) {
        return;
    }
    const QPointer<LinkedDocument> self(this);
    const AccessLevel oldLevel = d->accessLevel;
    const bool wasImplicit = d->implicitRead;
    d->accessUpdateRunning = true;
    AccessLevel level = accessController()->accessLevel();
    d->implicitRead = level < ReadAccess && hasImplicitReadAccess();
    if (d->implicitRead || (isDirty() && level < ReadAccess)) {
        level = ReadAccess;
    }
    d->accessLevel = level;
    d->accessUpdateRunning = false;
    // Cleared before anything is emitted: a slot that changes the access asks for another round.
    d->accessUpdatePending = false;

    if (level != oldLevel) {
        Q_EMIT accessLevelChanged();
    }
    if (self && d->implicitRead != wasImplicit) {
        Q_EMIT implicitReadAccessChanged();
    }
    if (self && (level < ReadAccess) != (oldLevel < ReadAccess)) {
        updateAccessOfTargets();
        // The first answer is no change: nobody has seen another one.
        if (oldLevel != UnknownAccess) {
            readAccessChanged();
        }
    }
}

// Who may read this document may read what it refers to.
void LinkedDocument::updateAccessOfTargets()
{
    if (const DocumentNode *node = d->store.documentNode(id())) {
        for (const DocumentEdge *edge : node->outgoing()) {
            if (LinkedDocument *target = edge->target->document()) {
                target->scheduleAccessLevelUpdate();
            }
        }
    }
}

// What readers of this document see is different now.
void LinkedDocument::readAccessChanged()
{
    const QPointer<LinkedDocument> self(this);
    allPropertiesChanged();
    if (self) {
        scheduleDependencyUpdate();
    }
}

} // namespace vo::data
