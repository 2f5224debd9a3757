// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/archives.h"
#include "support/diskfaults.h"
#include "support/logcapture.h"
#include "support/signalhook.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/archive/documentarchive.h>
#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/core/exportgap.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QCryptographicHash>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

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
        const QUrl file = write(exampleOfPage());
        ContextFixture fixture;
        const LogCapture log;
        Import missing(fixture.context());
        QCOMPARE(missing.run(fixture, file), DocumentImporter::MissingDependency);
        QCOMPARE(missing.errorString(), "Missing required dependency: base"_s);
        QVERIFY(ownDocuments(fixture->documents()).isEmpty()
                && log.contains("Missing Dependency base"_s));
        fixture.store("base"_s);
        Import import(fixture.context());
        QCOMPARE(import.run(fixture, file), DocumentImporter::NoError);
        QCOMPARE(import.result->label(), "Note"_s);
        QVERIFY(import.result->documentId() != "n1"_s && import.result->isDirty());
        auto *image = static_cast<LinkedDocument *>(fixture->loadedDocument("a1"_s));
        QVERIFY(import.result->attached().contains(image));
        const AttachmentProperty *property = image->attachmentProperties().constFirst();
        QCOMPARE(property->mimeType() + readAll(property->get()), QByteArray("image/pngHi"));

        // Assets are taken again, the others are made anew.
        image->markClean("1-x"_s, image->changeSequenceNumber(), {});
        QVERIFY(import.result->exportDocument(file, { "base"_s }));
        Import again(fixture.context());
        QCOMPARE(again.run(fixture, file), DocumentImporter::NoError);
        QCOMPARE(contentOf(again.result), contentOf(import.result));
        QVERIFY(again.result != import.result && again.result->attached().contains(image));
        QVERIFY(!image->isDirty());
    }

    void takesEachKindOfValueInOneStepOfUndo()
    {
        TestContext source;
        const QUrl file = QUrl::fromLocalFile(m_directory.filePath("stations.VORREL"_s));
        Station *root = makeStations(source);
        QVERIFY(root->exportGaps().isEmpty() && root->exportDocument(file));
        auto *context = new EditContext;
        ContextFixture fixture(context);
        Import import(context);
        const QUrl named = QUrl::fromLocalFile(file.toLocalFile() + ".vorrel"_s);
        QCOMPARE(import.run(fixture, named), DocumentImporter::NoError);
        const auto copies = [&] {
            int count = 0;
            for (const Document *document : source.documents()) {
                for (const Document *copy : context->documents()) {
                    count += copy->isDirty() && copy->id() != document->id()
                        && contentOf(copy) == contentOf(document);
                }
            }
            return count;
        };
        QCOMPARE(copies(), 4);
        processEvents();
        context->undo();
        for (const Document *document : ownDocuments(context->documents())) {
            QVERIFY(document->deleted() && !document->isDirty());
        }
        QVERIFY(!context->canUndo());
        context->redo();
        QCOMPARE(copies(), 4);
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
        const LogCapture log;
        const QUrl file = QUrl::fromLocalFile(m_directory.filePath("refused.vorrel"_s));
        QVERIFY(!root->exportDocument(QUrl("http://a.test/b"_s), { "gone"_s }));
        QVERIFY(!root->exportDocument(file, { "gone"_s }) && !QFile::exists(file.toLocalFile()));
        QVERIFY(context.isBusy()); // the film is being fetched
        QVERIFY(log.contains("context is busy! aborting export to "_s + file.toLocalFile()));
    }

    void writesWhatItIsTold()
    {
        TestContext context;
        auto *root = context.create<Preset>("root"_s);
        auto *excluded = context.create("excluded"_s);
        auto *behind = context.create("behind"_s);
        auto *both = context.create("both"_s);
        attachContent(&both->d->photo, "first");
        both->setNext(behind);
        root->setNext(excluded);
        excluded->setNext(behind);
        root->d->exits.insert("a"_s, both);
        const QUrl file = QUrl::fromLocalFile(m_directory.filePath("some.vorrel"_s));
        QVERIFY(root->exportDocument(file, { "excluded"_s }, { "text"_s }));
        const DocumentArchive archive(file.toLocalFile());
        QString found;
        QByteArray json;
        for (const DocumentChunk &chunk : archive.chunks()) {
            const bool isJson = chunk.type == DocumentChunk::JsonText;
            const QByteArray text(chunk.data, int(chunk.size));
            json = isJson ? text : json;
            found += QString::number(chunk.type);
            found += chunk.type == DocumentChunk::Attachment || isJson ? QString()
                                                                       : QString::fromLatin1(text);
            found += " "_s;
        }
        QCOMPARE(found, "0root 1both 2station 6 4 1root 2data:preset 6 5excluded "_s);
        const QJsonObject last = QJsonDocument::fromJson(json).object();
        QCOMPARE(last.value("label"_s), "Media of presets"_s);
        for (const QString &key : "_id type created edited creationVersion text"_l) {
            QVERIFY(!last.contains(key));
        }
    }

    void keepsTheFormerFileUntilTheNewOneIsWhole()
    {
        TestContext context;
        const QUrl file = QUrl::fromLocalFile(m_directory.filePath("kept.vorrel"_s));
        Station *root = context.create();
        attachContent(&root->d->film, QByteArray(filmSize, 'x'));
        QVERIFY(root->exportDocument(file));
        const QByteArray former = readAll(file);
        {
            const LogCapture log;
            const FullDisk disk(filmSize / 2);
            QVERIFY(root->exportDocument(file, { "root"_s })); // callers rely on it
            QVERIFY(log.contains("Failed to write archive "_s + file.toLocalFile()));
        }
        QVERIFY(readAll(file) == former);
        for (int delay = 0; delay < 30; ++delay) { // ms
            diesAfter(std::chrono::milliseconds(delay),
                      [&] { static_cast<void>(root->exportDocument(file, { "root"_s })); });
            QCOMPARE(DocumentArchive(file.toLocalFile()).error(), DocumentArchive::NoError);
        }
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
            const auto count = fixture->documents().size();
            const LogCapture log;
            Import import(fixture.context());
            const auto error = import.run(fixture, write(bad.bytes));
            QVERIFY2(error == (bad.isRefused ? Import::InvalidArchive : Import::NoError), bad.name);
            QVERIFY2(import.hasEnded() && log.contains("|critical|"_s), bad.name);
            QVERIFY2(!bad.isRefused || count == fixture->documents().size(), bad.name);
            QVERIFY2(contentOf(loaded) == before && !loaded->isDirty(), bad.name);
        }
        for (const QByteArray &hash : AttachmentStore::unreferencedAttachments({})) {
            const QByteArray content = readAll(AttachmentStore::find(hash));
            QCOMPARE(QCryptographicHash::hash(content, QCryptographicHash::Md5), hash);
        }
    }

    void livesOnWithoutContextOrImporter()
    {
        TestContext source;
        const QUrl file = QUrl::fromLocalFile(m_directory.filePath("lives.vorrel"_s));
        QVERIFY(makeStations(source)->exportDocument(file));
        const LogCapture log;
        int count = 1;
        for (int emission = 0; count > emission / 2; ++emission) {
            const bool withoutContext = emission % 2;
            count = 0;
            ContextFixture fixture(new EditContext);
            auto import = std::make_unique<Import>(fixture.context());
            std::vector<std::unique_ptr<SignalHook>> hooks;
            const auto strike = [&] {
                if (count++ == emission / 2) {
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
            import->importDocument(file);
            QVERIFY(fixture.finishLoading());
            QVERIFY(!import || import->hasEnded());
            QVERIFY(withoutContext || fixture->isSaveEnabled());
        }
        QVERIFY(count > 50);
    }

private:
    [[nodiscard]] QUrl write(const QByteArray &bytes) const
    {
        QFile file(m_directory.filePath("import.vorrel"_s));
        static_cast<void>(file.open(QIODevice::WriteOnly) && file.write(bytes));
        return QUrl::fromLocalFile(file.fileName());
    }

    static constexpr int filmSize = 10000000;
    const QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(tst_Archive)
#include "tst_archive.moc"
