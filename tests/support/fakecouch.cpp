// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/fakecouch.h"

#include "support/literals.h"

#include <QtCore/QJsonArray>
#include <QtCore/QUrlQuery>

#include <algorithm>
#include <cstring>

namespace vo::test {

namespace {

// As Qt maps them.
QNetworkReply::NetworkError errorOf(int status)
{
    static const QHash<int, QNetworkReply::NetworkError> errors {
        { 401, QNetworkReply::AuthenticationRequiredError },
        { 403, QNetworkReply::ContentAccessDenied },
        { 404, QNetworkReply::ContentNotFoundError },
        { 409, QNetworkReply::ContentConflictError },
        { 500, QNetworkReply::InternalServerError },
        { 503, QNetworkReply::ServiceUnavailableError },
    };
    const auto other =
        status < 500 ? QNetworkReply::UnknownContentError : QNetworkReply::UnknownServerError;
    return errors.value(status, status < 400 ? QNetworkReply::NoError : other);
}

FakeCouch::Answer json(const QJsonObject &object, int status = 200)
{
    return { status,
             QJsonDocument(object).toJson(QJsonDocument::Compact),
             { { "Content-Type", "application/json" } } };
}

FakeCouch::Answer refusal(int status, const QString &reason)
{
    return json({ { "error"_s, "refused"_s }, { "reason"_s, reason } }, status);
}

// The entries of `_attachments` as the database keeps them. Nothing if a stub names what it lacks.
std::optional<QJsonObject> storedAttachments(const QJsonObject &sent, const QJsonObject &former)
{
    QJsonObject stored;
    for (auto entry = sent.begin(); entry != sent.end(); ++entry) {
        const bool isStub = entry.value().toObject().contains("stub"_s);
        if (isStub && !former.contains(entry.key())) {
            return std::nullopt;
        }
        stored.insert(entry.key(), isStub ? former.value(entry.key()) : entry.value());
    }
    return stored;
}

} // namespace

/// Ends as the replies of Qt do: error first, then finished; at once when aborted.
class FakeReply : public QNetworkReply
{
public:
    FakeReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
              FakeCouch::Answer answer, QObject *parent)
        : QNetworkReply(parent)
        , m_answer(std::move(answer))
    {
        setOperation(operation);
        setRequest(request);
        setUrl(request.url());
        open(QIODevice::ReadOnly);
    }

    /// Lets the answer arrive in the next turn of the event loop, unless it hangs.
    void send()
    {
        if (!m_answer.hangs) {
            QMetaObject::invokeMethod(
                this, [this] { arrive(); }, Qt::QueuedConnection);
        }
    }

    void abort() override
    {
        if (isRunning()) {
            end(OperationCanceledError);
        }
    }

    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] qint64 bytesAvailable() const override
    {
        return m_unread.size() + QNetworkReply::bytesAvailable();
    }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        const qint64 size = std::min<qint64>(maximum, m_unread.size());
        std::memcpy(data, m_unread.constData(), size_t(size));
        m_unread.remove(0, int(size));
        return size == 0 && isFinished() ? -1 : size;
    }

private:
    void arrive()
    {
        if (isFinished()) {
            return;
        }
        if (m_answer.error != NoError) {
            return end(m_answer.error);
        }
        setAttribute(QNetworkRequest::HttpStatusCodeAttribute, m_answer.status);
        for (auto header = m_answer.headers.begin(); header != m_answer.headers.end(); ++header) {
            setRawHeader(header.key(), header.value());
        }
        Q_EMIT metaDataChanged();
        if (operation() != QNetworkAccessManager::HeadOperation && !m_answer.body.isEmpty()) {
            m_unread = m_answer.body;
            Q_EMIT readyRead();
            Q_EMIT downloadProgress(m_answer.body.size(), m_answer.body.size());
        }
        end(errorOf(m_answer.status));
    }

    void end(NetworkError error)
    {
        setFinished(true);
        if (error != NoError) {
            setError(error, "made by the test"_s);
            Q_EMIT errorOccurred(error);
        }
        Q_EMIT finished();
    }

    const FakeCouch::Answer m_answer;
    QByteArray m_unread;
};

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
    return json().value("keys"_s).toVariant().toStringList();
}

void FakeCouch::store(QJsonObject document)
{
    const QString id = document.value("_id"_s).toString();
    if (!document.contains("_rev"_s)) {
        document.insert("_rev"_s, "1-"_s + id);
    }
    m_documents.insert(id, document);
}

void FakeCouch::markDeleted(const QString &id)
{
    store({ { "_id"_s, id }, { "_rev"_s, "2-"_s + id }, { "_deleted"_s, true } });
}

void FakeCouch::script(int count, const Answer &answer)
{
    std::fill_n(std::back_inserter(m_script), count, answer);
}

void FakeCouch::release()
{
    m_holding = false;
    const auto replies = findChildren<QNetworkReply *>();
    for (QNetworkReply *reply : replies) {
        static_cast<FakeReply *>(reply)->send(); // once more makes no difference
    }
}

int FakeCouch::openCount() const
{
    const auto replies = findChildren<QNetworkReply *>();
    return int(std::count_if(replies.begin(), replies.end(),
                             [](const QNetworkReply *reply) { return reply->isRunning(); }));
}

