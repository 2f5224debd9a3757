// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/archives.h"
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/signalhook.h"
#include "support/testdocuments.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/archive/documentarchive.h>
#include <vorrel/data/archive/documentimporter.h>
#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/core/exportgap.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QCryptographicHash>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

/// A station that goes into archives as something else.
class Preset : public Station
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "preset")
    Q_CLASSINFO("ExportType", "data:preset")
    Q_CLASSINFO("ExportLabel", "Media of presets")
public:
    using Station::Station;
};

/// An importer that remembers how it ended.
struct Import : DocumentImporter
{
    explicit Import(Context *context)
    {
        setContext(context);
        connect(this, &DocumentImporter::importFinished, [this](Document *document) {
            ++ends;
            result = document;
        });
        connect(this, &DocumentImporter::importFailed, [this] { ++ends; });
    }

    /// Imports the file; the error, or -1 if there was no end or more than one.
    int run(ContextFixture &fixture, const QString &path)
    {
        ends = 0;
        importDocument(QUrl::fromLocalFile(path));
        static_cast<void>(fixture.finishLoading());
        return ends == 1 && !isImporting() ? error() : -1;
    }

    int ends = 0;
    QPointer<Document> result;
};

QJsonObject contentOf(const Document *document)
{
    const auto nameOf = [document](const QString &id) {
        return static_cast<Document *>(document->context()->loadedDocument(id))->label();
    };
    return vo::test::contentOf(static_cast<const LinkedDocument *>(document), nameOf);
}

void attach(AttachmentProperty &file, const QByteArray &content)
{
    const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Md5);
    AttachmentStore::storeAttachment(content, hash);
    file.set(hash, "image/png");
}

} // namespace

