// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/cannedserver.h"

#include "support/sampledocuments.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vo::benchmark {

namespace {

bool sendAll(int connection, const QByteArray &bytes)
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const auto count = send(connection, bytes.constData() + sent,
                                std::size_t(bytes.size() - sent), MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        sent += count;
    }
    return true;
}

// Appends what has arrived; false at the end of the connection.
bool receive(int connection, QByteArray &buffer)
{
    char chunk[65536];
    const auto count = recv(connection, chunk, sizeof chunk, 0);
    if (count > 0) {
        buffer.append(chunk, int(count));
    }
    return count > 0;
}

int contentLength(const QByteArray &head)
{
    const QByteArray key = "\r\ncontent-length:";
    const auto at = head.indexOf(key);
    return at < 0 ? 0
                  : head.mid(at + key.size(), head.indexOf("\r\n", at + 2) - at - key.size())
                        .trimmed()
                        .toInt();
}

} // namespace

CannedServer::CannedServer(Handler handler, QByteArray status)
    : m_handler(std::move(handler))
    , m_status(std::move(status))
    , m_socket(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (bind(m_socket, generic, size) != 0 || listen(m_socket, 16) != 0
        || getsockname(m_socket, generic, &size) != 0) {
        qFatal("The benchmark server cannot listen");
    }
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { acceptConnections(); });
}

CannedServer::~CannedServer()
{
    shutdown(m_socket, SHUT_RDWR);
    m_thread.join();
    close(m_socket);
}

QUrl CannedServer::url() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_port));
}

void CannedServer::acceptConnections() const
{
    for (;;) {
        const int connection = accept(m_socket, nullptr, nullptr);
        if (connection < 0) {
            return;
        }
        // It ends with the client, which is in the same program.
        std::thread([this, connection] { serve(connection); }).detach();
    }
}

void CannedServer::serve(int connection) const
{
    const int on = 1;
    setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    QByteArray buffer;
    for (;;) {
        auto end = buffer.indexOf("\r\n\r\n");
        if (end < 0) {
            if (!receive(connection, buffer)) {
                break;
            }
            continue;
        }
        end += 4;
        const QByteArray head = buffer.left(end).toLower();
        if (head.contains("expect: 100-continue")) {
            sendAll(connection, "HTTP/1.1 100 Continue\r\n\r\n");
        }
        const int size = contentLength(head);
        while (buffer.size() < end + size && receive(connection, buffer)) { }
        const QByteArray answer = m_handler(buffer.mid(end, size));
        buffer.remove(0, end + size);
        if (!sendAll(connection,
                     "HTTP/1.1 " + m_status
                         + "\r\nContent-Type: application/json\r\nContent-Length: "
                         + QByteArray::number(answer.size()) + "\r\n\r\n" + answer)) {
            break;
        }
    }
    close(connection);
}

QByteArray allDocsAnswer(const QByteArray &request)
{
    const QJsonArray keys =
        QJsonDocument::fromJson(request).object().value(QLatin1String("keys")).toArray();
    QByteArray answer = "{\"total_rows\":100000,\"offset\":0,\"rows\":[\r\n";
    for (const QJsonValue &value : keys) {
        const QByteArray id = value.toString().toLatin1();
        const int number = id.mid(id.lastIndexOf('.') + 1).toInt();
        answer += answer.endsWith("}}") ? ",\r\n" : "";
        answer += "{\"id\":\"" + id + "\",\"key\":\"" + id
            + "\",\"value\":{\"rev\":\"3-967a00dff5e02add41819138abb3284d\"},\"doc\":"
            + sampleJson(number) + "}";
    }
    return answer + "\r\n]}\n";
}

} // namespace vo::benchmark
