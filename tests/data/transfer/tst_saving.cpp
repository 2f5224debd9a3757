// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"
#include "support/testdocuments.h"

#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/context/savefailure.h>
#include <vorrel/data/documents/imageasset.h>
#include <vorrel/data/store/attachmentstore.h>
#include <vorrel/data/transfer/savequeue.h>

#include <QtCore/QTemporaryFile>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <sys/resource.h>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

/// The ids of the documents that were sent, in order.
QStringList sent(const FakeCouch &couch)
{
    QStringList ids;
    for (const FakeCouch::Call &call : couch.calls()) {
        if (call.verb == "PUT") {
            ids << call.resource();
        }
    }
    return ids;
}

/// Answers uploads, or anything else with another \p verb, until the responder is replaced.
void answer(FakeCouch &couch, const FakeCouch::Answer &answer, const QByteArray &verb = "PUT")
{
    couch.setResponder([=](const FakeCouch::Call &call) {
        return call.verb == verb ? std::optional(answer) : std::nullopt;
    });
}

} // namespace

class tst_Saving : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void whatOthersReferToGoesFirst()
    {
        ContextFixture fixture(new TestContext);
        const auto *context = static_cast<TestContext *>(fixture.context());
        const QStringList ids = "a b c d e"_l;
        QHash<QString, Station *> stations;
        for (const QString &id : ids) {
            stations[id] = qobject_cast<Station *>(fixture->createDocumentWithId("station"_s, id));
        }
        stations["a"_s]->setNext(stations["b"_s]);
        auto *note = stations["b"_s]->newNote("n"_s); // a reference in a part of a document
        stations["b"_s]->d->note.set(note);
        note->setStation(stations["c"_s]);
        stations["c"_s]->setStructValue("s"_s, "f"_s, "$ref(0,d)"_s);
        stations["d"_s]->d->exits.insert("k"_s, stations["e"_s]);
        QVERIFY(ownDocuments(context->documents()).size() == ids.size() && fixture.save());
        QCOMPARE(sent(fixture.couch()), "e d c b a"_l);
        // One alone needs nobody.
        stations["a"_s]->setText("edited"_s);
        QVERIFY(fixture.save());
        QCOMPARE(sent(fixture.couch()).mid(5), "a"_l);
    }

    void theDatabaseGetsTheDocument()
    {
        ContextFixture fixture;
        QSignalSpy saved(fixture.context(), &Context::saved);
        QSignalSpy canSave(fixture.context(), &Context::canSaveChanged);
        LinkedDocument *document = fixture.create("a/ä"_s);
        QVERIFY(fixture->canSave() && fixture->saveFailures().isEmpty());
        fixture->documentCache()->insert("a/ä"_s, R"({"_id":"a/ä"})"_json);
        QVERIFY(fixture.save());
        QVERIFY(!fixture->canSave() && !canSave.isEmpty());
        QCOMPARE(saved.value(0).value(0), QVariant(true));
        const FakeCouch::Call first = fixture.couch().calls().constFirst();
        QVERIFY(!first.request.hasRawHeader("If-Match"));
        QCOMPARE(first.request.rawHeader("Content-Type"), QByteArray("application/json"));
        QVERIFY(first.url.toEncoded().endsWith("/a%2F%C3%A4"));
        QJsonObject expected = document->serialize();
        expected.remove("_rev"_s);
        expected.insert("_attachments"_s, QJsonObject());
        QCOMPARE(first.json(), expected);
        QVERIFY(!document->revision().isEmpty() && !document->isLocal());
        QVERIFY(!fixture->documentCache()->contains("a/ä"_s));
        document->setLabel("b"_s);
        const QString revision = document->revision();
        QVERIFY(fixture.save());
        QCOMPARE(fixture.couch().calls().constLast().request.rawHeader("If-Match"),
                 revision.toLatin1());
        // Neither goes anywhere: what was never stored, and a second upload beside the first.
        fixture.create("gone"_s)->remove();
        QVERIFY(!fixture->canSave());
        fixture.startSaving();
        document->setLabel("c"_s);
        fixture->saveLocalChanges();
        QVERIFY(fixture.finishSaving() && document->isDirty());
        QVERIFY(fixture.save());
        QCOMPARE(saved.size(), 4);
    }

    void anUploadMayFail_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char *name, int status, const char *body, const char *reason) {
            QTest::newRow(name) << status << QByteArray(body) << QString::fromLatin1(reason);
        };
        row("forbidden", 403, R"({"error":"forbidden","reason":"Not you"})", "Not you");
        row("too large", 413, R"({"error":"too_large","reason":"a"})", "a");
        row("precondition", 412, R"({"reason":"Invalid attachment stub"})",
            "Invalid attachment stub");
        row("proxy page", 502, "<html>", "HTTP status 502");
        row("portal page", 200, "<html>", "");
        row("portal page as a success", 201, "<html>", "The database gave no usable revision");
        row("odd revision", 202, "{\"rev\":\"\\u0001\"}", "The database gave no usable revision");
        row("time-out", 0, "", "made by the test");
    }
    void anUploadMayFail()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        LogCapture log;
        ContextFixture fixture;
        QSignalSpy saved(fixture.context(), &Context::saved);
        const QList<LinkedDocument *> documents { fixture.create("a"_s), fixture.create("b"_s),
                                                  fixture.create("c"_s) };
        int uploads = 0;
        fixture.couch().setResponder([&](const FakeCouch::Call &) {
            const auto error = status ? QNetworkReply::NoError : QNetworkReply::TimeoutError;
            return ++uploads == 2 ? std::optional(FakeCouch::Answer { status, body, {}, error })
                                  : std::nullopt;
        });
        QVERIFY(!fixture.save());
        QCOMPARE(saved.size(), 1);
        QCOMPARE(saved.value(0).value(0), QVariant(false));
        QCOMPARE(fixture.couch().calls().size(), 2);
        QCOMPARE(log.count("|critical|"_s), 1);
        // The first is saved, the second is told of, the third was not touched.
        const QStringList tried = sent(fixture.couch());
        QCOMPARE(fixture->saveFailures().size(), 1);
        const SaveFailure failure = fixture->saveFailures().constFirst();
        QCOMPARE(failure.documentId(), tried.value(1));
        QCOMPARE(failure.document(), fixture->loadedDocument(tried.value(1)));
        QCOMPARE(failure.status(), status);
        QTEST(failure.reason(), "reason");
        for (const LinkedDocument *document : documents) {
            QCOMPARE(document->isDirty(), document->documentId() != tried.value(0));
        }
        // It goes last now, and if it works out nothing is left.
        QVERIFY(fixture.save());
        QCOMPARE(sent(fixture.couch()).constLast(), tried.value(1));
        QVERIFY(fixture->saveFailures().isEmpty());
    }

    void attachmentsGoWithTheirDocument_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("isInline");
        QTest::newRow("none") << 0 << true;
        QTest::newRow("last that fits") << 3932259 << true;
        QTest::newRow("first that does not") << 3932260 << false;
    }
    void attachmentsGoWithTheirDocument()
    {
        QFETCH(int, size);
        QFETCH(bool, isInline);
        LogCapture log;
        ContextFixture fixture;
        auto *asset =
            qobject_cast<ImageAsset *>(fixture->createDocumentWithId("asset:image"_s, "a"_s));
        QTemporaryFile file(QDir::tempPath() + "/XXXXXX.png"_s);
        QVERIFY(file.open() && file.resize(size));
        asset->setFile(QUrl::fromLocalFile(file.fileName()));
        const QString hash = asset->hash();
        QVERIFY(fixture.save());
        const auto entry = [&] {
            return fixture.couch().calls().constLast().json().value("_attachments"_s).toObject();
        };
        const QJsonObject stub { { hash, QJsonObject { { "stub"_s, true } } } };
        const QJsonObject stored =
            fixture.couch().document("a"_s).value("_attachments"_s).toObject();
        const QJsonObject content = stored.value(hash).toObject();
        QCOMPARE(content.value("content_type"_s).toString(), "image/png"_s);
        QCOMPARE(content.value("data"_s).toString().size(), (size + 2) / 3 * 4);
        QCOMPARE(entry(), isInline ? stored : stub);
        QCOMPARE(sent(fixture.couch()), isInline ? "a"_l : QStringList({ hash, "a"_s }));
        // What the database has does not go again, unless it turns out to lack it.
        asset->setLabel("b"_s);
        QVERIFY(fixture.save());
        QCOMPARE(entry(), stub);
        fixture.couch().store({ { "_id"_s, "a"_s }, { "_rev"_s, asset->revision() } });
        asset->setLabel("c"_s);
        QVERIFY(!fixture.save());
        QVERIFY(fixture.save());
        QCOMPARE(fixture.couch().document("a"_s).value("_attachments"_s).toObject(), stored);
        // Without the file there is a word about it.
        asset->setCurrentAttachments({});
        AttachmentStore::removeAttachment(QByteArray::fromHex(hash.toLatin1()));
        asset->setLabel("d"_s);
        static_cast<void>(fixture.save());
        QVERIFY(log.contains("Document a: there is no file %1 for its property file"_s.arg(hash)));
    }

    void aConflictIsDecided_data()
    {
        QTest::addColumn<int>("resolution");
        QTest::addColumn<QString>("label");
        QTest::newRow("local") << -1 << "mine"_s;
        QTest::newRow("keep local") << int(Context::KeepLocal) << "mine"_s;
        QTest::newRow("keep remote") << int(Context::KeepRemote) << "theirs"_s;
        QTest::newRow("stop") << int(Context::StopSaving) << "theirs"_s;
    }
    void aConflictIsDecided()
    {
        QFETCH(int, resolution);
        LogCapture log;
        ContextFixture fixture;
        fixture.store("a"_s);
        LinkedDocument *document = fixture.load("a"_s);
        document->setLabel("mine"_s);
        fixture.couch().store(R"({"_id":"a","_rev":"7-x","type":"tag","label":"theirs"})"_json);
        QStringList asked;
        if (resolution >= 0) {
            fixture->setConflictHandler([&](const Document *asking, const QString &revision) {
                asked << asking->documentId() << asking->revision() << revision;
                return Context::ConflictResolution(resolution);
            });
        }
        const bool isStopped = resolution == Context::StopSaving;
        QCOMPARE(fixture.save(), !isStopped);
        QVERIFY(fixture.finishLoading());
        QTEST(fixture.couch().document("a"_s).value("label"_s).toString(), "label");
        QCOMPARE(document->label(),
                 isStopped ? "mine"_s
                           : fixture.couch().document("a"_s).value("label"_s).toString());
        QCOMPARE(document->isDirty(), isStopped);
        QCOMPARE(document->revision(),
                 isStopped ? "1-a"_s : fixture.couch().document("a"_s).value("_rev"_s).toString());
        QCOMPARE(asked, resolution < 0 ? QStringList() : "a 1-a 7-x"_l);
        QCOMPARE(log.count("local wins over revision 7-x"_s), resolution <= 0 ? 1 : 0);
    }

    void aConnectionMayBreakInAnUpload_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<QByteArray>("tag");
        QTest::addColumn<bool>("saved");
        const int unknown = QNetworkReply::UnknownNetworkError;
        QTest::newRow("refused early") << unknown << QByteArray("\"1-a\"") << true;
        QTest::newRow("closed") << int(QNetworkReply::RemoteHostClosedError)
                                << QByteArray("\"1-a\"") << true;
        QTest::newRow("weak tag") << unknown << QByteArray("W/\"1-a\"") << true;
        QTest::newRow("no tag") << unknown << QByteArray() << false;
        QTest::newRow("empty tag") << unknown << QByteArray("\"\"") << false;
        QTest::newRow("odd tag") << unknown << QByteArray("\"1\"a\"") << false;
    }
    void aConnectionMayBreakInAnUpload()
    {
        QFETCH(int, error);
        QFETCH(QByteArray, tag);
        LogCapture log;
        ContextFixture fixture;
        fixture.store("a"_s);
        fixture.load("a"_s)->setLabel("mine"_s);
        fixture.couch().breakNext(1, QNetworkReply::NetworkError(error));
        answer(fixture.couch(), { 200, {}, { { "ETag", tag } } }, "HEAD");
        QTEST(fixture.save(), "saved");
        QCOMPARE(log.count("local wins"_s), 0);
        QCOMPARE(fixture->saveFailures().isEmpty(), !fixture->hasLocalChanges());
    }

    void conflictsWithoutEndAreSlowedDown()
    {
        LogCapture log;
        ManualClock clock;
        ContextFixture fixture;
        fixture.create("a"_s);
        int revision = 0;
        fixture.couch().setResponder([&](const FakeCouch::Call &call) {
            const QByteArray tag = "\"" + QByteArray::number(++revision) + "-x\"";
            return call.verb == "PUT" ? FakeCouch::Answer { 409, "{}", {} }
                                      : FakeCouch::Answer { 200, {}, { { "ETag", tag } } };
        });
        fixture->saveLocalChanges();
        const auto attempts = [&] { return sent(fixture.couch()).size(); };
        QTRY_COMPARE(attempts(), 5);
        QTRY_VERIFY(log.contains("still meets a conflict"_s));
        int expected = 5;
        for (const auto wait : { 1s, 2s, 4s, 8s, 16s, 30s, 30s }) {
            processEvents();
            clock.advance(wait - 1ms);
            processEvents();
            QCOMPARE(attempts(), expected);
            clock.advance(1ms);
            processEvents();
            QCOMPARE(attempts(), ++expected);
        }
        QCOMPARE(log.count("still meets a conflict"_s), 1);
        fixture.couch().setResponder({});
        fixture.couch().store(
            { { "_id"_s, "a"_s }, { "_rev"_s, QString::number(revision) + "-x"_s } });
        clock.advance(30s);
        QVERIFY(fixture.finishSaving() && !fixture->hasLocalChanges());
    }

    void whatHappensDuringAnUpload_data()
    {
        QTest::addColumn<int>("answers"); // that come before it happens
        QTest::addColumn<QString>("event");
        for (const char *event : { "edit", "destroy", "remove", "delete", "queue", "manager" }) {
            for (int answers = 0; answers < 3; ++answers) {
                QTest::addRow("%s after %d", event, answers)
                    << answers << QString::fromLatin1(event);
            }
        }
    }
    void whatHappensDuringAnUpload()
    {
        QFETCH(int, answers);
        QFETCH(QString, event);
        LogCapture log;
        ContextFixture fixture;
        fixture.store("a"_s);
        const QPointer<LinkedDocument> document = fixture.load("a"_s);
        document->setLabel("mine"_s);
        fixture.couch().store(R"({"_id":"a","_rev":"2-x","type":"tag"})"_json); // a conflict
        QSignalSpy saved(fixture.context(), &Context::saved);
        const auto former = fixture.couch().calls().size();
        bool isDone = false;
        fixture.couch().setResponder([&](const FakeCouch::Call &) {
            if (fixture.couch().calls().size() == former + answers + 1
                && !std::exchange(isDone, true)) {
                QMetaObject::invokeMethod(
                    this,
                    [&] {
                        if (event == "edit"_s) {
                            document->setLabel("newer"_s);
                        } else if (event == "destroy"_s) {
                            delete document;
                        } else if (event == "remove"_s) {
                            fixture->removeDocument("a"_s);
                        } else if (event == "delete"_s) {
                            document->remove();
                        } else if (event == "queue"_s) {
                            delete fixture->saveQueue();
                        } else {
                            fixture->setNetworkAccessManager(nullptr);
                        }
                    },
                    Qt::QueuedConnection);
            }
            return std::nullopt;
        });
        static_cast<void>(fixture.save());
        QVERIFY(!fixture->isSaving());
        QCOMPARE(saved.size(), 1);
        processEvents();
        fixture->setNetworkAccessManager(&fixture.couch());
        // Whatever that was: what is unsaved can be saved.
        QVERIFY(!fixture->canSave() || fixture.save());
        if (document && event == "edit"_s) {
            QCOMPARE(fixture.couch().document("a"_s).value("label"_s).toString(), "newer"_s);
        }
    }

    void aDeletionThatIsTakenBackIsAnEdit()
    {
        ContextFixture fixture;
        LinkedDocument *document = fixture.create("a"_s);
        const int sequence = document->changeSequenceNumber();
        fixture.couch().hold();
        fixture->saveLocalChanges();
        QTRY_COMPARE(sent(fixture.couch()), "a"_l);
        document->setDeleted(true);
        document->setDeleted(false);
        QCOMPARE(document->changeSequenceNumber(), sequence);
        QVERIFY(fixture.finishSaving() && document->isDirty());
    }

    void noDescriptorIsKeptForADocument()
    {
        rlimit former {};
        QCOMPARE(getrlimit(RLIMIT_NOFILE, &former), 0);
        rlimit few = former;
        few.rlim_cur = 256;
        ContextFixture fixture;
        constexpr int count = 600;
        for (int i = 0; i < count; ++i) {
            fixture->createDocument("tag"_s);
        }
        QCOMPARE(setrlimit(RLIMIT_NOFILE, &few), 0);
        const bool isSaved = fixture.save();
        setrlimit(RLIMIT_NOFILE, &former);
        QVERIFY(isSaved);
        QCOMPARE(sent(fixture.couch()).size(), count);
    }

    void aFullDiskLosesNothing()
    {
        LogCapture log;
        ContextFixture fixture;
        fixture.create("a"_s);
        const QByteArray place = qgetenv("TMPDIR");
        qputenv("TMPDIR", "/dev/null");
        QVERIFY(!fixture.save());
        qputenv("TMPDIR", place);
        QCOMPARE(log.count("Failed to open output file"_s), 1);
        QCOMPARE(fixture->saveFailures().size(), 1);
        QVERIFY(fixture.save());
    }
};

QTEST_GUILESS_MAIN(tst_Saving)
#include "tst_saving.moc"
