// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>

namespace vo::data {

/// Emits canCommitChanged if \p action changed what canCommit() of \p owner says, unless it has
/// destroyed it.
template <typename Owner, typename Action>
void tellOfCommitAfter(Owner *owner, Action action)
{
    const QPointer<Owner> self(owner);
    const bool couldCommit = owner->canCommit();
    action();
    if (self && owner->canCommit() != couldCommit) {
        Q_EMIT owner->canCommitChanged();
    }
}

} // namespace vo::data
