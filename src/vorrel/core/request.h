// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/coreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>

#include <memory>

QT_BEGIN_NAMESPACE
class QIODevice;
struct QJsonParseError;
QT_END_NAMESPACE

namespace vo {

/// One HTTP exchange. Make one on the heap, connect finished(), and call nothing more: it starts
/// in the next turn of the event loop, runs once, emits finished() exactly once whatever happens,
/// and deletes itself after that has been delivered. Keep it in guarded pointers only.
///
/// finished() never comes from inside a call to the request; a request that is destroyed before
/// emits nothing and ends the exchange. Everything happens on the thread that made it.
///
/// Failures are values and, unless suppressed, one warning in the log category "vorrel.request".
/// A failure that arose on this side (cancelled, timed out, no manager, answer too large, data
/// sink failed, refused by PreparedRequest) has the error OperationCanceledError.
class VORREL_CORE_EXPORT Request : public QObject
{
    Q_OBJECT
public:
    ~Request() override;

    /// True when the exchange has ended without any error and with the HTTP status \p code.
    [[nodiscard]] bool isOk(int code) const;

    /// The HTTP status; 0 when no HTTP answer came.
    [[nodiscard]] int responseCode() const;

    /// The error of the reply. Qt reports HTTP statuses from 400 as errors, too.
    [[nodiscard]] QNetworkReply::NetworkError error() const;

    /// What went wrong, for logs; empty without a failure. Holds neither URL nor credentials.
    [[nodiscard]] QString errorString() const;

    /// The body as JSON, parsed anew by each call; undefined when it is none. \p error may be null.
    [[nodiscard]] QJsonValue response(QJsonParseError *error) const;

    /// The body as a JSON object, parsed anew by each call. A body that is no JSON object gives an
    /// empty one and an error through \p error, which may be null.
    [[nodiscard]] QJsonObject responseObject(QJsonParseError *error) const;

    /// The body as far as it has come, also that of an HTTP error. Empty with a data sink.
    [[nodiscard]] QByteArray rawResponse() const;

    /// The requested URL, without user name and password.
    [[nodiscard]] QUrl url() const;

    /// Null before the start, and after it when nothing was sent or the manager is gone.
    [[nodiscard]] const QNetworkReply *reply() const;

    /// Cancels the exchange: finished() follows, and the request is not ok. Does nothing when the
    /// exchange has ended, inside a slot of finished() in particular.
    void abort();

    /// Sends the body to \p device instead of memory, as it arrives; null goes back to memory.
    /// Not owned. The device must be open for writing when the exchange starts; a failed write
    /// ends it. A larger time limit holds, and no limit of size unless one is set.
    void setDataSink(QIODevice *device);

    /// No log lines for failures; for callers that retry or report themselves. A request that is
    /// refused because of its URL or headers is logged all the same: no retry can heal it.
    void setSuppressErrors(bool suppress);

    /// Ends the exchange when the body exceeds \p bytes. A negative value, the initial one, stands
    /// for 256 MiB in memory and no limit with a data sink.
    void setMaximumSize(qint64 bytes);

Q_SIGNALS:
    void finished();

    /// Bytes of the body so far and in all; the total is -1 when it is not known.
    void downloadProgress(qint64 received, qint64 total);
    void uploadProgress(qint64 sent, qint64 total);

protected:
    /// \p operation tells PreparedRequest what perform() will do. A null \p manager makes a
    /// request that fails.
    Request(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
            QNetworkAccessManager *manager, QObject *parent);

    /// Sends networkRequest() by networkAccessManager(). Null makes the request fail.
    virtual QNetworkReply *perform() = 0;

    /// Called right before perform(), for instance to open a data sink. Does nothing here.
    virtual void prepare();

    /// Milliseconds without any progress after which the exchange fails; 0 and less is no limit.
    [[nodiscard]] virtual int timeout() const;

    /// Watches the time limit.
    void timerEvent(QTimerEvent *event) override;

    /// What is to be sent, as PreparedRequest made it.
    [[nodiscard]] const QNetworkRequest &networkRequest() const;

    /// Never null inside perform() and prepare().
    [[nodiscard]] QNetworkAccessManager *networkAccessManager() const;

    /// Ends the exchange as abort() does, with \p reason as errorString().
    void fail(const QString &reason);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo
