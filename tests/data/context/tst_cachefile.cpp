// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/logcapture.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/context/cachetable_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/document.h>

#include <QtCore/QDateTime>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThreadPool>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

const QString critical = "vorrel.doccache|critical|"_s;

/// The example in the page on the format.
QByteArray exampleFile()
{
    QFile page(qEnvironmentVariable("VORREL_SOURCE_DIR") + "/docs/formats/cache.md"_s);
    const QString text = page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : ""_s;
    const QRegularExpression row("\n    [0-9a-f]{4} (( {1,2}[0-9a-f]{2}){1,16})"_s);
    QByteArray bytes;
    for (auto match = row.globalMatch(text); match.hasNext();) {
        bytes += QByteArray::fromHex(match.next().captured(1).toLatin1());
    }
    return bytes;
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

void storeAndWait(DocumentCache &cache)
{
    cache.store();
    QThreadPool::globalInstance()->waitForDone();
}

QByteArray jsonOfSize(int size)
{
    return "{\"n\":\"" + QByteArray(size - 8, 'x') + "\"}";
}

} // namespace

class tst_CacheFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        vo::Locations::setCacheLocation(m_directory->path() + "/new/cache"_s);
    }

    void readsTheExampleOfItsPage()
    {
        LogCapture log;
        DocumentCache cache("db"_s);
        writeFile(cache.cacheFile(), exampleFile());
        cache.load();
        QCOMPARE(log.count("vorrel.doccache|info|Loaded persisted cache from "_s), 1);
        QCOMPARE(cache.find("a"_s), R"({"_id":"a","_rev":"1-x","wasCached":true})"_json);
        QCOMPARE(cache.find("bü"_s), R"({"_id":"bü","_rev":"2-0123456789","wasCached":true})"_json);
        cache.invalidate("unknown"_s);
        storeAndWait(cache);
        QFile file(cache.cacheFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(16), exampleFile().left(16));
    }

    void survivesDamage_data()
    {
        QTest::addColumn<int>("place");
        QTest::addColumn<QByteArray>("bytes"); // an empty one cuts the file off
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("left"); // documents that can be read

        const auto row = [](const char *name, int place, const char *hex, const QString &line,
                            const QStringList &left = {}) {
            QTest::newRow(name) << place << QByteArray::fromHex(hex) << line << left;
        };
        const QString loaded = "info|Loaded persisted cache from "_s;
        const QString corrupt = "critical|Corrupted cache file - aborting"_s;
        const QString block = "critical|Failed to decompress cache data"_s;
        const QString json = "critical|Failed to parse JSON: "_s;
        row("reserved bytes", 6, "ffff", loaded, "a bü"_l);
        row("63 bytes", 63, "", ""_s);
        row("magic", 0, "76", "critical|Invalid cache file header - wrong magic"_s);
        row("version", 4, "02", "critical|Invalid cache file header - unknown version"_s);
        row("no entries", 8, "00000000", "warning|Empty cache - nothing to load"_s);
        row("entries up to the end", 8, "06", corrupt);
        row("count that wraps to 0", 8, "ffffffff", corrupt);
        row("block too small", 12, "3d", block);
        row("2 GB in 64 bytes", 12, "ffffff7f", block);
        row("size below 0", 12, "ffffffff", block);
        row("second record outside", 36, "1a", corrupt, "a"_l);
        row("offset that wraps", 36, "feffffff", corrupt, "a"_l);
        row("size that wraps", 40, "ffffffff", corrupt, "a"_l);
        row("the same id twice", 32, "00000000000000000100000018000000", loaded, "a"_l);
        row("half a document", 28, "17", json, "bü"_l);
        row("a list", 51, "5b2f2f2f", json, "bü"_l);
    }

    void survivesDamage()
    {
        QFETCH(const int, place);
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, line);
        LogCapture log;
        DocumentCache cache("db"_s);
        QByteArray file = exampleFile();
        bytes.isEmpty() ? file.truncate(place) : void(file.replace(place, bytes.size(), bytes));
        writeFile(cache.cacheFile(), file);
        cache.load();
        QStringList left;
        for (const QString &id : "a bü"_l) {
            if (!cache.find(id).isEmpty()) {
                left << id;
            }
            QCOMPARE(cache.contains(id), left.contains(id));
        }
        QTEST(left, "left");
        QCOMPARE(log.count(critical), line.contains("critical"_s) ? 1 : 0);
        QVERIFY(line.isEmpty() ? log.lines().filter("info|"_s).isEmpty() : log.contains(line));
    }

    void isForTheUserAloneInADirectoryOfItsOwn_data()
    {
        QTest::addColumn<QString>("directory");
        QTest::newRow("shop_2-(a)+$") << "shop_2-(a)+$"_s;
        QTest::newRow("a/b") << "a%2Fb"_s;
        QTest::newRow("../../x") << "%2E%2E%2F%2E%2E%2Fx"_s;
        QTest::newRow("%2F") << "%252%46"_s;
        QTest::newRow("Shop\xc3\xbc") << "%53hop%C3%BC"_s;
        QTest::newRow("") << "%"_s;
    }

    void isForTheUserAloneInADirectoryOfItsOwn()
    {
        QFETCH(const QString, directory);
        DocumentCache cache(QString::fromUtf8(QTest::currentDataTag()));
        const QString top = m_directory->path() + "/new"_s;
        QCOMPARE(cache.cacheFile(), top + "/cache/"_s + directory + "/docs.cache"_s);
        cache.insert("a"_s, QJsonObject());
        storeAndWait(cache);
        const auto access = [](const QString &path) {
            return int(QFile::permissions(path)) & 0x777;
        };
        QCOMPARE(access(cache.cacheFile()), 0x600);
        QCOMPARE(access(QFileInfo(cache.cacheFile()).path()), 0x700);
        QCOMPARE(access(top), 0x700);
    }

    void storesOnlyChanges()
    {
        DocumentCache cache("db"_s);
        const auto isStored = [&] {
            QFile::remove(cache.cacheFile());
            storeAndWait(cache);
            return QFile::exists(cache.cacheFile());
        };
        QVERIFY(!isStored());
        cache.insert("a"_s, R"({"_rev":"1-a"})"_json);
        QVERIFY(isStored() && !isStored());
        QVERIFY(!cache.find("a"_s).isEmpty());
        cache.invalidate("a"_s, "1-a"_s);
        cache.invalidate("unknown"_s, "1-a"_s);
        QVERIFY(!isStored());
        cache.invalidate("a"_s, "2-a"_s);
        QVERIFY(isStored());
        cache.invalidate("unknown"_s);
        QVERIFY(isStored());
    }

    void isAMapThroughAnySteps()
    {
        const quint32 seed = QRandomGenerator::global()->generate();
        qInfo("seed %u", seed);
        QRandomGenerator random(seed);
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt();
        auto cache = std::make_unique<DocumentCache>("db"_s);
        QMap<QString, int> expected;
        LogCapture log;
        for (int step = 1; step <= steps; ++step) {
            const QString id =
                QString(random.bounded(4), u'ü') + QString::number(random.bounded(300));
            if (random.bounded(3) > 0) {
                cache->insert(id,
                              { { "n"_s, step }, { "x"_s, QString(random.bounded(900), u'x') } });
                expected[id] = step;
            } else {
                cache->invalidate(id);
                expected.remove(id);
            }
            if (step % 500 == 0) {
                cache->store(); // and goes on while it is being written
            }
            if (step % 2000 == 0) {
                storeAndWait(*cache);
                cache = std::make_unique<DocumentCache>("db"_s);
                cache->load();
            }
            QCOMPARE(cache->find(id).value("n"_s).toInt(), expected.value(id));
        }
        for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
            QCOMPARE(cache->find(it.key()).value("n"_s).toInt(), it.value());
        }
        QVERIFY(log.contains("info|Finished cache compaction in "_s) && !log.contains(critical));
    }

    void compactsWhenItIsWorthIt()
    {
        LogCapture log;
        const auto compactions = [&] { return log.count("info|Finished cache compaction"_s); };
        for (const int size : { 262142, 262143 }) { // and one byte for the id
            DocumentCache cache;
            cache.insert("a"_s, jsonOfSize(size));
            cache.insert("a"_s, QJsonObject());
            cache.compact();
            QCOMPARE(compactions(), size - 262142);
        }
        DocumentCache cache;
        const QByteArray megabyte = jsonOfSize(1024 * 1024);
        for (int i = 0; i < 65; ++i) {
            cache.insert("a"_s, megabyte);
        }
        QCOMPARE(compactions(), 2);
        QCOMPARE(cache.find("a"_s).value("n"_s).toString().size(), megabyte.size() - 8);
    }

    void makesRoomAtItsLimitOrDoesWithout()
    {
        LogCapture log;
        CacheTable table({}, {}, 100);
        const auto insert = [&](const char *id, size_t size) {
            table.insert(id, std::string(size - 1, 'x'), 0);
            return table.find(id) >= 0;
        };
        QVERIFY(insert("a", 40) && insert("b", 40) && insert("b", 60)); // in place of the former
        QCOMPARE(table.blockSize(), 100);
        QVERIFY(!insert("c", 1) && !insert("a", 41) && insert("c", 40));
        QCOMPARE(table.size(), 2);
        QCOMPARE(table.json(table.find("b")), std::string_view(std::string(59, 'x')));
        QCOMPARE(log.count("info|Finished cache compaction"_s), 2);
        QCOMPARE(log.count("|warning|The cache is full, document c is not cached"_s), 1);
        QCOMPARE(log.count("|warning|"_s), 1);
    }

    void keepsWhatItCannotStore()
    {
        LogCapture log;
        DocumentCache cache("db"_s);
        QVERIFY(QDir().mkpath(cache.cacheFile() + "/directory"_s));
        cache.insert("a"_s, QJsonObject());
        storeAndWait(cache);
        QCOMPARE(log.lines().filter(critical),
                 QStringList(critical + "Failed to persist document cache - open failed"_s));
        QVERIFY(cache.contains("a"_s));
        QVERIFY(QDir(cache.cacheFile()).removeRecursively());
        cache.insert("b"_s, QJsonObject());
        storeAndWait(cache);
        QCOMPARE(log.count("info|Persisted cache as "_s + cache.cacheFile()), 1);
    }

    void removesWhatKilledWritersLeft()
    {
        DocumentCache cache("db"_s);
        const auto make = [&](const QString &ending, int hours) {
            QFile file(cache.cacheFile() + ending);
            QVERIFY(file.open(QIODevice::WriteOnly)
                    && file.setFileTime(QDateTime::currentDateTime().addSecs(-3600LL * hours),
                                        QFileDevice::FileModificationTime));
        };
        make(".oldOne"_s, 25);
        make(".inUse1"_s, 23);
        make(""_s, 25);
        cache.load();
        QCOMPARE(QFileInfo(cache.cacheFile()).dir().entryList(QDir::Files),
                 "docs.cache docs.cache.inUse1"_l);
    }

    void bringsDocumentsUpWithoutANetwork()
    {
        {
            Context context(QUrl(), "db"_s);
            context.documentCache()->insert("a"_s, R"({"_id":"a","_rev":"1-a","type":"tag"})"_json);
            context.persistCache();
            QThreadPool::globalInstance()->waitForDone();
        }
        Context context(QUrl(), "db"_s);
        QVERIFY(QSignalSpy(context.loadDocument("a"_s), &LoadRequest::finished).wait());
        QVERIFY(context.loadedDocument("a"_s) && context.loadedDocument("a"_s)->wasCached());
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

QTEST_GUILESS_MAIN(tst_CacheFile)
#include "tst_cachefile.moc"
