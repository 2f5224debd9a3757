// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>

namespace vo::test {

/// Plays a life in which a Context, its queue, its incubator, requests and documents emit each of
/// their signals at least once, and destroys the Context inside emission number \p emission,
/// counted from 0, of the signal \p signal of the class \p senderClass. False if it lived on.
[[nodiscard]] bool diesInSlot(const QByteArray &senderClass, const QByteArray &signal,
                              int emission);

} // namespace vo::test
