// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>

namespace vo::data {

class Change;

/// What a Context implements to keep the edits of its documents for undo. Documents find it by
/// its interface id; a Context without it simply has no undo.
class VORREL_DATACORE_EXPORT IChangeRecorder
{
public:
    virtual ~IChangeRecorder() = default;

    [[nodiscard]] virtual bool canUndo() const = 0;
    [[nodiscard]] virtual bool canRedo() const = 0;

    /// Takes \p change over. False if it was not kept, and deleted.
    virtual bool recordChange(Change *change) = 0;
    [[nodiscard]] virtual bool changeRecordingActive() const = 0;
    virtual void beginRecordChanges() = 0;
    virtual void endRecordChanges() = 0;
    virtual void rollbackChanges() = 0;
    virtual void clearChanges() = 0;
};

} // namespace vo::data

Q_DECLARE_INTERFACE(vo::data::IChangeRecorder, "vo.tessaro.IChangeRecorder")
