// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QUrl>
#include <QtNetwork/QTcpServer>

#include <chrono>
#include <functional>

QT_BEGIN_NAMESPACE
class QTcpSocket;
QT_END_NAMESPACE

namespace vo::test {

/// A server on 127.0.0.1 that keeps what it was sent to the byte and answers from a script:
/// prepared answers first, then the handler, then 200 with an empty JSON object. Like real servers
/// it says "100 Continue" when it is asked to.
class WireServer : public QTcpServer
{
    Q_OBJECT
public:
    /// One request as it came over the wire.
    struct Message
    {
        QByteArray head; // up to and with the blank line
        QByteArray body;

        [[nodiscard]] QByteArray method() const { return head.left(head.indexOf(' ')); }
        [[nodiscard]] QByteArray target() const { return head.split(' ').value(1); }
        /// Null when there is no such field; \p name in any case.
        [[nodiscard]] QByteArray header(const QByteArray &name) const;
        [[nodiscard]] bool hasHeader(const QByteArray &name) const
        {
            return !header(name).isNull();
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
        static Answer status(int code, const QByteArray &body = {}, const QByteArray &fields = {});
        static Answer redirect(int code, const QUrl &location);
        static Answer raw(const QByteArray &bytes) { return { bytes, false, false, 0, {} }; }
        static Answer hang() { return raw({}); }
        static Answer close() { return hang().cutAfter(0); }

        /// Sends no more than the first \p count bytes, then closes.
        [[nodiscard]] Answer cutAfter(int count) const;
        [[nodiscard]] Answer early() const;
        [[nodiscard]] Answer inPieces(int size, std::chrono::milliseconds interval) const;
    };
    using Handler = std::function<Answer(const Message &)>;

    WireServer();

    /// http://127.0.0.1:port with \p path behind.
    [[nodiscard]] QUrl url(const QString &path = QString()) const;

    void enqueue(const Answer &answer) { m_script.append(answer); }
    void setHandler(Handler handler) { m_handler = std::move(handler); }

    /// All requests so far; one that is answered early has the body that had come by then.
    [[nodiscard]] const QList<Message> &messages() const { return m_messages; }
    [[nodiscard]] int openConnections() const { return m_openConnections; }

private:
    struct Connection
    {
        QByteArray unread;
        bool isDraining = false; // answered early: the rest of the body is dropped
    };

    void accept();
    void read(QTcpSocket *socket, Connection &connection);
    Answer nextAnswer(const Message &message);
    static void send(QTcpSocket *socket, const Answer &answer, int from = 0);

    QList<Answer> m_script;
    Handler m_handler;
    QList<Message> m_messages;
    int m_openConnections = 0;
};

} // namespace vo::test
