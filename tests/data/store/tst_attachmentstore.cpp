// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/logcapture.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QBuffer>
#include <QtCore/QCryptographicHash>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThreadPool>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using Store = AttachmentStore;

namespace {

const QString category = "vorrel.attachmentstore|"_s;
const QByteArray hash = QByteArray::fromHex("d41d8cd98f00b204e9800998ecf8427e");

QString pathOf(const QByteArray &other)
{
    return Store::storeDir().filePath(QLatin1String(other.toHex().insert(2, '/')));
}

struct EndlessDevice : QBuffer
{
    bool seek(qint64) override { return false; }
    bool atEnd() const override { return false; }
    qint64 readData(char *, qint64) override { return result; }
    qint64 result = -1;
};

} // namespace

class tst_AttachmentStore : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        vo::Locations::setCacheLocation(m_directory.path() + "/new"_s);
        LogCapture log;
        QVERIFY(!Store::storeAttachment("x", hash).isValid() && !Store::contains(hash));
        QVERIFY(Store::unreferencedAttachments({}).isEmpty());
        QCOMPARE(log.count(category + "critical|"_s), 1);
        const Context context;
        Store::init();
        QCOMPARE(log.lines().at(1), category + "info|Initializing attachment store"_s);
        QCOMPARE(log.count("Initializing"_s), 1);
        QCOMPARE(Store::storeDir().path(), m_directory.path() + "/new/_data/att"_s);
        QCOMPARE(int(Store::storeDir().count()) - 2, 256);
        for (const QString &path : ".. . 00 ff"_l) {
            QVERIFY(!(QFile::permissions(Store::storeDir().filePath(path)) & 0x77));
        }
    }

    void storesWholeContents_data()
    {
        QTest::addColumn<bool>("fromDevice");
        QTest::newRow("from memory") << false;
        QTest::newRow("from a device") << true;
    }

    void storesWholeContents()
    {
        QFETCH(const bool, fromDevice);
        for (const int size : { 0, 1, 1024 * 1024, 3 * 1024 * 1024 + 1 }) {
            QByteArray content(size, 'x');
            QBuffer device(&content); // not open
            const auto store = [&] {
                return fromDevice ? Store::storeAttachment(&device, hash)
                                  : Store::storeAttachment(content, hash);
            };
            QCOMPARE(Store::fileSize(hash), -1);
            QCOMPARE(store(), QUrl::fromLocalFile(pathOf(hash)));
            QFile file(Store::find(hash).toLocalFile());
            QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll() == content);
            QCOMPARE(Store::fileSize(hash), size);
            QVERIFY(!(QFile::permissions(file.fileName()) & 0x77)); // of others
            // What is there is neither read nor written again.
            device.close();
            QVERIFY(QFile::resize(file.fileName(), 7) && store().isValid() && !device.isOpen());
            QCOMPARE(Store::fileSize(hash), 7);
            QVERIFY(Store::removeAttachment(hash) && !Store::find(hash).isValid());
            QVERIFY(!Store::removeAttachment(hash));
            // Only the form from memory remembers, until clear(), that the file is there.
            QVERIFY(store().isValid() && file.remove());
            QCOMPARE(Store::contains(hash), !fromDevice);
            Store::clear();
            QVERIFY(!Store::contains(hash));
        }
    }

    void refusesOtherHashesAndMissingDirectories()
    {
        QVERIFY(Store::storeDir().rmdir("00"_s));
        LogCapture log;
        for (const QByteArray &other :
             { QByteArray(), hash.left(1), hash.left(15), hash + "x", QByteArray(16, '\0') }) {
            QBuffer device;
            QVERIFY(!Store::storeAttachment("x", other).isValid());
            QVERIFY(!Store::storeAttachment(&device, other).isValid() && !Store::contains(other));
        }
        QCOMPARE(log.count("critical|Failed to open store file "_s), 5);
        QCOMPARE(log.count("critical|Failed to open file in attachment store: "_s), 5);
    }

    void survivesFaultsOfDevices()
    {
        LogCapture log;
        static QtMessageHandler capture; // a handler may use the store
        capture = qInstallMessageHandler([](auto type, auto &context, auto &text) {
            Store::clear();
            capture(type, context, text);
        });
        const auto refuses = [&log](QIODevice &device, const QString &reason) {
            return !Store::storeAttachment(&device, hash).isValid()
                && QFileInfo(pathOf(hash)).dir().isEmpty()
                && log.lines().last().endsWith("critical|Failed to "_s + reason + ": "_s
                                               + QLatin1String(hash.toHex()));
        };
        QFile missing("/missing"_s);
        QVERIFY(refuses(missing, "file for reading"_s));
        EndlessDevice device;
        QVERIFY(refuses(device, "read source file"_s));
        device.result = 0;
        QVERIFY(refuses(device, "read source file"_s));
        device.result = 1;
        QVERIFY(device.read(1).size() == 1 && refuses(device, "rewind to file start"_s));
    }

    void takesManyWritersAndTellsWhatIsThere()
    {
        QSet<QByteArray> hashes;
        for (int number = 0; number < 60; ++number) {
            QByteArray content(16, char('a' + number % 20)); // and its own name
            hashes << content;
            QThreadPool::globalInstance()->start([number, content]() mutable {
                QBuffer device(&content);
                number % 3 ? Store::storeAttachment(content, content)
                           : Store::storeAttachment(&device, content);
            });
        }
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(hashes.remove("aaaaaaaaaaaaaaaa"));
        const auto found = Store::unreferencedAttachments({ "aaaaaaaaaaaaaaaa" });
        QCOMPARE(QSet<QByteArray>(found.begin(), found.end()), hashes);
    }

private:
    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(tst_AttachmentStore)
#include "tst_attachmentstore.moc"
