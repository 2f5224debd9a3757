// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <chrono>
#include <functional>
#include <memory>

namespace vo::test {

/// A server on 127.0.0.1 that keeps what it was sent to the byte and answers from a script:
/// prepared answers first, then the handler, then 200 with an empty JSON object. Like real servers
/// it says "100 Continue" when it is asked to.
class WireServer : public QTcpServer
{
public:
    /// One request as it came over the wire.
    struct Message
    {
        QByteArray head; // up to and with the blank line
        QByteArray body;

        [[nodiscard]] QByteArray method() const { return head.left(head.indexOf(' ')); }
        [[nodiscard]] QByteArray target() const { return head.split(' ').value(1); }
        [[nodiscard]] bool hasHeader(const QByteArray &name) const { return find(name) >= 0; }
        /// Empty when there is no such field; \p name in any case.
        [[nodiscard]] QByteArray header(const QByteArray &name) const
        {
            const int from = find(name) + int(name.size()) + 1;
            return hasHeader(name) ? head.mid(from, head.indexOf('\r', from) - from).trimmed() : "";
        }

    private:
        [[nodiscard]] int find(const QByteArray &name) const
        {
            const auto at = head.toLower().indexOf("\r\n" + name.toLower() + ':');
            return at < 0 ? -1 : int(at) + 2;
        }
    };

    /// Bytes to send, and how. Without bytes nothing is ever answered.
    struct Answer
    {
        QByteArray bytes;
        bool closes = false;  // the connection, after the bytes
        bool isEarly = false; // as soon as the head is there, while the body is still coming
        int pieceSize = 0;    // 0: all at once
        std::chrono::milliseconds pause { 0 }; // before each piece

        /// A whole answer with its length; \p fields are lines that end with "\r\n".
        static Answer status(int code, const QByteArray &body = {}, const QByteArray &fields = {})
        {
            return raw("HTTP/1.1 " + QByteArray::number(code) + " Phrase\r\n" + fields
                       + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        }
        static Answer redirect(int code, const QUrl &location)
        {
            return status(code, {}, "Location: " + location.toEncoded() + "\r\n");
        }
        static Answer raw(const QByteArray &bytes) { return { bytes }; }
        static Answer hang() { return {}; }
        static Answer close() { return hang().cutAfter(0); }

        /// Sends no more than the first \p count bytes, then closes.
        [[nodiscard]] Answer cutAfter(int count) const
        {
            return { bytes.left(count), true, isEarly, pieceSize, pause };
        }
        [[nodiscard]] Answer early() const { return { bytes, closes, true, pieceSize, pause }; }
        [[nodiscard]] Answer inPieces(int size, std::chrono::milliseconds interval) const
        {
            return { bytes, closes, isEarly, size, interval };
        }
    };
    using Handler = std::function<Answer(const Message &)>;

    WireServer()
    {
        connect(this, &QTcpServer::newConnection, this, &WireServer::accept);
        if (!listen(QHostAddress::LocalHost)) {
            qFatal("No port to listen on");
        }
    }

    /// http://127.0.0.1:port with \p path behind.
    [[nodiscard]] QUrl url(const QString &path = QString()) const
    {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path));
    }

    void enqueue(const Answer &answer) { m_script.append(answer); }
    void setHandler(Handler handler) { m_handler = std::move(handler); }

    /// All requests so far; one that is answered early has the body that had come by then.
    [[nodiscard]] const QList<Message> &messages() const { return m_messages; }
    [[nodiscard]] int openConnections() const { return m_openConnections; }

    /// Ends the connection of the next request whose body comes in pieces, in the middle of that.
    void cutNextBody() { m_cutsBody = true; }

protected:
    virtual void respond(QTcpSocket *socket, const Message &message)
    {
        send(socket, nextAnswer(message));
    }

private:
    void accept()
    {
        while (QTcpSocket *socket = nextPendingConnection()) {
            ++m_openConnections;
            const auto unread = std::make_shared<QByteArray>();
            connect(socket, &QTcpSocket::readyRead, this, [=] { read(socket, *unread); });
            connect(socket, &QTcpSocket::disconnected, this, [=] {
                --m_openConnections;
                socket->deleteLater();
            });
        }
    }

    void read(QTcpSocket *socket, QByteArray &unread)
    {
        unread += socket->readAll();
        while (unread.contains("\r\n\r\n")) {
            Message message { unread.left(unread.indexOf("\r\n\r\n") + 4), {} };
            const int bodySize = message.header("Content-Length").toInt();
            if (unread.size() < message.head.size() + bodySize) {
                if (std::exchange(m_cutsBody, false)) {
                    return socket->abort();
                }
                if (m_script.isEmpty() || !m_script.constFirst().isEarly) {
                    if (unread.size() == message.head.size() && message.hasHeader("Expect")) {
                        socket->write("HTTP/1.1 100 Continue\r\n\r\n");
                    }
                    return;
                }
                disconnect(socket, &QTcpSocket::readyRead, this, nullptr);
                connect(socket, &QTcpSocket::readyRead, socket, &QTcpSocket::readAll);
            }
            message.body = unread.mid(message.head.size(), bodySize);
            unread.remove(0, int(message.head.size() + message.body.size()));
            m_messages << message;
            respond(socket, message);
        }
    }

    Answer nextAnswer(const Message &message)
    {
        if (!m_script.isEmpty()) {
            return m_script.takeFirst();
        }
        return m_handler ? m_handler(message) : Answer::status(200, "{}");
    }

    static void send(QTcpSocket *socket, const Answer &answer, int from = 0)
    {
        if (answer.pieceSize > 0 && from < answer.bytes.size()) {
            QTimer::singleShot(answer.pause, socket, [=] {
                socket->write(answer.bytes.mid(from, answer.pieceSize));
                send(socket, answer, from + answer.pieceSize);
            });
            return;
        }
        socket->write(answer.bytes.mid(from));
        if (answer.closes) {
            socket->disconnectFromHost();
        }
    }

    QList<Answer> m_script;
    Handler m_handler;
    QList<Message> m_messages;
    int m_openConnections = 0;
    bool m_cutsBody = false;
};

} // namespace vo::test
