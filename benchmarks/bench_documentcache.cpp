// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// The document cache and its file, beside what no cache can do without.

#include "support/benchmark.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QLoggingCategory>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThreadPool>

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <lz4.h>
#include <malloc.h>

using namespace vo::benchmark;
using vo::data::DocumentCache;

namespace {

constexpr int documentSize = 1168;
constexpr int idSize = 22;
const QString database = QStringLiteral("bench");

QByteArray noise(int size)
{
    QByteArray bytes(size, '\0');
    QRandomGenerator::global()->generate(bytes.begin(), bytes.end());
    return bytes.toBase64();
}

// Texts, references and structs, as documents have them. The noise keeps LZ4 from gaining more than
// it does on real content.
QByteArray documentOf(const QString &id)
{
    QByteArray json = R"({"_id":")" + id.toLatin1() + R"(","references":["bench.a","bench.b"],)"
        + R"("name":{"type":"langstring","items":{"de":")" + noise(9) + R"("}},":data":{)";
    for (char name = 'a'; name < 'q'; ++name) {
        json += QByteArray("\"s:") + name + R"(":{"kind":")" + noise(9) + R"(","duration":8},)";
    }
    json.chop(1);
    return (json + "}}").leftJustified(documentSize, ' ');
}

qint64 residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').at(1).toLongLong() * 4096 : 0;
}

void measure(Report &report, const QStringList &ids)
{
    const int count = int(ids.size());
    const qint64 before = residentBytes();
    DocumentCache cache(database);
    cache.load();
    const qint64 resident = residentBytes() - before;
    QFile file(cache.cacheFile());
    static_cast<void>(file.open(QIODevice::ReadOnly));
    quint32 plainSize = 0;
    const QByteArray content = file.readAll();
    std::copy_n(content.constData() + 12, 4, reinterpret_cast<char *>(&plainSize));
    const QByteArray block = content.mid(16LL * (count + 1));
    report.add({ QStringLiteral("resident memory"), count, QStringLiteral("MB"),
                 double(resident) / 1e6, QStringLiteral("block and 64 bytes for each"),
                 (plainSize + 64.0 * count) / 1e6, 1.15 });

    QList<double> anchors, loads, stores, inserts;
    QByteArray plain;
    for (int round = 0; round < report.runs(); ++round) {
        plain.clear();
        anchors << (cpuTime([&] {
            plain = QByteArray(int(plainSize), Qt::Uninitialized);
            LZ4_decompress_safe(block.constData(), plain.data(), int(block.size()), int(plainSize));
        }));
        DocumentCache other(database);
        loads << (cpuTime([&] { other.load(); }));
        other.invalidate(QStringLiteral("nothing"));
        stores << (cpuTime([&] { other.store(); }));
        const QByteArray json = documentOf(ids.first());
        inserts << (cpuTime([&] { other.insert(ids.first(), json); }));
        QThreadPool::globalInstance()->waitForDone();
    }
    const QString unit = QStringLiteral("ms");
    const QString limit = QStringLiteral("1 ms");
    report.add({ QStringLiteral("P4 load"), count, unit, median(loads) / 1e6,
                 QStringLiteral("LZ4 of the block"), median(anchors) / 1e6, 1.35 });
    report.add({ QStringLiteral("P5 store, on the owner's thread"), count, unit,
                 median(stores) / 1e6, limit, 1, 1 });
    report.add({ QStringLiteral("P5 insert while it is stored"), count, unit, median(inserts) / 1e6,
                 limit, 1, 1 });

    const double parse = cpuTime([&] {
        for (int at = idSize; at < plain.size(); at += idSize + documentSize) {
            QJsonDocument::fromJson(QByteArray::fromRawData(plain.data() + at, documentSize))
                .object();
        }
    });
    const double find = cpuTime([&] {
        std::for_each(ids.begin(), ids.end(), [&](const QString &id) { cache.find(id).isEmpty(); });
    });
    report.add({ QStringLiteral("P4 load and find all"), count, unit, (find + median(loads)) / 1e6,
                 QStringLiteral("parse all"), parse / 1e6, 1.1 });
}

} // namespace

int main(int argc, char **argv)
{
    mallopt(M_MMAP_THRESHOLD, 128 * 1024); // memory is fresh each time, as it is at a start
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("document cache"), argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("vorrel.*=false"));
    const QTemporaryDir directory;
    vo::Locations::setCacheLocation(directory.path());
    const QList<int> sizes = report.sizes();
    for (int size : sizes) {
        QStringList ids;
        DocumentCache cache(database);
        for (int index = 0; index < size; ++index) {
            ids << QStringLiteral("bench.document.%1").arg(index, 7, 10, QLatin1Char('0'));
            cache.insert(ids.last(), documentOf(ids.last()));
        }
        cache.store();
        QThreadPool::globalInstance()->waitForDone();
        measure(report, ids);
    }
    return 0;
}
