// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// The way of documents from the database into the Context, and what it costs the event loop.

#include "support/benchmark.h"
#include "support/cannedserver.h"
#include "support/gapprobe.h"
#include "support/sampledocuments.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/document.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QLoggingCategory>
#include <QtCore/QStandardPaths>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>

using namespace vo::benchmark;
using namespace vo::data;

namespace {

constexpr int batchSize = 25; // as the library asks for them

QStringList sampleIds(int size)
{
    QStringList ids;
    for (int number = 0; number < size; ++number) {
        ids << sampleId(number);
    }
    return ids;
}

/// The peer: the same requests, one at a time, each answer parsed and its documents kept.
void fetchPlainly(const QUrl &server, const QStringList &ids)
{
    QNetworkAccessManager manager;
    QHash<QString, QJsonObject> documents;
    for (int start = 0; start < ids.size(); start += batchSize) {
        QNetworkRequest request(server.resolved(QUrl(QStringLiteral("/d/_all_docs"))));
        request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
        // Without this Qt 5 loses 40 ms on each request.
        request.setRawHeader("Expect", "100-continue");
        const QJsonObject body { { QStringLiteral("keys"),
                                   QJsonArray::fromStringList(ids.mid(start, batchSize)) } };
        QNetworkReply *reply = manager.post(request, QJsonDocument(body).toJson());
        QEventLoop loop;
        QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        const QJsonArray rows = QJsonDocument::fromJson(reply->readAll())
                                    .object()
                                    .value(QLatin1String("rows"))
                                    .toArray();
        for (const QJsonValue &row : rows) {
            const QJsonObject document = row.toObject().value(QLatin1String("doc")).toObject();
            documents.insert(document.value(QLatin1String("_id")).toString(), document);
        }
        reply->deleteLater();
    }
    keep(documents);
}

void load(Context &context, const QStringList &ids)
{
    QEventLoop loop;
    QObject::connect(context.loadDocuments(ids), &LoadRequest::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    loop.exec();
}

void fetchDocuments(const QUrl &server, const QStringList &ids)
{
    QNetworkAccessManager manager;
    Context context;
    context.setChangeFeedMonitorType(Context::NullMonitor);
    context.setServiceUrl(server);
    context.setNetworkAccessManager(&manager);
    context.setDatabase(QStringLiteral("fetch"));
    load(context, ids);
}

void addGaps(Report &report, const QString &work, int size, const GapProbe &probe)
{
    const QString unit = QStringLiteral("ms");
    report.add({ work + QStringLiteral(", longest gap"), size, unit, probe.longest(),
                 QStringLiteral("16 ms (%1 above 8)").arg(probe.countAbove(8)), 16, 1 });
    report.add({ work + QStringLiteral(", 99th percentile"), size, unit, probe.percentile(0.99),
                 QStringLiteral("8 ms"), 8, 1 });
}

/// The gaps while documents come from the network, then from the cache, and are built.
void measureGaps(Report &report, const QUrl &server, int size)
{
    const QStringList ids = sampleIds(size);
    QNetworkAccessManager manager;
    QSharedPointer<DocumentCache> cache;
    for (const char *source : { "network", "cache" }) {
        Context context;
        context.setChangeFeedMonitorType(Context::NullMonitor);
        context.setServiceUrl(server);
        context.setNetworkAccessManager(&manager);
        context.setDatabase(QStringLiteral("gaps"));
        cache = context.documentCache();
        const GapProbe loading;
        load(context, ids);
        addGaps(report, QStringLiteral("P7 from the %1").arg(QLatin1String(source)), size, loading);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("vorrel.*=false"));
    Report report(QStringLiteral("loading"), argc, argv);
    const CannedServer server(allDocsAnswer);
    const QList<int> sizes = report.sizes(10000);
    for (int size : sizes) {
        const QStringList ids = sampleIds(size);
        report.compare(
            { QStringLiteral("P6 fetch, cache and make nodes"), size, QStringLiteral("us"), 0,
              QStringLiteral("network manager and parse"), 0, 1.15 },
            [&] { fetchDocuments(server.url(), ids); }, [&] { fetchPlainly(server.url(), ids); });
        measureGaps(report, server.url(), size);
    }
    return 0;
}
