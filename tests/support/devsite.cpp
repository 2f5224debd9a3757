// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/devsite.h"

#include "support/literals.h"

#include <QtCore/QIODevice>
#include <QtCore/QJsonArray>

namespace vo::test {

DevSite::DevSite(const QString &user, const QString &password)
    : server(user, password)
{
    QObject::connect(&context, &data::Context::documentNodeAdded,
                     [this](const QString &id) { order << id; });
}

bool DevSite::open(const Graph &graph)
{
    QList<QJsonObject> documents;
    for (auto it = graph.begin(); it != graph.end(); ++it) {
        documents << QJsonObject { { "_id"_s, it.key() },
                                   { "type"_s, "tag"_s },
                                   { "references"_s, QJsonArray::fromStringList(it.value()) } };
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

QNetworkReply *DevSite::NotingManager::createRequest(Operation operation,
                                                     const QNetworkRequest &request,
                                                     QIODevice *body)
{
    if (operation == PostOperation) {
        const QByteArray json = body->peek(body->bytesAvailable());
        batches
            << QJsonDocument::fromJson(json).object().value("keys"_s).toVariant().toStringList();
    }
    return QNetworkAccessManager::createRequest(operation, request, body);
}

} // namespace vo::test
