// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/revisionfetchrequest.h>

namespace vo::data {

RevisionFetchRequest::RevisionFetchRequest(const QNetworkRequest &request,
                                           QNetworkAccessManager *manager, const QJsonObject &body,
                                           const QStringList &ids, QObject *parent)
    : PostRequest(request, manager, body, parent)
    , m_ids(ids)
{ }

} // namespace vo::data

#include "moc_revisionfetchrequest.cpp"
