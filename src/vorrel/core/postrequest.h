// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/request.h>

namespace vo {

/// POST of a JSON object, with the content type "application/json".
class VORREL_CORE_EXPORT PostRequest : public Request
{
    Q_OBJECT
public:
    PostRequest(const QNetworkRequest &request, QNetworkAccessManager *manager,
                const QJsonObject &body, QObject *parent = nullptr);

protected:
    QNetworkReply *perform() override;
    [[nodiscard]] int timeout() const override;

private:
    const QByteArray m_body;
};

} // namespace vo
