// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QUrl>

#include <functional>
#include <thread>

namespace vo::benchmark {

/// An HTTP server that costs as little as one can, on threads of its own. Loopback only.
class CannedServer
{
public:
    /// Gives the body of the answer to a body; called on other threads.
    using Handler = std::function<QByteArray(const QByteArray &body)>;

    /// Answers everything with \p status.
    explicit CannedServer(Handler handler, QByteArray status = "200 OK");
    ~CannedServer();
    Q_DISABLE_COPY_MOVE(CannedServer)

    [[nodiscard]] QUrl url() const;

private:
    void acceptConnections() const;
    void serve(int connection) const;

    const Handler m_handler;
    const QByteArray m_status;
    int m_socket = -1;
    int m_port = 0;
    std::thread m_thread;
};

/// Answers bulk requests for sample documents as a database does, a row on each line.
QByteArray allDocsAnswer(const QByteArray &request);

} // namespace vo::benchmark
