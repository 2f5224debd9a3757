// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/changefeedmonitor.h>

namespace vo::data {

/// Watches nothing: edits of others stay unknown.
class VORREL_DATACORE_EXPORT NullChangeFeedMonitor : public ChangeFeedMonitor
{
    Q_OBJECT
public:
    NullChangeFeedMonitor(const QString &database, Context *context);

    void registerDocument(LinkedDocument *document) override;
    void reportError(Context *context) override;
};

} // namespace vo::data
