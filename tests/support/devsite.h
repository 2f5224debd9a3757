// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/devserver.h"
#include "support/graph.h"

#include <vorrel/data/context/context.h>

#include <QtNetwork/QNetworkAccessManager>

namespace vo::test {

/// A database on a real server, and a Context on it that says what it asks for.
class DevSite
{
public:
    explicit DevSite(const QString &user = QString(), const QString &password = QString());

    /// Stores a tag for each document of \p graph, and opens the database. False with
    /// server.errorString() if that fails.
    [[nodiscard]] bool open(const Graph &graph);

private:
    /// Notes which documents each bulk request asks for.
    class NotingManager : public QNetworkAccessManager
    {
    public:
        QList<QStringList> batches;

    protected:
        QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                     QIODevice *body) override;
    };

    NotingManager m_manager;

public:
    DevServer server;
    data::Context context;
    data::Context::ChangeFeedMonitorType monitorType = data::Context::NullMonitor;
    QStringList order; // of the nodes that came
    const QList<QStringList> &batches = m_manager.batches;
};

} // namespace vo::test
