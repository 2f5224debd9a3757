// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>

namespace vo::data {

/// Emits two signals; a slot of the first may destroy \p sender.
template <typename Sender, typename FirstSignal, typename SecondSignal>
void emitBoth(Sender *sender, FirstSignal first, SecondSignal second)
{
    const QPointer<Sender> self(sender);
    Q_EMIT(sender->*first)();
    if (self) {
        Q_EMIT(sender->*second)();
    }
}

/// The body of a setter of a criterion: takes a value that differs, then emits two signals.
template <typename Criterion, typename Value, typename FirstSignal, typename SecondSignal>
void configure(Criterion *criterion, Value &field, const Value &value, FirstSignal first,
               SecondSignal second)
{
    if (field != value) {
        field = value;
        emitBoth(criterion, first, second);
    }
}

} // namespace vo::data
