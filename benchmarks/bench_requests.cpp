// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What a request with a body takes by the clock. Qt 5 sends header and body in two segments, which
// costs some 40 ms each time unless the server is asked to go on first.

#include "support/benchmark.h"
#include "support/cannedserver.h"

#include <vorrel/core/postrequest.h>
#include <vorrel/core/putrequest.h>

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QJsonObject>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>

using namespace vo;
using namespace vo::benchmark;

namespace {

template <typename Send>
double timeEach(int count, Send send)
{
    QElapsedTimer clock;
    clock.start();
    for (int number = 0; number < count; ++number) {
        QEventLoop loop;
        QObject::connect(send(), SIGNAL(finished()), &loop, SLOT(quit()));
        loop.exec();
    }
    return double(clock.nsecsElapsed()) / 1e6 / count;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("requests"), argc, argv);
    const CannedServer server([](const QByteArray &) { return QByteArray("{\"ok\":true}"); });
    QNetworkAccessManager manager;
    QNetworkRequest request(server.url());
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    const QList<int> bodySizes { 100, 10000, 100000 };
    for (int bodySize : bodySizes) {
        const QJsonObject body { { QStringLiteral("text"), QString(bodySize, QLatin1Char('x')) } };
        const QByteArray bytes(bodySize, 'x');
        const int count = report.runs() > 1 ? 200 : 20;
        const double plain = timeEach(count, [&] { return manager.post(request, bytes); });
        const QString anchor = QStringLiteral("QNetworkAccessManager::post");
        report.add({ QStringLiteral("POST of %1 bytes").arg(bodySize), count, QStringLiteral("ms"),
                     timeEach(count, [&] { return new PostRequest(request, &manager, body); }),
                     anchor, plain, 0 });
        report.add({ QStringLiteral("PUT of %1 bytes").arg(bodySize), count, QStringLiteral("ms"),
                     timeEach(count,
                              [&] {
                                  auto *device = new QBuffer(&manager);
                                  device->setData(bytes);
                                  device->open(QIODevice::ReadOnly);
                                  return new PutRequest(request, &manager, device);
                              }),
                     anchor, plain, 0 });
    }
    return 0;
}
