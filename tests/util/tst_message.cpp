// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/util/message.h>

#include <QtCore/QThread>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using vo::util::Message;

class tst_Message : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void reachesListenersFromAnyThread();
};

void tst_Message::reachesListenersFromAnyThread()
{
    const QMap<QString, QVariant> parameters { { QStringLiteral("id"), 7 } };
    Message::send(QStringLiteral("nobody listens"), parameters);

    QThread *receivedIn = nullptr;
    QList<QPair<QString, QMap<QString, QVariant>>> received;
    QObject listener;
    connect(Message::instance(), &Message::sent, &listener,
            [&](const QString &key, const QMap<QString, QVariant> &values) {
                receivedIn = QThread::currentThread();
                received.append({ key, values });
            });
    const std::unique_ptr<QThread> sender(
        QThread::create([parameters] { Message::send(QStringLiteral("key"), parameters); }));
    sender->start();
    QTRY_COMPARE(int(received.size()), 1);
    QCOMPARE(received.first(), qMakePair(QStringLiteral("key"), parameters));
    QCOMPARE(receivedIn, thread());
    QVERIFY(sender->wait());
}

QTEST_GUILESS_MAIN(tst_Message)
#include "tst_message.moc"
