// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/putrequest.h>

#include <vorrel/core/timelimits_p.h>

#include <QtCore/QIODevice>

namespace vo {

PutRequest::PutRequest(const QNetworkRequest &request, QNetworkAccessManager *manager,
                       QIODevice *body, QObject *parent)
    : Request(QNetworkAccessManager::PutOperation, request, manager, parent)
    , m_body(body)
{ }

PutRequest::~PutRequest() = default;

QNetworkReply *PutRequest::perform()
{
    if (!m_body || !m_body->isReadable()) {
        fail(QStringLiteral("The body is not open for reading"));
        return nullptr;
    }
    // The reply reads from the device whenever it likes, and does not notice its end.
    connect(m_body, &QObject::destroyed, this,
            [this] { fail(QStringLiteral("The body was destroyed")); });
    return networkAccessManager()->put(networkRequest(), m_body);
}

int PutRequest::timeout() const
{
    return timelimits::milliseconds(timelimits::transfer);
}

} // namespace vo

#include "moc_putrequest.cpp"
