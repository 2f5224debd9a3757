// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// The document cache beside what no cache could do without: LZ4 into fresh memory, and parsing. CPU
// time of this thread, medians, the anchor and ours in turn.
//
//     bench_documentcache [DOCUMENTS] [ROUNDS]

#include <vorrel/core/locations.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
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
#include <vector>

using vo::data::DocumentCache;

namespace {

constexpr int documentSize = 1168;

double measure(const std::function<void()> &work)
{
    const auto now = [] {
        timespec time {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
    };
    const double start = now();
    work();
    return now() - start;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

QString idOf(int index)
{
    return QStringLiteral("bench.document.%1").arg(index, 7, 10, QLatin1Char('0'));
}

// A typical document of 1,168 bytes: a text in two languages, references, ten structs. Some noise
// keeps LZ4 from gaining more than it does on real content.
QByteArray documentOf(int index)
{
    const auto noise = [](int size) {
        QByteArray bytes(size, '\0');
        QRandomGenerator::global()->generate(bytes.begin(), bytes.end());
        return QString::fromLatin1(bytes.toBase64());
    };
    const auto key = [](const char *name, int number) {
        return QLatin1String(name) + QString::number(number);
    };
    QJsonObject structs, object;
    for (int number = 0; number < 10; ++number) {
        structs.insert(
            key("s:slot-", number),
            QJsonObject { { key("kind", 0), noise(6) }, { key("duration", 0), number } });
    }
    for (int field = 0; field < 12; ++field) {
        object.insert(key("property", field), noise(12));
    }
    object.insert(key("_id", 0).chopped(1), idOf(index));
    object.insert(key(":data", 0).chopped(1), structs);
    object.insert(key("name", 0),
                  QJsonObject { { key("de", 0), noise(9) }, { key("en", 0), noise(9) } });
    object.insert(key("references", 0), QJsonArray { idOf(index + 1), idOf(index + 2) });
    return QJsonDocument(object)
        .toJson(QJsonDocument::Compact)
        .leftJustified(documentSize, ' ', true);
}

qint64 residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').at(1).toLongLong() * 4096 : 0;
}

void report(const char *what, int count, double anchor, double ours, double owed)
{
    std::printf("| %-28s | %7d | %9.2f | %9.2f | %5.2f | %5.2f |\n", what, count, anchor, ours,
                ours / anchor, owed);
}

void makeFile(int count)
{
    DocumentCache cache(QStringLiteral("bench"));
    for (int index = 0; index < count; ++index) {
        cache.insert(idOf(index), documentOf(index));
    }
    cache.store();
    QThreadPool::globalInstance()->waitForDone();
}

void benchLoad(int count, int rounds, const QByteArray &block, int plainSize)
{
    std::vector<double> anchor, ours;
    for (int round = 0; round < rounds; ++round) {
        anchor.push_back(measure([&] {
            QByteArray plain(plainSize, Qt::Uninitialized);
            LZ4_decompress_safe(block.constData(), plain.data(), int(block.size()), plainSize);
        }));
        DocumentCache cache(QStringLiteral("bench"));
        ours.push_back(measure([&] { cache.load(); }));
    }
    report("load : LZ4, ms", count, median(anchor), median(ours), 1.35);
}

void benchRead(int count, const QByteArray &plain)
{
    const int record = int(plain.size() / count);
    const int idSize = int(idOf(0).size());
    const double anchor = measure([&] {
        for (int index = 0; index < count; ++index) {
            const char *json = plain.constData() + qint64(index) * record + idSize;
            QJsonDocument::fromJson(QByteArray::fromRawData(json, record - idSize)).object();
        }
    });
    QStringList ids;
    for (int index = 0; index < count; ++index) {
        ids.append(idOf(index));
    }
    DocumentCache cache(QStringLiteral("bench"));
    const double ours = measure([&] {
        cache.load();
        for (const QString &id : std::as_const(ids)) {
            static_cast<void>(cache.find(id));
        }
    });
    report("load + find : parse, ms", count, anchor, ours, 1.1);
}

void benchStore(int count, int rounds)
{
    DocumentCache cache(QStringLiteral("bench"));
    cache.load();
    std::vector<double> stores, inserts;
    for (int round = 0; round < rounds; ++round) {
        cache.invalidate(QStringLiteral("nothing"));
        stores.push_back(measure([&] { cache.store(); }));
        const QByteArray json = documentOf(round);
        inserts.push_back(measure([&] { cache.insert(idOf(round), json); }));
        QThreadPool::globalInstance()->waitForDone();
    }
    report("store : 1 ms", count, 1, median(stores), 1);
    report("insert while storing : 1 ms", count, 1, median(inserts), 1);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("vorrel.*=false"));
    const QTemporaryDir directory;
    vo::Locations::setCacheLocation(directory.path());
    const int count = argc > 1 ? std::atoi(argv[1]) : 100000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 7;

    makeFile(count);
    QFile file(DocumentCache(QStringLiteral("bench")).cacheFile());
    const int plainSize = count * int(documentSize + idOf(0).size());
    const int head = 16 * (count + 1);
    const qint64 before = residentBytes();
    {
        DocumentCache cache(QStringLiteral("bench"));
        cache.load();
        std::printf("| anchor and ours | documents | anchor | ours | ratio | owed |\n");
        report("resident : block + 64 B, MB", count, double(plainSize + 64.0 * count) / 1e6,
               double(residentBytes() - before) / 1e6, 1.15);
    }
    if (!file.open(QIODevice::ReadOnly) || !file.seek(head)) {
        return EXIT_FAILURE;
    }
    const QByteArray block = file.readAll();
    std::printf("block %.0f MB, file %.0f MB\n", plainSize / 1e6, double(block.size()) / 1e6);
    benchLoad(count, rounds, block, plainSize);
    QByteArray plain(plainSize, Qt::Uninitialized);
    LZ4_decompress_safe(block.constData(), plain.data(), int(block.size()), plainSize);
    benchRead(count, plain);
    benchStore(count, rounds);
    return EXIT_SUCCESS;
}
