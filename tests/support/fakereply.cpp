// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/fakereply.h"

#include <QtCore/QIODevice>

#include <algorithm>
#include <cstring>

namespace vo::test {

namespace {

// As Qt maps them.
QNetworkReply::NetworkError errorOf(int status)
{
    switch (status) {
    case 401:
        return QNetworkReply::AuthenticationRequiredError;
    case 403:
        return QNetworkReply::ContentAccessDenied;
    case 404:
        return QNetworkReply::ContentNotFoundError;
    case 405:
        return QNetworkReply::ContentOperationNotPermittedError;
    case 409:
        return QNetworkReply::ContentConflictError;
    case 410:
        return QNetworkReply::ContentGoneError;
    case 500:
        return QNetworkReply::InternalServerError;
    case 503:
        return QNetworkReply::ServiceUnavailableError;
    default:
        break;
    }
    if (status < 400)
        return QNetworkReply::NoError;
    return status < 500 ? QNetworkReply::UnknownContentError : QNetworkReply::UnknownServerError;
}

} // namespace

FakeReply::FakeReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
                     FakeCouch::Answer answer, QObject *parent)
    : QNetworkReply(parent)
    , m_answer(std::move(answer))
{
    setOperation(operation);
    setRequest(request);
    setUrl(request.url());
    open(QIODevice::ReadOnly);
}

void FakeReply::send()
{
    if (!m_answer.hangs)
        QMetaObject::invokeMethod(
            this, [this] { arrive(); }, Qt::QueuedConnection);
}

void FakeReply::arrive()
{
    if (isFinished())
        return;
    if (m_answer.error != NoError)
        return end(m_answer.error, QStringLiteral("Network error made by the test"));
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, m_answer.status);
    for (auto header = m_answer.headers.begin(); header != m_answer.headers.end(); ++header)
        setRawHeader(header.key(), header.value());
    Q_EMIT metaDataChanged();
    if (operation() != QNetworkAccessManager::HeadOperation && !m_answer.body.isEmpty()) {
        m_unread = m_answer.body;
        Q_EMIT readyRead();
        Q_EMIT downloadProgress(m_answer.body.size(), m_answer.body.size());
    }
    end(errorOf(m_answer.status), QStringLiteral("HTTP status made by the test"));
}

void FakeReply::end(NetworkError error, const QString &text)
{
    setFinished(true);
    if (error != NoError) {
        setError(error, text);
        Q_EMIT errorOccurred(error);
    }
    Q_EMIT finished();
}

void FakeReply::abort()
{
    if (isFinished())
        return;
    m_unread.clear();
    end(OperationCanceledError, QStringLiteral("Operation canceled"));
}

qint64 FakeReply::bytesAvailable() const
{
    return m_unread.size() + QNetworkReply::bytesAvailable();
}

qint64 FakeReply::readData(char *data, qint64 maximum)
{
    const qint64 size = std::min<qint64>(maximum, m_unread.size());
    std::memcpy(data, m_unread.constData(), size_t(size));
    m_unread.remove(0, int(size));
    return size == 0 && isFinished() ? -1 : size;
}

} // namespace vo::test

#include "moc_fakereply.cpp"
