// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/fakecouch.h"

namespace vo::test {

/// The reply to one request of a FakeCouch. Ends as the replies of Qt do: error first, then
/// finished; at once when aborted.
class FakeReply : public QNetworkReply
{
    Q_OBJECT
public:
    FakeReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
              FakeCouch::Answer answer, QObject *parent);

    /// Lets the answer arrive in the next turn of the event loop, unless it hangs.
    void send();

    void abort() override;
    [[nodiscard]] qint64 bytesAvailable() const override;
    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maximum) override;

private:
    void arrive();
    void end(NetworkError error, const QString &text);

    const FakeCouch::Answer m_answer;
    QByteArray m_unread;
};

} // namespace vo::test
