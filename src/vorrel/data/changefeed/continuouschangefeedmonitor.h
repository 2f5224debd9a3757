// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/changefeed/basechangefeedmonitor.h>

#include <QtNetwork/QNetworkReply>

namespace vo::data {

/// Follows the database on one connection that stays open, so that edits of others are known at
/// once. A connection that ends is opened again after 8 s, from the record on that came last; one
/// that is silent for more than 40 s, without even a sign of life, is replaced. Meanwhile one
/// ContinuousChangeFeedError stands.
///
/// Lines count only in an answer with the status 200 that is no HTML page. The bytes are read in
/// time slices.
class VORREL_DATACORE_EXPORT ContinuousChangeFeedMonitor : public BaseChangeFeedMonitor
{
    Q_OBJECT
public:
    ContinuousChangeFeedMonitor(const QString &database, Context *context);

    /// Declares its error fixed and drops the connection.
    ~ContinuousChangeFeedMonitor() override;

    void reportError(Context *context) override;

    /// Whether a line has come on the present connection.
    [[nodiscard]] bool isReceiving() const;

private:
    void reconnect();
    bool closeReply();
    void dropReply();
    void open(QNetworkAccessManager *manager);
    void checkActivity();
    void handleReadyRead();
    void readSlice();
    [[nodiscard]] bool isFeed() const;
    void handleLine(const QByteArray &line);
    void giveUpLine();
    void handleNetworkError(QNetworkReply::NetworkError code);
    void handleFinished();
    void handleManagerDestroyed(QObject *manager);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
