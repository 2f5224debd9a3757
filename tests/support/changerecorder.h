// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/accesscontext.h"

#include <vorrel/data/core/change.h>
#include <vorrel/data/core/ichangerecorder.h>

#include <QtCore/QStringList>

#include <vector>

namespace vo::test {

/// A Context that keeps the changes of its documents, one by one, and notes what it was asked.
class ChangeRecorder : public AccessContext, public vo::data::IChangeRecorder
{
    Q_OBJECT
    Q_INTERFACES(vo::data::IChangeRecorder)
public:
    using AccessContext::AccessContext;

    std::vector<std::unique_ptr<vo::data::Change>> changes;
    QStringList calls;
    bool active = false;
    bool accepting = true;

    [[nodiscard]] bool canUndo() const override { return !changes.empty(); }
    [[nodiscard]] bool canRedo() const override { return false; }
    [[nodiscard]] bool changeRecordingActive() const override { return active; }

    bool recordChange(vo::data::Change *change) override
    {
        if (accepting) {
            changes.emplace_back(change);
        }
        return accepting;
    }

    void beginRecordChanges() override { calls.append(QStringLiteral("begin")); }
    void endRecordChanges() override { calls.append(QStringLiteral("end")); }
    void rollbackChanges() override { calls.append(QStringLiteral("rollback")); }
    void clearChanges() override { changes.clear(); }

    /// Takes back all changes, the last one first. They stay, for redo(). Neither is recorded.
    void undo()
    {
        active = false;
        for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
            (*change)->unapply();
        }
        active = true;
    }

    void redo()
    {
        active = false;
        for (const auto &change : changes) {
            change->apply();
        }
        active = true;
    }
};

} // namespace vo::test
