// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/devserver.h"
#include "support/graph.h"

#include <vorrel/data/context/context.h>

namespace vo::test {

/// A database on a real server, and a Context on it that says what it asks for.
class DevSite
{
    /// Notes which documents each bulk request asks for.
    struct NotingManager : QNetworkAccessManager
    {
        QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                     QIODevice *body) override
        {
            if (operation == PostOperation) {
                const QByteArray json = body->peek(body->bytesAvailable());
                const QJsonObject object = QJsonDocument::fromJson(json).object();
                batches << object.value("keys"_s).toVariant().toStringList();
            }
            return QNetworkAccessManager::createRequest(operation, request, body);
        }
        QList<QStringList> batches;
    };
    NotingManager m_manager;

public:
    explicit DevSite(const QString &user = QString(), const QString &password = QString())
        : server(user, password)
    {
        QObject::connect(&context, &data::Context::documentNodeAdded,
                         [this](const QString &id) { order << id; });
    }

    /// Stores a tag for each document of \p graph, and opens the database. False with
    /// server.errorString() if that fails.
    [[nodiscard]] bool open(const Graph &graph)
    {
        QList<QJsonObject> documents;
        for (auto it = graph.begin(); it != graph.end(); ++it) {
            const QJsonArray references = QJsonArray::fromStringList(it.value());
            documents << QJsonObject { { "_id"_s, it.key() },
                                       { "type"_s, "tag"_s },
                                       { "references"_s, references } };
        }
        if (!server.start() || !server.store(documents)) {
            return false;
        }
        context.setServiceUrl(server.serviceUrl());
        context.setNetworkAccessManager(&m_manager);
        context.setChangeFeedMonitorType(monitorType);
        context.setDatabase(server.database());
        return true;
    }

    DevServer server;
    data::Context context;
    data::Context::ChangeFeedMonitorType monitorType = data::Context::NullMonitor;
    QStringList order; // of the nodes that came
    const QList<QStringList> &batches = m_manager.batches;
};

} // namespace vo::test
