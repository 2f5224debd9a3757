// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/nullchangefeedmonitor.h>

namespace vo::data {

NullChangeFeedMonitor::NullChangeFeedMonitor(const QString &database, Context *context)
    : ChangeFeedMonitor(database, context)
{ }

void NullChangeFeedMonitor::registerDocument(LinkedDocument * /*document*/) { }

void NullChangeFeedMonitor::reportError(Context * /*context*/) { }

} // namespace vo::data

#include "moc_nullchangefeedmonitor.cpp"
