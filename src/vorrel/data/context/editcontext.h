// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/ichangerecorder.h>

namespace vo::data {

/// A Context with undo. Edits of its documents between beginRecordChanges() and
/// endRecordChanges() make up one step; edits outside of them are made without a way back.
///
///     shop.beginRecordChanges()
///     tag.name = "Blue"
///     shop.endRecordChanges()
///     shop.undo()
///
/// Steps that edit the same properties within half a second, as typing does, become one. The last
/// 70 are kept. Groups may lie in each other: the outermost one is the step. Nothing is saved while
/// one is open.
///
/// Slots that run because of undo(), redo() or rollbackChanges() may edit, but are not recorded:
/// the groups that they open or close, and clearChanges(), count from the end of it. They may
/// destroy documents and this object.
class VORREL_DATACORE_EXPORT EditContext : public vo::data::Context, public IChangeRecorder
{
    Q_OBJECT
    Q_INTERFACES(vo::data::IChangeRecorder)
    QML_NAMED_ELEMENT(EditContext)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY canUndoChanged)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY canRedoChanged)

public:
    explicit EditContext(QObject *parent = nullptr);
    EditContext(const QUrl &serviceUrl, const QString &database, QObject *parent = nullptr);

    /// Warns if a group is still open.
    ~EditContext() override;

    /// As last signalled. False while a group is open, from the next turn of the event loop on.
    [[nodiscard]] bool canUndo() const override;
    [[nodiscard]] bool canRedo() const override;

    /// Takes \p change over. False, with a warning, if nothing is being recorded.
    bool recordChange(Change *change) override;

    /// True while a group is open and edits are those of the user: not those of an undo, nor those
    /// of others.
    [[nodiscard]] bool changeRecordingActive() const override;

    Q_INVOKABLE void beginRecordChanges() override;

    /// Closes the innermost group. The outermost one becomes a step if anything was edited, which
    /// ends the way forward. Logs a warning if no group is open.
    Q_INVOKABLE void endRecordChanges() override;

    /// Takes back what was edited since the innermost group was opened. It stays open.
    Q_INVOKABLE void rollbackChanges() override;

    /// Closes all groups and forgets all steps. Documents stay as they are.
    void clearChanges() override;

public Q_SLOTS:
    /// Takes the last step back. Does nothing while isBusy() or while a group is open.
    virtual void undo();

    /// Makes the step again that was taken back last. Likewise.
    virtual void redo();

Q_SIGNALS:
    void canUndoChanged();
    void canRedoChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