class tst_Archive : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        vo::Locations::setCacheLocation(m_directory.filePath("cache"_s));
        AttachmentStore::init();
        registerDocument<Station>();
        registerDocument<Note>();
        registerDocument<Preset>();
    }

    void importsTheExampleOfThePage()
    {
        QFile page(qEnvironmentVariable("VORREL_SOURCE_DIR") + "/docs/formats/archive.md"_s);
        QVERIFY(page.open(QIODevice::ReadOnly));
        QByteArray archive;
        while (!page.atEnd()) {
            const QByteArray line = page.readLine();
            const bool isDump = line.startsWith("    00") && line.mid(8, 2) == "  ";
            archive += isDump ? QByteArray::fromHex(line.mid(10, 48)) : QByteArray();
        }
        const QString path = write(archive);
        ContextFixture fixture;
        Import import(fixture.context());
        LogCapture log;
        QCOMPARE(import.run(fixture, path), int(DocumentImporter::MissingDependency));
        QCOMPARE(import.errorString(), "Missing required dependency: base"_s);
        QVERIFY(fixture->documents().isEmpty() && log.contains("Missing Dependency base"_s));
        fixture.store("base"_s);
        QCOMPARE(import.run(fixture, path), 0);
        QCOMPARE(import.result->label(), "Note"_s);
        QVERIFY(import.result->documentId() != "n1"_s && import.result->isDirty());
        auto *image = fixture->loadedDocument("a1"_s);
        QVERIFY(import.result->attached().contains(image));
        const AttachmentProperty *file = image->attachmentProperties().constFirst();
        QCOMPARE(file->mimeType(), QByteArray("image/png"));
        QFile content(file->get().toLocalFile());
        QVERIFY(content.open(QIODevice::ReadOnly) && content.readAll() == "Hi");
        // What is written is the same again, but for what the classes write by default.
        QVERIFY(import.result->exportDocument(QUrl::fromLocalFile(path), { "base"_s }));
        Import again(fixture.context());
        QCOMPARE(again.run(fixture, path), 0);
        QCOMPARE(contentOf(again.result), contentOf(import.result));
        QVERIFY(again.result != import.result && again.result->attached().contains(image));
    }

    void takesEachKindOfValueInOneStepOfUndo()
    {
        const QString path = m_directory.filePath("stations.VORREL"_s);
        TestContext source;
        exportStations(source, path);
        auto *context = new EditContext;
        ContextFixture fixture(context);
        Import import(context);
        QCOMPARE(import.run(fixture, path + ".vorrel"_s), 0);
        const auto compare = [&] {
            int count = 0;
            for (const Document *document : source.documents()) {
                for (const Document *copy : context->documents()) {
                    if (!copy->deleted() && copy->label() == document->label()) {
                        ++count;
                        QCOMPARE(contentOf(copy), contentOf(document));
                        QVERIFY(copy->isDirty() && copy->id() != document->id());
                    }
                }
            }
            QCOMPARE(count, 4);
        };
        compare();
        processEvents();
        context->undo();
        for (const Document *document : context->documents()) {
            QVERIFY(document->deleted() && !document->isDirty());
        }
        QVERIFY(!context->canUndo());
        context->redo();
        compare();
    }

    void tellsWhatIsMissing()
    {
        TestContext context;
        Station *root =
            context.load("root"_s, R"-({":data": {"s:a": {"b": "$ref(0,gone)"}}})-"_json);
        root->d->film.set(QByteArray(16, 'f'), "video/mp4");
        const QVariantList gaps = root->exportGaps();
        QCOMPARE(gaps.size(), 2);
        QCOMPARE(gaps.at(0).value<ExportGap>().missingId, "gone"_s);
        QCOMPARE(gaps.at(1).value<ExportGap>().attachment, "film"_s);
        QCOMPARE(gaps.at(1).value<ExportGap>().documentId, "root"_s);

        const LogCapture log;
        const QString path = m_directory.filePath("refused.vorrel"_s);
        QVERIFY(!root->exportDocument(QUrl("http://a.test/b"_s), { "gone"_s }));
        QVERIFY(!root->exportDocument(QUrl::fromLocalFile(path), { "gone"_s }));
        QVERIFY(context.isBusy() && !QFile::exists(path)); // the film is being fetched
        QVERIFY(log.contains("context is busy! aborting export to "_s + path));
        root->setDeleted(true);
        QVERIFY(!root->exportDocument(QUrl::fromLocalFile(path)));
    }

    void writesWhatItIsTold()
    {
        TestContext context;
        auto *root = context.create<Preset>("root"_s);
        auto *excluded = context.create("excluded"_s);
        auto *behind = context.create("behind"_s);
        auto *both = context.create("both"_s);
        attach(both->d->photo, "first");
        both->setNext(behind);
        root->setNext(excluded);
        excluded->setNext(behind);
        root->d->exits.insert("a"_s, both);
        root->setText("text"_s);
        const QString path = m_directory.filePath("some.vorrel"_s);
        QVERIFY(root->exportDocument(QUrl::fromLocalFile(path), { "excluded"_s }, { "text"_s }));
        const DocumentArchive archive(path);
        QString found;
        QByteArray last;
        for (const DocumentChunk &chunk : archive.chunks()) {
            const QByteArray text(chunk.data, int(chunk.size));
            const bool isShort = chunk.type != DocumentChunk::Attachment && !text.contains('{');
            found += QString::number(chunk.type) + QString::fromLatin1(isShort ? text : "") + " "_s;
            last = isShort ? last : text;
        }
        QCOMPARE(found, "0root 1both 2station 6 4 1root 2data:preset 6 5excluded "_s);
        const QJsonObject json = QJsonDocument::fromJson(last).object();
        QCOMPARE(json.value("label"_s), "Media of presets"_s);
        for (const QString &key : "_id type created edited creationVersion text"_l) {
            QVERIFY(!json.contains(key));
        }
        const LogCapture log;
        const QString nowhere = m_directory.filePath("no/such/place"_s);
        QVERIFY(both->exportDocument(QUrl::fromLocalFile(nowhere))); // callers rely on it
        QVERIFY(log.contains("Failed to write archive "_s + nowhere + ".vorrel"_s));
    }

    void refusesOrLeavesOutWhatIsWrong()
    {
        ContextFixture fixture(new EditContext);
        fixture.store("loaded"_s);
        Document *loaded = fixture.load("loaded"_s);
        const QJsonObject before = contentOf(loaded);
        const QList<BadArchive> archives = badArchives();
        QVERIFY(archives.size() > 120);
        for (const BadArchive &bad : archives) {
            const QString path = write(bad.bytes);
            const auto count = fixture->documents().size();
            Import import(fixture.context());
            const LogCapture log;
            const int error = import.run(fixture, path);
            const int expected =
                bad.isRefused ? DocumentImporter::InvalidArchive : DocumentImporter::NoError;
            QVERIFY2(error == expected, bad.name.constData());
            QVERIFY2(log.contains("|critical|"_s), bad.name.constData());
            QVERIFY2(!bad.isRefused || count == fixture->documents().size(), bad.name.constData());
            QVERIFY2(contentOf(loaded) == before && !loaded->isDirty(), bad.name.constData());
        }
        for (const QByteArray &hash : AttachmentStore::unreferencedAttachments({})) {
            QFile file(AttachmentStore::find(hash).toLocalFile());
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(QCryptographicHash::hash(file.readAll(), QCryptographicHash::Md5), hash);
        }
    }

    void livesOnWithoutContextOrImporter_data()
    {
        QTest::addColumn<bool>("withoutContext");
        QTest::addRow("without context") << true;
        QTest::addRow("without importer") << false;
    }
    void livesOnWithoutContextOrImporter()
    {
        QFETCH(const bool, withoutContext);
        const QString path = m_directory.filePath("lives.vorrel"_s);
        TestContext source;
        exportStations(source, path);
        const LogCapture log;
        int count = 0;
        for (int emission = 0; count >= emission; ++emission) {
            count = 0;
            ContextFixture fixture(new EditContext);
            auto import = std::make_unique<Import>(fixture.context());
            std::vector<std::unique_ptr<SignalHook>> hooks;
            const auto strike = [&] {
                if (count++ == emission) {
                    withoutContext ? fixture.destroyContext() : import.reset();
                }
            };
            const auto watch = [&](const QObject *sender, const QMetaObject &metaObject) {
                for (const QByteArray &name : signalNames(metaObject)) {
                    hooks.push_back(std::make_unique<SignalHook>(sender, name, strike));
                }
            };
            QObject::connect(fixture.context(), &Context::documentAdded, [&](Document *document) {
                watch(document, Station::staticMetaObject);
                watch(document, LinkedDocument::staticMetaObject);
            });
            watch(fixture.context(), Context::staticMetaObject);
            watch(import.get(), DocumentImporter::staticMetaObject);
            import->importDocument(QUrl::fromLocalFile(path));
            QVERIFY(fixture.finishLoading());
            QVERIFY(!import || (import->ends == 1 && !import->isImporting()));
            QVERIFY(withoutContext || fixture->isSaveEnabled());
        }
        QVERIFY(count > 50);
    }

