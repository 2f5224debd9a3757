// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: who may read and change it.

#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documenttasks_p.h>
#include <vorrel/data/core/linkeddocument_p.h>

#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>

#include <algorithm>
#include <vector>

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
    if (d->accessLevel != UnknownAccess) {
        return d->accessLevel;
    }
    if (!d->accessInQuestion) {
        d->q->computeFirstAccessLevel();
    }
    return std::max(d->accessLevel, NoAccess);
}

// A document without access of its own has to ask those that refer to it, which have to ask in
// turn. Documents may refer to each other in long chains and in rings, so this keeps a stack of
// its own; where a ring closes, the question counts as no access for the time being.
void LinkedDocument::computeFirstAccessLevel()
{
    std::vector<LinkedDocument *> open { this };
    while (!open.empty()) {
        LinkedDocument *document = open.back();
        Private &record = *document->d;
        if (record.accessLevel == UnknownAccess && !record.accessInQuestion) {
            record.accessInQuestion = true;
            const std::vector<LinkedDocument *> sources = document->sourcesToAsk();
            open.insert(open.end(), sources.begin(), sources.end());
            continue;
        }
        open.pop_back();
        if (record.accessLevel == UnknownAccess) {
            // The first answer is no change.
            const QSignalBlocker blocker(document);
            document->updateAccessLevel();
            record.accessInQuestion = false;
            document->correctAnswersOfRing();
        }
    }
}

std::vector<LinkedDocument *> LinkedDocument::sourcesToAsk() const
{
    std::vector<LinkedDocument *> sources;
    const DocumentNode *node = d->store.documentNode(id());
    if (!node || node->incoming().isEmpty() || accessController()->accessLevel() >= ReadAccess) {
        return sources;
    }
    for (const DocumentEdge *edge : node->incoming()) {
        LinkedDocument *source = edge->source->document();
        if (source && source->d->accessLevel == UnknownAccess && !source->d->accessInQuestion) {
            sources.push_back(source);
        }
    }
    return sources;
}

// Targets that were answered while this document was in question do not know that it is readable.
void LinkedDocument::correctAnswersOfRing()
{
    const DocumentNode *node = d->accessLevel < ReadAccess ? nullptr : d->store.documentNode(id());
    if (!node) {
        return;
    }
    for (const DocumentEdge *edge : node->outgoing()) {
        LinkedDocument *target = edge->target->document();
        if (target && target->d->accessLevel == NoAccess) {
            target->scheduleAccessLevelUpdate();
        }
    }
}

bool LinkedDocument::implicitReadAccess() const
{
    return d->implicitRead;
}

void LinkedDocument::overrideAccessLevel()
{
    // The first answer counts as pending from the beginning. As long as it is outstanding, no
    // update could be asked for that ends this.
    static_cast<void>(accessLevel());
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
