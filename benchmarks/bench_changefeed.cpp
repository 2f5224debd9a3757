// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Change records for documents that nobody holds: what each costs, and what many at once cost the
// event loop.

#include "support/benchmark.h"
#include "support/gapprobe.h"
#include "support/sampledocuments.h"

#include <vorrel/data/changefeed/basechangefeedmonitor.h>
#include <vorrel/data/context/context.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QStandardPaths>

using namespace vo::benchmark;
using namespace vo::data;

namespace {

class Monitor : public BaseChangeFeedMonitor
{
public:
    using BaseChangeFeedMonitor::BaseChangeFeedMonitor;
    using BaseChangeFeedMonitor::handleAnswer;
    using BaseChangeFeedMonitor::handleRecord;
    using BaseChangeFeedMonitor::hasQueuedRecords;

    void reportError(Context * /*context*/) override { }
};

QByteArray recordOf(int number)
{
    return R"({"seq":")" + QByteArray::number(number) + R"(-g1AAAAB","id":")"
        + sampleId(number).toLatin1()
        + R"(","changes":[{"rev":"2-7051cbe5c8faecd085a3fa619e6e6337"}]})";
}

QJsonObject parsed(const QByteArray &record)
{
    return QJsonDocument::fromJson(record).object();
}

void measure(Report &report, int size)
{
    QList<QByteArray> records;
    QJsonArray results;
    for (int number = 0; number < size; ++number) {
        records << recordOf(number);
        results << parsed(records.last());
    }
    const QString database = QStringLiteral("feed");
    QList<double> times;
    for (int run = 0; run < report.runs(); ++run) {
        Context context;
        context.setChangeFeedMonitorType(Context::NullMonitor);
        context.setDatabase(database);
        Monitor monitor(database, &context);
        const double parsing = cpuTime([&] {
            for (const QByteArray &record : std::as_const(records)) {
                keep(parsed(record));
            }
        });
        const double handling = cpuTime([&] {
            for (const QByteArray &record : std::as_const(records)) {
                monitor.handleRecord(parsed(record));
            }
        });
        times << (handling - parsing) / 1e3 / size;
    }
    report.add({ QStringLiteral("P13 record, beyond its parse"), size, QStringLiteral("us"),
                 median(times), QStringLiteral("5 us"), 5, 1 });

    Context context;
    context.setChangeFeedMonitorType(Context::NullMonitor);
    context.setDatabase(database);
    Monitor monitor(database, &context);
    const GapProbe probe;
    monitor.handleAnswer({ { QStringLiteral("results"), results } });
    while (monitor.hasQueuedRecords()) {
        QCoreApplication::processEvents();
    }
    report.add({ QStringLiteral("P13 records at once, longest gap"), size, QStringLiteral("ms"),
                 probe.longest(), QStringLiteral("16 ms"), 16, 1 });
}

} // namespace

int main(int argc, char **argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("change feed"), argc, argv);
    const QList<int> sizes = report.sizes();
    for (int size : sizes) {
        measure(report, size);
    }
    return 0;
}