QNetworkReply *FakeCouch::createRequest(Operation operation, const QNetworkRequest &request,
                                        QIODevice *outgoingData)
{
    static const QByteArrayList verbs { "", "HEAD", "GET", "PUT", "POST", "DELETE" };
    const QByteArray custom = request.attribute(QNetworkRequest::CustomVerbAttribute).toByteArray();
    const Call call { verbs.value(operation, custom), request.url(),
                      outgoingData ? outgoingData->readAll() : QByteArray(), request };
    m_calls << call;
    auto *reply = new FakeReply(operation, request, answer(call), this);
    if (!m_holding) {
        reply->send();
    }
    return reply;
}

FakeCouch::Answer FakeCouch::answer(const Call &call)
{
    if (!m_script.isEmpty()) {
        return m_script.takeFirst();
    }
    if (const std::optional<Answer> own = m_responder ? m_responder(call) : std::nullopt) {
        return *own;
    }
    if (call.verb == "POST" && call.resource() == "_all_docs"_s) {
        QJsonArray rows;
        const QStringList keys = call.keys();
        for (const QString &key : keys) {
            rows << row(key);
        }
        return json({ { "total_rows"_s, int(m_documents.size()) }, { "rows"_s, rows } });
    }
    if (call.verb == "PUT") {
        return put(call);
    }
    if (call.url.path().contains("/_view/"_s)) {
        return view(call);
    }
    const QString name = call.url.path(QUrl::FullyEncoded).section(QLatin1Char('/'), -1);
    const QJsonObject document = m_documents.value(QUrl::fromPercentEncoding(name.toLatin1()));
    const bool isRead = call.verb == "GET" || call.verb == "HEAD";
    if (!isRead || document.isEmpty() || document.contains("_deleted"_s)) {
        return refusal(404, "missing"_s);
    }
    Answer answer = json(document);
    answer.headers.insert("ETag", '"' + document.value("_rev"_s).toString().toLatin1() + '"');
    return answer;
}

FakeCouch::Answer FakeCouch::put(const Call &call)
{
    const QStringList path = call.url.path(QUrl::FullyEncoded).split(QLatin1Char('/'));
    const QString id = QUrl::fromPercentEncoding(path.value(2).toLatin1());
    const QJsonObject former = m_documents.value(id);
    const QString revision = former.value("_rev"_s).toString();
    if (QString::fromLatin1(call.request.rawHeader("If-Match")) != revision) {
        return refusal(409, "Document update conflict."_s);
    }
    const QJsonObject formerAttachments = former.value("_attachments"_s).toObject();
    QJsonObject document = former;
    QJsonObject attachments = formerAttachments;
    if (path.size() > 3) {
        attachments.insert(
            path.value(3),
            QJsonObject { { "data"_s, QString::fromLatin1(call.body.toBase64()) },
                          { "content_type"_s,
                            QString::fromLatin1(call.request.rawHeader("Content-Type")) } });
    } else {
        document = call.json();
        const auto stored =
            storedAttachments(document.value("_attachments"_s).toObject(), formerAttachments);
        if (!stored) {
            return refusal(412, "Invalid attachment stub"_s);
        }
        attachments = *stored;
    }
    const int generation = revision.section(QLatin1Char('-'), 0, 0).toInt() + 1;
    document.insert("_id"_s, id);
    document.insert("_rev"_s, "%1-%2"_s.arg(generation).arg(id));
    document.insert("_attachments"_s, attachments);
    store(document);
    return json({ { "ok"_s, true }, { "id"_s, id }, { "rev"_s, document.value("_rev"_s) } }, 201);
}

FakeCouch::Answer FakeCouch::view(const Call &call) const
{
    const QUrlQuery query(call.url);
    const auto parameter = [&query](const QString &name) {
        const QByteArray text = query.queryItemValue(name, QUrl::FullyDecoded).toUtf8();
        return QJsonDocument::fromJson('[' + text + ']').array().at(0);
    };
    const QString type = parameter("startkey"_s).toArray().at(0).toString();
    const QStringList keys = call.keys() << parameter("key"_s).toString();
    QJsonArray rows;
    for (const QJsonObject &document : m_documents) {
        const QJsonValue id = document.value("_id"_s);
        const QString ownType = document.value("type"_s).toString() + ":"_s;
        if (!type.isEmpty() && ownType.startsWith(type + ":"_s)) {
            rows << QJsonObject { { "id"_s, id } };
        }
        for (const QJsonValue &reference : document.value("references"_s).toArray()) {
            if (keys.contains(reference.toString())) {
                rows << QJsonObject { { "id"_s, id }, { "key"_s, reference } };
            }
        }
    }
    return json({ { "rows"_s, rows } });
}

QJsonObject FakeCouch::row(const QString &key) const
{
    const QJsonObject document = m_documents.value(key);
    if (document.isEmpty()) {
        return { { "key"_s, key }, { "error"_s, "not_found"_s } };
    }
    const QJsonValue deleted = document.value("_deleted"_s); // undefined is left out below
    return { { "id"_s, key },
             { "key"_s, key },
             { "value"_s,
               QJsonObject { { "rev"_s, document.value("_rev"_s) }, { "deleted"_s, deleted } } },
             { "doc"_s, deleted.toBool() ? QJsonValue() : document } };
}

} // namespace vo::test
