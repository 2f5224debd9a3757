// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/contextfixture.h"
#include "support/logcapture.h"
#include "support/manualclock.h"
#include "support/wireserver.h"

namespace vo::test {

/// A server whose change feed follows a script. Requests for revisions find no document.
class FeedServer : public WireServer
{
    Q_OBJECT
public:
    FeedServer();

    /// Bytes of a feed, in a chunk of their own, and no end.
    static Answer stream(const QByteArray &bytes, const QByteArray &type = "application/json");

    /// The same, with its end.
    static Answer ended(const QByteArray &bytes, const QByteArray &type = "application/json");

    QList<Answer> feeds; // one for each connection; the last one stays
    QString since;       // what was asked for last
    int connections = 0; // for the feed
    int enquiries = 0;   // for revisions
};

/// A Context on a FeedServer, with a password.
class FeedFixture : public ContextFixture
{
public:
    void open(QNetworkAccessManager *with, data::Context::ChangeFeedMonitorType type,
              const QString &database = QStringLiteral("followed"));

    ManualClock clock;
    LogCapture log;
    FeedServer server;
    QNetworkAccessManager manager;
};

} // namespace vo::test