private:
    /// Four stations with a value of each kind.
    void exportStations(TestContext &context, const QString &path)
    {
        auto *root = context.create();
        auto *next = context.create();
        auto *exit = context.create();
        auto *named = context.create();
        int number = 0;
        for (Station *station : { root, next, exit, named }) {
            station->setLabel("station %1"_s.arg(++number));
        }
        root->setNumber(3);
        root->setText("$ref(0,) and \"text\" ä"_s);
        root->setMoment(QDateTime(QDate(2025, 4, 12), QTime(12, 24), Qt::UTC));
        root->setTitle("title"_s);
        root->setStory("story"_s);
        root->setNext(next);
        next->setNext(named);
        root->d->palette.set({ Qt::red, Qt::blue });
        root->d->prices.set("AT"_s, 2.5);
        root->d->caption.insert("_"_s, "caption"_s);
        root->d->notes.insert(root->newNote("one"_s), -1);
        root->d->notes.insert(root->newNote("two"_s), -1);
        root->d->exits.insert("north"_s, exit);
        exit->setStructValue("a"_s, "station"_s, LinkedDocument::encodeReference(next));
        exit->setStructValue("a"_s, "named"_s, LinkedDocument::encodeReference(named));
        exit->setStructValue("a"_s, "list"_s, QJsonArray { named->documentId(), 1, "x"_s });
        attach(root->d->photo, "photo");
        attach(next->d->photo, "photo");
        attach(next->d->film, "film");
        QVERIFY(root->exportGaps().isEmpty() && root->exportDocument(QUrl::fromLocalFile(path)));
    }

    [[nodiscard]] QString write(const QByteArray &bytes) const
    {
        QFile file(m_directory.filePath("import.vorrel"_s));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
            ? file.fileName()
            : QString();
    }

    const QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(tst_Archive)
#include "tst_archive.moc"
