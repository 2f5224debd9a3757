// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/contextfixture.h"
#include "support/manualclock.h"

#include <vorrel/data/changefeed/basechangefeedmonitor.h>

namespace vo::test {

/// A monitor that gets its records from the test, and notes what it says: "a:2-x" for a new
/// revision, "new a" for a new document.
class TestMonitor : public data::BaseChangeFeedMonitor
{
    Q_OBJECT
public:
    TestMonitor(const QString &database, data::Context *context);

    void reportError(data::Context * /*context*/) override { }
    void handle(const QString &record);
    void handle(const QString &id, const QString &revision);

    QStringList log;
};

/// A Context that a TestMonitor informs.
class RecordFixture : public ContextFixture
{
public:
    RecordFixture();

    /// Calls a slot that is not public, and lets what follows from it happen.
    void call(const char *slot) const;

    ManualClock clock;
    TestMonitor *monitor = nullptr;
};

} // namespace vo::test
