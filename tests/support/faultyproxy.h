// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/wireserver.h"

#include <optional>

namespace vo::test {

/// Stands between a client and a real server, and spoils the requests that a test picks.
class FaultyProxy : public WireServer
{
public:
    /// Gives what is answered in the place of the server. Without bytes the answer of the server
    /// is lost, and the connection ends if this one \a closes; if it is early, the request is lost.
    using Picker = std::function<std::optional<Answer>(const Message &)>;

    explicit FaultyProxy(const QUrl &server)
        : m_server(server)
    { }

    /// That of the server, by way of the proxy.
    [[nodiscard]] QUrl proxyUrl() const
    {
        QUrl result = m_server;
        result.setHost(url().host());
        result.setPort(url().port());
        return result;
    }
    void setPicker(Picker picker) { m_picker = std::move(picker); }

protected:
    void respond(QTcpSocket *client, const Message &message) override
    {
        const auto fault = m_picker ? m_picker(message) : std::nullopt;
        if (fault && !fault->bytes.isEmpty()) {
            client->write(fault->bytes);
            return;
        }
        if (fault && fault->isEarly) {
            client->abort();
            return;
        }
        auto *server = client->findChild<QTcpSocket *>();
        if (!server) {
            server = new QTcpSocket(client);
            connect(server, &QTcpSocket::errorOccurred, client, &QTcpSocket::disconnectFromHost);
            server->connectToHost(m_server.host(), quint16(m_server.port()));
        }
        disconnect(server, &QTcpSocket::readyRead, client, nullptr);
        connect(server, &QTcpSocket::readyRead, client, [=] {
            const QByteArray answer = server->readAll();
            if (!fault) {
                client->write(answer);
            } else if (fault->closes) {
                client->abort();
            }
        });
        server->write(QByteArray(message.head).replace("Expect: 100-continue\r\n", "")
                      + message.body);
    }

private:
    const QUrl m_server;
    Picker m_picker;
};

} // namespace vo::test
