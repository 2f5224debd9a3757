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
    const QUrl url = request.url();
    const bool isHttp =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!url.isValid() || !isHttp || url.host().isEmpty())
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

void setIfMissing(QNetworkRequest &request, const QByteArray &name, const QByteArray &value)
{
    if (!request.hasRawHeader(name))
        request.setRawHeader(name, value);
}

// Qt 6 gives up on an answer that unpacks to more than this and to more than 40 times its size.
// Qt 5 has no such check, and unpacks all that has come before anyone can look at it: 4 MB from
// the wire can take 4 GB of memory. So it must not ask for compression.
void limitDecompression(QNetworkRequest &request)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    setIfMissing(request, "Accept-Encoding", "identity");
#else
    request.setDecompressedSafetyCheckThreshold(qint64(10) * 1024 * 1024);
#endif
}

// Qt sends a body in pieces: Qt 5 the head first, Qt 6 all that is beyond 16 KiB in a second one.
// The kernel holds a small piece back until the server's has acknowledged the one before, which it
// delays by some 40 ms. The interim answer that this asks for carries the acknowledgement, and the
// exchange takes less than a millisecond. A server that does not know the field ignores it; Qt
// does not wait for the interim answer.
void hurryBody(QNetworkRequest &request)
{
    setIfMissing(request, "Expect", "100-continue");
}

} // namespace

PreparedRequest::PreparedRequest(QNetworkAccessManager::Operation operation,
                                 const QNetworkRequest &request)
    : m_request(request)
    , m_errorString(findFault(request))
{
    moveCredentials(m_request);
    setIfMissing(m_request, "Accept", "application/json");
    limitDecompression(m_request);
    if (operation == QNetworkAccessManager::PutOperation
        || operation == QNetworkAccessManager::PostOperation)
        hurryBody(m_request);
    m_request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                           operation == QNetworkAccessManager::GetOperation
                               ? QNetworkRequest::SameOriginRedirectPolicy
                               : QNetworkRequest::ManualRedirectPolicy);
    // Qt 5 never asks for HTTP/2; one protocol on both keeps connections and faults alike.
    m_request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
}

} // namespace vo
