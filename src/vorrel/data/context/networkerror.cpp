// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/networkerror.h>

#include <vorrel/data/base/textids_p.h>

namespace vo::data {

namespace {

int codeOf(int statusCode, QNetworkReply::NetworkError error)
{
    constexpr int firstStatusOfErrors = 400;
    constexpr int everythingElse = 999;
    if (statusCode >= firstStatusOfErrors) {
        return statusCode;
    }
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::TimeoutError:
    case QNetworkReply::SslHandshakeFailedError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::BackgroundRequestNotAllowedError:
    case QNetworkReply::UnknownNetworkError:
        return error;
    default:
        return everythingElse;
    }
}

} // namespace

NetworkError::NetworkError(Severity severity, int statusCode, QNetworkReply::NetworkError error,
                           QObject *parent)
    : ContextError(severity, parent)
    , m_code(codeOf(statusCode, error))
{ }

NetworkError::~NetworkError() = default;

int NetworkError::errorCode() const
{
    return m_code;
}

QString NetworkError::errorString() const
{
    const QByteArray id = textids::networkErrorPrefix + QByteArray::number(m_code);
    return qtTrId(id.constData());
}

} // namespace vo::data

#include "moc_networkerror.cpp"
