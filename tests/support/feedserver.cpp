// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/feedserver.h"

#include "support/literals.h"

#include <QtCore/QUrlQuery>

namespace vo::test {

FeedServer::FeedServer()
{
    setHandler([this](const Message &message) {
        if (message.method() == "POST") {
            ++enquiries;
            return Answer::status(200, R"({"rows":[]})");
        }
        ++connections;
        const QUrlQuery query(QUrl(QString::fromLatin1(message.target())));
        since = query.queryItemValue("since"_s, QUrl::FullyDecoded);
        return feeds.size() > 1 ? feeds.takeFirst() : feeds.constFirst();
    });
}

WireServer::Answer FeedServer::stream(const QByteArray &bytes, const QByteArray &type)
{
    return Answer::raw("HTTP/1.1 200 OK\r\nContent-Type: " + type
                       + "\r\nTransfer-Encoding: chunked\r\n\r\n"
                       + QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n");
}

WireServer::Answer FeedServer::ended(const QByteArray &bytes, const QByteArray &type)
{
    Answer answer = stream(bytes, type);
    answer.bytes += "0\r\n\r\n";
    return answer;
}

void FeedFixture::open(QNetworkAccessManager *with, data::Context::ChangeFeedMonitorType type,
                       const QString &database)
{
    QUrl url = server.url();
    url.setUserInfo("reader:secret"_s);
    context()->setServiceUrl(url);
    context()->setNetworkAccessManager(with);
    context()->setChangeFeedMonitorType(type);
    context()->setDatabase(database);
}

} // namespace vo::test

#include "moc_feedserver.cpp"
