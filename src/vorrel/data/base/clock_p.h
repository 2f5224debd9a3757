// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QtGlobal>

#include <chrono>
#include <functional>

class QObject;

namespace vo::data {

/// Wall time and long delays. Delays of a second and more go through it, so that tests can step
/// them; shorter ones use QTimer directly.
class VORREL_DATACORE_EXPORT Clock
{
public:
    virtual ~Clock();

    /// Milliseconds since the epoch.
    [[nodiscard]] virtual qint64 currentMSecsSinceEpoch() const;

    /// Calls \p function once after \p delay, unless \p receiver has gone by then.
    virtual void singleShot(std::chrono::milliseconds delay, QObject *receiver,
                            std::function<void()> function);

    static Clock &instance();

    /// Puts \p clock in the place of the system's; null restores that. Not owned.
    static void setInstance(Clock *clock);
};

} // namespace vo::data
