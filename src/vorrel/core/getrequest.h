// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/request.h>

namespace vo {

/// GET of a resource.
class VORREL_CORE_EXPORT GetRequest : public Request
{
    Q_OBJECT
public:
    GetRequest(const QNetworkRequest &request, QNetworkAccessManager *manager,
               QObject *parent = nullptr);

protected:
    QNetworkReply *perform() override;
};

} // namespace vo
