// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/getrequest.h>

namespace vo {

GetRequest::GetRequest(const QNetworkRequest &request, QNetworkAccessManager *manager,
                       QObject *parent)
    : Request(QNetworkAccessManager::GetOperation, request, manager, parent)
{ }

QNetworkReply *GetRequest::perform()
{
    return networkAccessManager()->get(networkRequest());
}

} // namespace vo

#include "moc_getrequest.cpp"
