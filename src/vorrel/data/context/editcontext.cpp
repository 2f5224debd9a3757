// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/editcontext.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/change.h>
#include <vorrel/data/core/changeset.h>

#include <QtCore/QPointer>

#include <deque>
#include <utility>

namespace vo::data {

struct EditContext::Private
{
    explicit Private(EditContext *context)
        : q(context)
    { }

    EditContext *const q;
    // Shared with those that walk through them, whose slots may destroy the Context.
    std::shared_ptr<ChangeSet> current; // null if no group is open
    std::deque<std::shared_ptr<ChangeSet>> stack;
    int position = -1;      // of the newest applied set
    bool walking = false;   // through a set: undoing, redoing or rolling back
    int heldLevels = 0;     // opened during a walk, less those that were closed
    bool clearHeld = false; // asked for during a walk
    bool canUndo = false;
    bool canRedo = false;

    [[nodiscard]] int last() const { return int(stack.size()) - 1; }
    [[nodiscard]] bool mayMove() const { return !walking && !current && !q->isBusy(); }
    void walk(const std::shared_ptr<ChangeSet> &set, void (ChangeSet::*way)(), int distance);
    void runHeld();
    void store(const std::shared_ptr<ChangeSet> &set);
    void updateState();
};

EditContext::EditContext(QObject *parent)
    : Context(parent)
    , d(new Private(this))
{ }

EditContext::EditContext(const QUrl &serviceUrl, const QString &database, QObject *parent)
    : EditContext(parent)
{
    setServiceUrl(serviceUrl);
    setDatabase(database);
}

EditContext::~EditContext()
{
    if (d->current) {
        qCWarning(lcContext, "Closing a context with %d open change groups", d->current->nesting());
    }
}

// Recording

bool EditContext::changeRecordingActive() const
{
    return d->current && !d->walking && !isTakingRemoteEdit();
}

bool EditContext::recordChange(Change *change)
{
    if (!changeRecordingActive()) {
        qCWarning(lcContext, "Attempt to record change without active change set");
        delete change;
        return false;
    }
    d->current->add(change);
    return true;
}

void EditContext::beginRecordChanges()
{
    if (d->walking) {
        ++d->heldLevels;
        return;
    }
    const bool isOutermost = !d->current;
    if (isOutermost) {
        d->current = std::make_shared<ChangeSet>();
    }
    d->current->beginNested();
    if (isOutermost) {
        QMetaObject::invokeMethod(
            this, [this] { d->updateState(); }, Qt::QueuedConnection);
        setSaveEnabled(false);
    }
}

void EditContext::endRecordChanges()
{
    if (d->walking) {
        --d->heldLevels;
        return;
    }
    if (!d->current) {
        qCWarning(lcContext, "Call to endRecordChanges() without beginRecordChanges()");
        return;
    }
    if (d->current->endNested()) {
        return;
    }
    const std::shared_ptr<ChangeSet> set = std::exchange(d->current, nullptr);
    set->compress();
    if (!set->isEmpty()) {
        d->store(set);
    }
    const QPointer<EditContext> self(this);
    setSaveEnabled(true);
    if (self) {
        d->updateState();
    }
}

void EditContext::Private::store(const std::shared_ptr<ChangeSet> &set)
{
    while (last() > position) {
        stack.pop_back();
    }
    if (!stack.empty() && stack.back()->merge(set.get())) {
        return;
    }
    stack.push_back(set);
    while (int(stack.size()) > tuning::undoLimit) {
        stack.pop_front();
    }
    position = last();
}

void EditContext::rollbackChanges()
{
    if (d->current && !d->walking) {
        d->walk(d->current, &ChangeSet::rollback, 0);
    }
}

void EditContext::clearChanges()
{
    if (d->walking) {
        d->clearHeld = true;
        return;
    }
    const QPointer<EditContext> self(this);
    for (int levels = d->current ? d->current->nesting() : 0; self && levels > 0; --levels) {
        endRecordChanges();
    }
    if (!self || d->stack.empty()) {
        return;
    }
    const auto forgotten = std::exchange(d->stack, {});
    d->position = -1;
    d->updateState();
}

// Undo and redo

void EditContext::undo()
{
    if (d->mayMove() && d->canUndo) {
        d->walk(d->stack[std::size_t(d->position)], &ChangeSet::unapply, -1);
    }
}

void EditContext::redo()
{
    if (d->mayMove() && d->canRedo) {
        d->walk(d->stack[std::size_t(d->position) + 1], &ChangeSet::apply, 1);
    }
}

void EditContext::Private::walk(const std::shared_ptr<ChangeSet> &set, void (ChangeSet::*way)(),
                                int distance)
{
    // A slot may destroy the Context, whose set must not go before the walk ends.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const std::shared_ptr<ChangeSet> held(set);
    const QPointer<EditContext> self(q);
    walking = true;
    ((*held).*way)();
    if (!self) {
        return;
    }
    walking = false;
    position += distance;
    runHeld();
    if (self) {
        updateState();
    }
}

void EditContext::Private::runHeld()
{
    const QPointer<EditContext> self(q);
    int levels = std::exchange(heldLevels, 0);
    const bool clear = std::exchange(clearHeld, false);
    for (; self && levels > 0; --levels) {
        q->beginRecordChanges();
    }
    for (; self && levels < 0; ++levels) {
        q->endRecordChanges();
    }
    if (self && clear) {
        q->clearChanges();
    }
}

bool EditContext::canUndo() const
{
    return d->canUndo;
}

bool EditContext::canRedo() const
{
    return d->canRedo;
}

// Both answers are right before anybody hears of one.
void EditContext::Private::updateState()
{
    const bool couldUndo = std::exchange(canUndo, !current && position >= 0);
    const bool couldRedo = std::exchange(canRedo, !current && position < last());
    const QPointer<EditContext> self(q);
    if (canUndo != couldUndo) {
        Q_EMIT q->canUndoChanged();
    }
    if (self && canRedo != couldRedo) {
        Q_EMIT q->canRedoChanged();
    }
}

} // namespace vo::data

#include "moc_editcontext.cpp"
