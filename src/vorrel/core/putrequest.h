// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/request.h>

#include <QtCore/QPointer>

namespace vo {

/// PUT of the content of a device, from its present position to its end. The content type is the
/// caller's, set in the network request.
///
/// The device must be open for reading and stay so until finished(). It is not owned; making it a
/// child of the request is fine.
class VORREL_CORE_EXPORT PutRequest : public Request
{
    Q_OBJECT
public:
    PutRequest(const QNetworkRequest &request, QNetworkAccessManager *manager, QIODevice *body,
               QObject *parent = nullptr);
    ~PutRequest() override;

protected:
    QNetworkReply *perform() override;
    [[nodiscard]] int timeout() const override;

private:
    const QPointer<QIODevice> m_body;
};

} // namespace vo
