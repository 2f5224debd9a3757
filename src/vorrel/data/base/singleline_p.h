// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

namespace vo::data {

/// \p text with a blank in the place of each line break.
[[nodiscard]] QString singleLine(QString text);

} // namespace vo::data
