// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>

#include <functional>
#include <optional>

namespace vo::test {

/// A network access manager that is the database: it answers from memory, without a socket, in a
/// later turn of the event loop.
///
/// It knows `POST _all_docs` with keys, always with the documents, GET and HEAD of documents, and
/// PUT of documents and attachments, with revisions and stubs, and the views of the design document
/// in database/, in any order; all else is a 404. The database name in the URL is not looked at.
/// Faults are put in a queue, one for each request to come; requests beyond them go to the
/// responder, if there is one, then to the documents.
class FakeCouch : public QNetworkAccessManager
{
public:
    /// What was asked.
    struct Call
    {
        QByteArray verb;
        QUrl url;
        QByteArray body;
        QNetworkRequest request;

        /// The last segment of the path, such as "_all_docs".
        [[nodiscard]] QString resource() const;
        [[nodiscard]] QJsonObject json() const;
        /// The ids of a bulk request.
        [[nodiscard]] QStringList keys() const;
    };

    /// What is answered. With an \a error other than NoError nothing of the rest arrives; an
    /// answer that \a hangs never comes.
    struct Answer
    {
        int status = 200;
        QByteArray body;
        QMap<QByteArray, QByteArray> headers;
        QNetworkReply::NetworkError error = QNetworkReply::NoError;
        bool hangs = false;
    };
    using Responder = std::function<std::optional<Answer>(const Call &)>;

    using QNetworkAccessManager::QNetworkAccessManager;

    /// Stores \p document under its "_id"; a missing "_rev" becomes "1-" and the id.
    void store(QJsonObject document);
    /// Empty if there is none.
    [[nodiscard]] QJsonObject document(const QString &id) const { return m_documents.value(id); }
    /// Leaves a tombstone in the place of the document.
    void markDeleted(const QString &id);

    /// The next \p count requests end with this HTTP status or network error, or never.
    void failNext(int count, int status) { script(count, { status, "{}", {} }); }
    void breakNext(int count, QNetworkReply::NetworkError error)
    {
        script(count, { 0, {}, {}, error });
    }
    void hangNext(int count) { script(count, { 0, {}, {}, QNetworkReply::NoError, true }); }
    /// The next request is answered with \p body as it stands.
    void answerNext(const QByteArray &body, int status = 200) { script(1, { status, body, {} }); }

    /// Answers instead of the documents; nothing returned leaves it to them.
    void setResponder(Responder responder) { m_responder = std::move(responder); }

    /// Keeps all answers back until release(), which sends them in the order of the requests.
    void hold() { m_holding = true; }
    void release();

    [[nodiscard]] const QList<Call> &calls() const { return m_calls; }
    /// Requests that have been neither answered nor cancelled.
    [[nodiscard]] int openCount() const;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *outgoingData) override;

private:
    void script(int count, const Answer &answer);
    [[nodiscard]] Answer answer(const Call &call);
    [[nodiscard]] Answer put(const Call &call);
    [[nodiscard]] Answer view(const Call &call) const;
    [[nodiscard]] QJsonObject row(const QString &key) const;

    QHash<QString, QJsonObject> m_documents;
    QList<Answer> m_script;
    Responder m_responder;
    bool m_holding = false;
    QList<Call> m_calls;
};

} // namespace vo::test
