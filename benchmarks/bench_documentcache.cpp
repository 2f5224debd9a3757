// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// The document cache beside what no cache can do without; medians of CPU time, in turn.
//
//     bench_documentcache [DOCUMENTS] [ROUNDS]

#include <vorrel/core/locations.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QLoggingCategory>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThreadPool>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <lz4.h>
#include <malloc.h>
#include <vector>

using vo::data::DocumentCache;

namespace {

constexpr int documentSize = 1168;
constexpr int idSize = 22;
const QString database = QStringLiteral("bench");

double measure(const std::function<void()> &work)
{
    timespec start {}, end {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &start);
    work();
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
    return double(end.tv_sec - start.tv_sec) * 1e3 + double(end.tv_nsec - start.tv_nsec) / 1e6;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void report(const char *what, int count, double anchor, double ours, double owed)
{
    std::printf("| %-32s | %7d | %9.2f | %9.2f | %5.2f | %5.2f |\n", what, count, anchor, ours,
                ours / anchor, owed);
}

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

void run(const QStringList &ids, int rounds)
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
    report("resident : block + 64 B, MB", count, (plainSize + 64.0 * count) / 1e6,
           double(resident) / 1e6, 1.15);

    std::vector<double> anchors, loads, stores, inserts;
    QByteArray plain;
    for (int round = 0; round < rounds; ++round) {
        plain.clear();
        anchors.push_back(measure([&] {
            plain = QByteArray(int(plainSize), Qt::Uninitialized);
            LZ4_decompress_safe(block.constData(), plain.data(), int(block.size()), int(plainSize));
        }));
        DocumentCache other(database);
        loads.push_back(measure([&] { other.load(); }));
        other.invalidate(QStringLiteral("nothing"));
        stores.push_back(measure([&] { other.store(); }));
        const QByteArray json = documentOf(ids.first());
        inserts.push_back(measure([&] { other.insert(ids.first(), json); }));
        QThreadPool::globalInstance()->waitForDone();
    }
    report("load : LZ4, ms", count, median(anchors), median(loads), 1.35);
    report("store : 1 ms", count, 1, median(stores), 1);
    report("insert while it is stored : 1 ms", count, 1, median(inserts), 1);

    const double parse = measure([&] {
        for (int at = idSize; at < plain.size(); at += idSize + documentSize) {
            QJsonDocument::fromJson(QByteArray::fromRawData(plain.data() + at, documentSize))
                .object();
        }
    });
    const double find = measure([&] {
        std::for_each(ids.begin(), ids.end(), [&](const QString &id) { cache.find(id).isEmpty(); });
    });
    report("load, find : parse, ms", count, parse, find + median(loads), 1.1);
}

} // namespace

int main(int argc, char *argv[])
{
    mallopt(M_MMAP_THRESHOLD, 128 * 1024); // memory is fresh each time, as it is at a start
    QLoggingCategory::setFilterRules(QStringLiteral("vorrel.*=false"));
    const QTemporaryDir directory;
    vo::Locations::setCacheLocation(directory.path());
    QStringList ids;
    for (int index = 0; index < (argc > 1 ? std::atoi(argv[1]) : 100000); ++index) {
        ids << QStringLiteral("bench.document.%1").arg(index, 7, 10, QLatin1Char('0'));
    }
    {
        DocumentCache cache(database);
        std::for_each(ids.begin(), ids.end(),
                      [&](const QString &id) { cache.insert(id, documentOf(id)); });
        cache.store();
        QThreadPool::globalInstance()->waitForDone();
    }
    std::printf("| what, and per what | documents | anchor | ours | ratio | owed |\n");
    run(ids, argc > 2 ? std::atoi(argv[2]) : 7);
    return EXIT_SUCCESS;
}
