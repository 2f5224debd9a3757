// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/headrequest.h>

namespace vo {

HeadRequest::HeadRequest(const QNetworkRequest &request, QNetworkAccessManager *manager,
                         QObject *parent)
    : Request(QNetworkAccessManager::HeadOperation, request, manager, parent)
{ }

QNetworkReply *HeadRequest::perform()
{
    return networkAccessManager()->head(networkRequest());
}

} // namespace vo

#include "moc_headrequest.cpp"
