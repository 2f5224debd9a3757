// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/devserver.h"

#include <vorrel/core/couchurl.h>
#include <vorrel/core/preparedrequest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QUuid>
#include <QtNetwork/QNetworkReply>
#include <QtTest/QSignalSpy>

#include <memory>

namespace vo::test {

namespace {
constexpr int patience = 30000; // ms; the machine may be busy
}

DevServer::DevServer(const QString &user, const QString &password)
    : m_external(QUrl(qEnvironmentVariable("VORREL_TEST_URL")))
    , m_user(user)
    , m_password(password)
    , m_database(QStringLiteral("test-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
    , m_serviceUrl(m_external)
{ }

DevServer::~DevServer()
{
    if (isOwnProcess()) {
        kill();
    } else {
        static_cast<void>(request("DELETE", QString()));
    }
}

bool DevServer::start()
{
    if (isOwnProcess()) {
        return startProcess();
    }
    const int status = request("PUT", QString());
    return status == 201 || status == 202;
}

bool DevServer::startProcess()
{
    const QString program =
        qEnvironmentVariable("VORREL_SOURCE_DIR") + QStringLiteral("/devserver/server.js");
    QStringList arguments { program,
                            QStringLiteral("--port"),
                            QString::number(m_serviceUrl.port(0)),
                            QStringLiteral("--db"),
                            m_database,
                            QStringLiteral("--disk"),
                            m_disk.path() };
    if (!m_user.isEmpty()) {
        arguments << QStringLiteral("--user") << m_user << QStringLiteral("--pass") << m_password;
    }
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QStringLiteral("node"), arguments);
    QByteArray output;
    while (!output.contains('\n') && m_process.waitForReadyRead(patience)) {
        output += m_process.readAll();
    }
    const QByteArray ready = "READY ";
    if (!output.startsWith(ready)) {
        m_error = QStringLiteral("No server: %1 %2")
                      .arg(m_process.errorString(), QString::fromUtf8(output));
        return false;
    }
    m_serviceUrl = QUrl(QString::fromUtf8(output.mid(ready.size()).trimmed()));
    m_serviceUrl.setPath(QString());
    m_serviceUrl.setUserName(m_user);
    m_serviceUrl.setPassword(m_password);
    return true;
}

void DevServer::kill()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(patience);
    }
}

bool DevServer::store(const QList<QJsonObject> &documents)
{
    QJsonArray array;
    for (const QJsonObject &document : documents) {
        array.append(document);
    }
    const QJsonObject body { { QStringLiteral("docs"), array } };
    return request("POST", QStringLiteral("_bulk_docs"), QJsonDocument(body).toJson()) == 201;
}

QString DevServer::put(const QJsonObject &document)
{
    QByteArray answer;
    static_cast<void>(request("PUT", document.value(QLatin1String("_id")).toString(),
                              QJsonDocument(document).toJson(), &answer));
    return QJsonDocument::fromJson(answer).object().value(QLatin1String("rev")).toString();
}

int DevServer::request(const QByteArray &verb, const QString &path, const QByteArray &body,
                       QByteArray *answer)
{
    const QUrl url = path.isEmpty() ? CouchUrl::databaseUrl(m_serviceUrl, m_database)
                                    : CouchUrl::resource(m_serviceUrl, m_database, path);
    QNetworkRequest plain(url);
    plain.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    // As for a PUT: without delay, whatever the verb.
    const PreparedRequest request(QNetworkAccessManager::PutOperation, plain);
    const std::unique_ptr<QNetworkReply> reply(
        m_manager.sendCustomRequest(request.networkRequest(), verb, body));
    QSignalSpy finished(reply.get(), &QNetworkReply::finished);
    finished.wait(patience);
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (answer) {
        *answer = reply->readAll();
    }
    m_error =
        QStringLiteral("%1 %2: status %3, %4")
            .arg(QString::fromLatin1(verb), path, QString::number(status), reply->errorString());
    return status;
}

} // namespace vo::test
