// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

/// Takes \p value and emits \p changed. False if a slot has destroyed \p field.
template <typename Field, typename Value, typename Signal>
[[nodiscard]] bool takeValue(Field *field, Value &stored, const Value &value, Signal changed)
{
    const QPointer<Field> self(field);
    stored = value;
    Q_EMIT(field->*changed)();
    return self;
}

/// The bounds may stand the wrong way round.
template <typename Number>
[[nodiscard]] Number bounded(Number value, Number oneEnd, Number otherEnd)
{
    const auto [lower, upper] = std::minmax(oneEnd, otherEnd);
    return std::clamp(value, lower, upper);
}

} // namespace vo::data
