// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/wireserver.h"

#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

#include <memory>

namespace vo::test {

QByteArray WireServer::Message::header(const QByteArray &name) const
{
    const QByteArray key = "\r\n" + name.toLower() + ':';
    const int at = int(head.toLower().indexOf(key));
    if (at < 0)
        return QByteArray();
    const int from = at + int(key.size());
    const QByteArray value = head.mid(from, head.indexOf("\r\n", from) - from).trimmed();
    return value.isNull() ? QByteArray("") : value;
}

WireServer::Answer WireServer::Answer::status(int code, const QByteArray &body,
                                              const QByteArray &fields)
{
    return raw("HTTP/1.1 " + QByteArray::number(code) + " Phrase\r\n" + fields
               + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
}

WireServer::Answer WireServer::Answer::redirect(int code, const QUrl &location)
{
    return status(code, {}, "Location: " + location.toEncoded() + "\r\n");
}

WireServer::Answer WireServer::Answer::cutAfter(int count) const
{
    Answer answer = *this;
    answer.bytes.truncate(count);
    answer.closes = true;
    return answer;
}

WireServer::Answer WireServer::Answer::early() const
{
    Answer answer = *this;
    answer.isEarly = true;
    return answer;
}

WireServer::Answer WireServer::Answer::inPieces(int size, std::chrono::milliseconds interval) const
{
    Answer answer = *this;
    answer.pieceSize = size;
    answer.pause = interval;
    return answer;
}

WireServer::WireServer()
{
    connect(this, &QTcpServer::newConnection, this, &WireServer::accept);
    if (!listen(QHostAddress::LocalHost))
        qFatal("No port to listen on");
}

QUrl WireServer::url(const QString &path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path));
}

void WireServer::accept()
{
    while (QTcpSocket *socket = nextPendingConnection()) {
        ++m_openConnections;
        const auto connection = std::make_shared<Connection>();
        connect(socket, &QTcpSocket::readyRead, this,
                [this, socket, connection] { read(socket, *connection); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            --m_openConnections;
            socket->deleteLater();
        });
    }
}

void WireServer::read(QTcpSocket *socket, Connection &connection)
{
    connection.unread += socket->readAll();
    while (!connection.isDraining) {
        const int headSize = int(connection.unread.indexOf("\r\n\r\n")) + 4;
        if (headSize < 4)
            return;
        Message message { connection.unread.left(headSize), {} };
        const int bodySize = message.header("Content-Length").toInt();
        const bool isComplete = connection.unread.size() >= headSize + bodySize;
        const bool isEarly = !m_script.isEmpty() && m_script.first().isEarly;
        if (!isComplete && !isEarly) {
            if (connection.unread.size() == headSize && message.hasHeader("Expect"))
                socket->write("HTTP/1.1 100 Continue\r\n\r\n");
            return;
        }
        message.body = connection.unread.mid(headSize, bodySize);
        connection.unread.remove(0, headSize + int(message.body.size()));
        connection.isDraining = !isComplete;
        m_messages.append(message);
        send(socket, nextAnswer(message));
    }
    connection.unread.clear();
}

WireServer::Answer WireServer::nextAnswer(const Message &message)
{
    if (!m_script.isEmpty())
        return m_script.takeFirst();
    return m_handler ? m_handler(message) : Answer::status(200, "{}");
}

void WireServer::send(QTcpSocket *socket, const Answer &answer, int from)
{
    if (answer.pieceSize > 0 && from < answer.bytes.size()) {
        QTimer::singleShot(answer.pause, socket, [socket, answer, from] {
            socket->write(answer.bytes.mid(from, answer.pieceSize));
            send(socket, answer, from + answer.pieceSize);
        });
        return;
    }
    if (answer.pieceSize == 0)
        socket->write(answer.bytes);
    if (answer.closes)
        socket->disconnectFromHost();
}

} // namespace vo::test

#include "moc_wireserver.cpp"
