// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/preparedrequest.h>

#include <QtCore/QUrl>

#include <algorithm>

namespace vo {

namespace {

bool hasControlCharacter(const QByteArray &text)
{
    return std::any_of(text.begin(), text.end(), [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return code < 0x20 || code == 0x7f;
    });
}

// Qt sends header fields as they are, so a line break in one would begin another.
QString findFault(const QNetworkRequest &request)
{
    const QString scheme = request.url().scheme();
    if (!request.url().isValid()
        || (scheme != QLatin1String("http") && scheme != QLatin1String("https")))
        return QStringLiteral("The URL is not a valid http or https URL");
    const QList<QByteArray> names = request.rawHeaderList();
    for (const QByteArray &name : names) {
        if (hasControlCharacter(name))
            return QStringLiteral("Control character in the name of a header field");
        if (hasControlCharacter(request.rawHeader(name)))
            return QStringLiteral("Control character in header field %1")
                .arg(QString::fromLatin1(name));
    }
    return QString();
}

void moveCredentials(QNetworkRequest &request)
{
    QUrl url = request.url();
    if (url.userInfo().isEmpty())
        return;
    if (!request.hasRawHeader("Authorization")) {
        const QString credentials =
            url.userName(QUrl::FullyDecoded) + QLatin1Char(':') + url.password(QUrl::FullyDecoded);
        request.setRawHeader("Authorization", "Basic " + credentials.toUtf8().toBase64());
    }
    url.setUserInfo(QString());
    request.setUrl(url);
}

} // namespace

PreparedRequest::PreparedRequest(QNetworkAccessManager::Operation operation,
                                 const QNetworkRequest &request)
    : m_request(request)
{
    m_errorString = findFault(m_request);
    moveCredentials(m_request);
    if (!m_request.hasRawHeader("Accept"))
        m_request.setRawHeader("Accept", "application/json");
    m_request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                           operation == QNetworkAccessManager::GetOperation
                               ? QNetworkRequest::SameOriginRedirectPolicy
                               : QNetworkRequest::ManualRedirectPolicy);
    // Qt 5 never asks for HTTP/2; one protocol on both keeps connections and faults alike.
    m_request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
}

} // namespace vo
