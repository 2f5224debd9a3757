// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/wireserver.h"

#include <vorrel/core/getrequest.h>
#include <vorrel/core/putrequest.h>

#include <QtCore/QBuffer>
#include <QtCore/QMetaType>
#include <QtCore/QPointer>
#include <QtTest/QTest>

#include <functional>
#include <memory>

namespace vo::test {

/// A request that waits less long than the real ones.
template <typename Base>
class Impatient : public Base
{
public:
    using Base::Base;

protected:
    [[nodiscard]] int timeout() const override { return 400; }
};

/// What a test needs around a request.
struct Scene
{
    WireServer server;
    std::unique_ptr<QNetworkAccessManager> manager { new QNetworkAccessManager };
    QObject owner;

    [[nodiscard]] QNetworkRequest to(const QString &path = QStringLiteral("/db/x")) const
    {
        return QNetworkRequest(server.url(path));
    }
    Request *get() { return new GetRequest(to(), manager.get(), &owner); }
    Request *getInto(QIODevice *device)
    {
        Request *request = get();
        request->setDataSink(device);
        return request;
    }
    Request *put(QIODevice *body) { return new PutRequest(to(), manager.get(), body, &owner); }
    QBuffer *buffer(const QByteArray &data)
    {
        auto *buffer = new QBuffer(&owner);
        buffer->setData(data);
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }
    /// Calls \p function when the server has the request.
    void onArrival(const std::function<void()> &function)
    {
        server.setHandler([function](const WireServer::Message &) {
            function();
            return WireServer::Answer::hang();
        });
    }
};

/// What became of a request.
struct Outcome
{
    int finished = 0;
    bool replyRuns = false;
    bool isGone = false;
    bool isOk = false;
    int code = -1;
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QString errorString;
};

/// Waits until \p request has finished and gone.
inline Outcome outcomeOf(Request *request)
{
    Outcome outcome;
    const QPointer<Request> guard(request);
    QObject::connect(request, &Request::finished, request, [request, &outcome] {
        ++outcome.finished;
        outcome.replyRuns = request->reply() && request->reply()->isRunning();
        outcome.isOk = request->isOk(200);
        outcome.code = request->responseCode();
        outcome.error = request->error();
        outcome.errorString = request->errorString();
        request->abort();
    });
    outcome.isGone = QTest::qWaitFor([guard] { return guard.isNull(); }, 20000);
    delete guard.data();
    QCoreApplication::processEvents();
    return outcome;
}

/// A column of a test table that makes the request of its row.
using Script = std::function<Request *(Scene &)>;

} // namespace vo::test

Q_DECLARE_METATYPE(vo::test::Script)
