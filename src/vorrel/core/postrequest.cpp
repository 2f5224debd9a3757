// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/postrequest.h>

#include <vorrel/core/timelimits_p.h>

#include <QtCore/QJsonDocument>

namespace vo {

PostRequest::PostRequest(const QNetworkRequest &request, QNetworkAccessManager *manager,
                         const QJsonObject &body, QObject *parent)
    : Request(QNetworkAccessManager::PostOperation, request, manager, parent)
    , m_body(QJsonDocument(body).toJson(QJsonDocument::Compact))
{ }

QNetworkReply *PostRequest::perform()
{
    QNetworkRequest request = networkRequest();
    request.setRawHeader("Content-Type", "application/json");
    return networkAccessManager()->post(request, m_body);
}

int PostRequest::timeout() const
{
    return timelimits::milliseconds(timelimits::answer);
}

} // namespace vo

#include "moc_postrequest.cpp"
