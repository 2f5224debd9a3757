// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/fakecouch.h"

#include "support/fakereply.h"

#include <QtCore/QIODevice>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QUrlQuery>

namespace vo::test {

namespace {

FakeCouch::Answer json(const QJsonObject &object, int status = 200)
{
    FakeCouch::Answer answer;
    answer.status = status;
    answer.body = QJsonDocument(object).toJson(QJsonDocument::Compact);
    answer.headers.insert("Content-Type", "application/json");
    return answer;
}

FakeCouch::Answer notFound(const QString &reason)
{
    return json({ { QStringLiteral("error"), QStringLiteral("not_found") },
                  { QStringLiteral("reason"), reason } },
                404);
}

QString revisionOf(const QJsonObject &document)
{
    return document.value(QLatin1String("_rev")).toString();
}

// What stands behind the database name: "id" or "_design/name".
QString documentId(const QUrl &url)
{
    QStringList segments;
    const QStringList encoded = url.path(QUrl::FullyEncoded).split(QLatin1Char('/'));
    for (const QString &segment : encoded)
        segments.append(QUrl::fromPercentEncoding(segment.toLatin1()));
    const QString before = segments.value(segments.size() - 2);
    if (before == QLatin1String("_design") || before == QLatin1String("_local"))
        return before + QLatin1Char('/') + segments.last();
    return segments.last();
}

QByteArray verbOf(QNetworkAccessManager::Operation operation, const QNetworkRequest &request)
{
    switch (operation) {
    case QNetworkAccessManager::HeadOperation:
        return "HEAD";
    case QNetworkAccessManager::GetOperation:
        return "GET";
    case QNetworkAccessManager::PutOperation:
        return "PUT";
    case QNetworkAccessManager::PostOperation:
        return "POST";
    case QNetworkAccessManager::DeleteOperation:
        return "DELETE";
    default:
        return request.attribute(QNetworkRequest::CustomVerbAttribute).toByteArray();
    }
}

} // namespace

QString FakeCouch::Call::resource() const
{
    return url.path(QUrl::FullyDecoded).section(QLatin1Char('/'), -1);
}

QJsonObject FakeCouch::Call::json() const
{
    return QJsonDocument::fromJson(body).object();
}

QStringList FakeCouch::Call::keys() const
{
    QStringList keys;
    const QJsonArray array = json().value(QLatin1String("keys")).toArray();
    for (const QJsonValue key : array)
        keys.append(key.toString());
    return keys;
}

FakeCouch::FakeCouch(QObject *parent)
    : QNetworkAccessManager(parent)
{ }

void FakeCouch::store(QJsonObject document)
{
    const QString id = document.value(QLatin1String("_id")).toString();
    if (!document.contains(QLatin1String("_rev")))
        document.insert(QLatin1String("_rev"), QString(QStringLiteral("1-") + id));
    m_deleted.remove(id);
    m_documents.insert(id, document);
}

void FakeCouch::markDeleted(const QString &id)
{
    m_documents.remove(id);
    m_deleted.insert(id);
}

void FakeCouch::failNext(int count, int status)
{
    for (int i = 0; i < count; ++i)
        m_script.append(
            json({ { QStringLiteral("error"), QStringLiteral("made_by_the_test") } }, status));
}

void FakeCouch::breakNext(int count, QNetworkReply::NetworkError error)
{
    Answer answer;
    answer.error = error;
    for (int i = 0; i < count; ++i)
        m_script.append(answer);
}

void FakeCouch::hangNext(int count)
{
    Answer answer;
    answer.hangs = true;
    for (int i = 0; i < count; ++i)
        m_script.append(answer);
}

void FakeCouch::answerNext(const QByteArray &body, int status)
{
    Answer answer;
    answer.status = status;
    answer.body = body;
    m_script.append(answer);
}

void FakeCouch::setResponder(Responder responder)
{
    m_responder = std::move(responder);
}

void FakeCouch::hold()
{
    m_holding = true;
}

void FakeCouch::release()
{
    m_holding = false;
    const QList<QPointer<FakeReply>> replies = std::exchange(m_replies, {});
    for (const QPointer<FakeReply> &reply : replies) {
        if (reply)
            reply->send();
    }
}

int FakeCouch::openCount() const
{
    int count = 0;
    const auto replies = findChildren<FakeReply *>();
    for (const FakeReply *reply : replies)
        count += reply->isRunning() ? 1 : 0;
    return count;
}

QNetworkReply *FakeCouch::createRequest(Operation operation, const QNetworkRequest &request,
                                        QIODevice *outgoingData)
{
    m_calls.append({ verbOf(operation, request), request.url(),
                     outgoingData ? outgoingData->readAll() : QByteArray(), request });
    const Call call = m_calls.last();
    auto *reply = new FakeReply(operation, request, answer(call), this);
    if (m_holding)
        m_replies.append(reply);
    else
        reply->send();
    return reply;
}

FakeCouch::Answer FakeCouch::answer(const Call &call)
{
    if (!m_script.isEmpty())
        return m_script.takeFirst();
    if (m_responder) {
        if (const std::optional<Answer> own = m_responder(call))
            return *own;
    }
    if (call.verb == "POST" && call.resource() == QLatin1String("_all_docs"))
        return bulkAnswer(call);
    if (call.verb == "GET" || call.verb == "HEAD")
        return documentAnswer(call);
    return notFound(QStringLiteral("missing"));
}

FakeCouch::Answer FakeCouch::bulkAnswer(const Call &call) const
{
    const bool withDocuments =
        QUrlQuery(call.url).queryItemValue(QStringLiteral("include_docs")) == QLatin1String("true");
    QJsonArray rows;
    const QStringList keys = call.keys();
    for (const QString &key : keys) {
        QJsonObject one = row(key);
        if (!withDocuments)
            one.remove(QStringLiteral("doc"));
        rows.append(one);
    }
    return json({ { QStringLiteral("total_rows"), int(m_documents.size()) },
                  { QStringLiteral("offset"), QJsonValue::Null },
                  { QStringLiteral("rows"), rows } });
}

QJsonObject FakeCouch::row(const QString &key) const
{
    if (m_deleted.contains(key)) {
        return { { QStringLiteral("id"), key },
                 { QStringLiteral("key"), key },
                 { QStringLiteral("value"),
                   QJsonObject { { QStringLiteral("rev"), QString(QStringLiteral("2-") + key) },
                                 { QStringLiteral("deleted"), true } } },
                 { QStringLiteral("doc"), QJsonValue::Null } };
    }
    const auto found = m_documents.constFind(key);
    if (found == m_documents.cend())
        return { { QStringLiteral("key"), key },
                 { QStringLiteral("error"), QStringLiteral("not_found") } };
    return { { QStringLiteral("id"), key },
             { QStringLiteral("key"), key },
             { QStringLiteral("value"),
               QJsonObject { { QStringLiteral("rev"), revisionOf(*found) } } },
             { QStringLiteral("doc"), *found } };
}

FakeCouch::Answer FakeCouch::documentAnswer(const Call &call) const
{
    const QString id = documentId(call.url);
    if (m_deleted.contains(id))
        return notFound(QStringLiteral("deleted"));
    const auto found = m_documents.constFind(id);
    if (found == m_documents.cend())
        return notFound(QStringLiteral("missing"));
    Answer answer = json(*found);
    answer.headers.insert("ETag", '"' + revisionOf(*found).toLatin1() + '"');
    return answer;
}

} // namespace vo::test

#include "moc_fakecouch.cpp"
