// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextlife.h"
#include "support/incubatornest.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/signalhook.h"
#include "support/updatehandler.h"

#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/typeregistry_p.h>
#include <vorrel/data/documents/tag.h>
#include <vorrel/data/properties/langstring.h>

#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

const QJsonObject plainTag = R"({"_id":"plain","type":"tag"})"_json;

} // namespace

/// A class with a document that every Context has.
class HouseRules : public LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "houserules")
    Q_CLASSINFO("AutoInstance", "house.rules")
public:
    using LinkedDocument::LinkedDocument;
    [[nodiscard]] StorageFlags storageFlags() const override { return CreatedInternally; }
};

class tst_Context : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void mayDieInASlotOfEachSignal()
    {
        LogCapture log;
        QList<QByteArray> names {
            "LoadQueue loadingChanged",  "LoadQueue documentNotFound",
            "LoadRequest finished",      "DocumentIncubator incubatingChanged",
            "Document editedChanged",    "Document labelChanged",
            "Document deletedChanged",   "SaveQueue finished",
            "SaveQueue progressChanged",
        };
        const QList<QByteArray> own = signalNames(Context::staticMetaObject);
        for (const QByteArray &name : own) {
            names << "Context " + name;
        }
        names.removeOne("Context languageChanged"); // these two never come
        names.removeOne("Context countryChanged");
        for (const QByteArray &name : std::as_const(names)) {
            const QList<QByteArray> words = name.split(' ');
            int lives = 0;
            while (diesInSlot("vo::data::" + words.at(0), words.at(1), lives)) {
                ++lives;
            }
            QVERIFY2(lives > 0, name);
        }
    }

    void mayDieWithWorkOpen()
    {
        IncubatorNest fixture;
        fixture.lay("egg");
        fixture.couch().hold();
        const QPointer<LoadRequest> request = fixture->loadDocuments("a gone"_l);
        fixture.tick();
        const QPointer<LinkedDocument> document(fixture.create("b"_s));
        document->setLabel("x"_s); // a task
        fixture->removeDocument(fixture.create("c"_s, "1-x"_s));
        fixture.create("c"_s); // two tasks hold the former one, which must not go twice
        const QPointer<Document> bare(new Tag(fixture.context())); // in no table
        QSignalSpy changes(fixture.context(), &Context::hasLocalChangesChanged);
        fixture.destroyContext();
        QVERIFY(!request && !document && !bare && changes.isEmpty());
        fixture.couch().release();
        processEvents();
    }

    void anotherDatabaseHasAnotherCacheAndTheSameDocuments()
    {
        LogCapture log;
        ContextFixture fixture;
        LinkedDocument *document = fixture.create("a"_s);
        const QSharedPointer<DocumentCache> cache = fixture->documentCache();
        QStringList names;
        QObject::connect(fixture.context(), &Context::databaseChanged, [&](const QString &name) {
            names << name;
            QCOMPARE(fixture->documentCache(), cache); // the new one is not open yet
            if (name == "b"_s) {
                fixture->setDatabase("c"_s); // the last one wins
            }
        });
        fixture->setDatabase("b"_s);
        QCOMPARE(names, "b c"_l);
        QCOMPARE(fixture->documentCache(), DocumentCache::getCache("c"_s));
        QCOMPARE(fixture->loadedDocument("a"_s), document);
        QCOMPARE(log.count(" with 1 unsaved documents"_s), 2);
    }

    void makesOnlyDocumentsThatCanBe()
    {
        const QString taken = "vorrel.data.context|critical|A document with the id %1 exists"_s;
        const QString unknown = "vorrel.data|critical|Creating unknown document: %1"_s;
        const QList<QStringList> cases {
            // type, id, and if it is refused the line that says so
            { "tag"_s, "free"_s },
            { "tag"_s, ""_s },
            { "data:thing"_s, "g"_s },
            { "ship"_s, ""_s, unknown.arg("ship"_s) },
            { ""_s, ""_s, unknown.arg(""_s) },
            { "tag"_s, "made"_s, taken.arg("made"_s) },
            { "tag"_s, "plain"_s, taken.arg("plain"_s) }, // which is not built
            { "tag"_s, "日"_s, "vorrel.data.context|warning|Refusing the document id"_s },
        };
        for (const QStringList &row : cases) {
            ContextFixture fixture;
            fixture.create("made"_s);
            fixture->addDocumentNode("plain", plainTag);
            LogCapture log;
            QSignalSpy added(fixture.context(), &Context::documentAdded);
            Document *document = fixture->createDocumentWithId(row.at(0), row.at(1));
            QCOMPARE(added.size(), document ? 1 : 0);
            QCOMPARE(log.count(row.value(2)), row.size() - 2);
            QCOMPARE(document != nullptr, row.size() == 2);
            if (document) {
                QCOMPARE(document->type(), row.at(0));
                QCOMPARE(document->documentId().size(),
                         row.at(1).isEmpty() ? 32 : row.at(1).size());
                QCOMPARE(fixture->loadedDocument(document->documentId()), document);
                QVERIFY(document->isDirty() && document->isLocal());
                QVERIFY(document->parent()); // else JavaScript could come to own it
                QCOMPARE(QQmlEngine::objectOwnership(document), QQmlEngine::CppOwnership);
            }
        }
    }

    void creationHandlersRunFromTheShortestTypeAndMayAddOrDestroy()
    {
        ContextFixture fixture;
        QStringList calls;
        for (const QString &type : "data:thing:part data data:thing dat data: tag data"_l) {
            fixture->addCreationHandler(type, [&, type](Document *) {
                calls << type;
                for (int i = 0; i < 100; ++i) { // enough to move what holds them
                    fixture->addCreationHandler(type, [&](Document *) { calls << "late"_s; });
                    fixture->addCreationHandler(QString::number(i), {});
                }
            });
        }
        QVERIFY(fixture->createDocument("data:thing:part"_s));
        QCOMPARE(calls, "data data data:thing data:thing:part"_l);
        fixture.store("b"_s);
        QVERIFY(fixture.load("b"_s)); // loaded ones count as well
        QCOMPARE(calls.mid(4), "tag"_l);
        fixture->addCreationHandler("tag"_s, [](Document *document) { delete document; });
        QVERIFY(!fixture.create("a"_s) && !fixture->isLoaded("a"_s));
    }

    void oneObjectForEachId()
    {
        LogCapture log;
        ContextFixture fixture;
        DocumentNode *node = fixture->addDocumentNode("plain", plainTag);
        QCOMPARE(fixture->addDocumentNode("plain", {}), node);
        QVERIFY(ownDocuments(fixture->documents()).isEmpty()); // not built yet
        Document *document = fixture->loadedDocument("plain"_s);
        QVERIFY(document && document == node->document());
        node->instantiate();
        QCOMPARE(fixture->loadedDocument("plain"_s), document);
        QVERIFY(log.lines().isEmpty());
        // Somebody makes another object of it.
        delete LinkedDocument::create(plainTag, fixture.context());
        QVERIFY(log.contains("vorrel.data.context|critical|A second object for document plain"_s));
        QCOMPARE(fixture->loadedDocument("plain"_s), document);
        // The key of a document wins over the id that it holds.
        fixture->addDocumentNode("b", plainTag);
        QCOMPARE(fixture->loadedDocument("b"_s)->documentId(), "b"_s);
        QVERIFY(log.contains("vorrel.data|critical|Document b holds the id \"plain\""_s));
    }

    void tellsOfDirtyAndLocalDocumentsAndOfEditsOnceATurn()
    {
        ContextFixture fixture;
        QSignalSpy edges(fixture.context(), &Context::hasLocalChangesChanged);
        QSignalSpy reports(fixture.context(), &Context::documentChanged);
        LinkedDocument *first = fixture.create("a"_s, "1-x"_s);
        LinkedDocument *second = fixture.create("b"_s);
        QCOMPARE(ownDocuments(fixture->localDocuments()), QList<Document *>({ second }));
        QCOMPARE(fixture->dirtyDocuments(), QList<LinkedDocument *>({ second }));
        processEvents();
        reports.clear();
        first->setLabel("one"_s);
        first->setLabel("two"_s);
        processEvents();
        QCOMPARE(reports.size(), 1);
        first->markClean("2-x"_s, first->changeSequenceNumber(), {});
        edges.clear();
        second->setLabel("three"_s);
        delete second; // all lists forget it
        QVERIFY(ownDocuments(fixture->localDocuments()).isEmpty() && !fixture->hasLocalChanges());
        processEvents();
        QCOMPARE(edges.size(), 1);
        QCOMPARE(reports.size(), 1);
    }

    void removedDocumentsGoLaterAndOnce()
    {
        LogCapture log;
        ContextFixture fixture;
        fixture.store("a"_s);
        const QPointer<LinkedDocument> document(fixture.load("a"_s));
        document->setLabel("edited"_s);
        QStringList events;
        QObject::connect(fixture.context(), &Context::documentRemoved, [&](Document *removed) {
            events << "removed"_s;
            QVERIFY(removed == document && removed->deleted());
            QVERIFY(!fixture->isLoaded("a"_s)); // the table first
        });
        QObject::connect(document, &QObject::destroyed, [&] { events << "destroyed"_s; });
        fixture->removeDocument("a"_s);
        fixture->removeDocument("a"_s);
        QVERIFY(!fixture->loadedDocument("a"_s) && !document->isDirty() && events.isEmpty());
        QVERIFY(!fixture->documentCache()->contains("a"_s));
        QCOMPARE(log.count("vorrel.data.context|warning|Document a was removed from the database: "
                           "its unsaved edits are lost"_s),
                 1);
        processEvents();
        QCOMPARE(events, "removed destroyed"_l);
        QVERIFY(fixture.load("a"_s)); // it can come again
    }

    void aNewDocumentTakesTheIdOfADeletedOne()
    {
        ContextFixture fixture;
        LinkedDocument *former = fixture.create("a"_s, "1-x"_s);
        fixture.create("b"_s);
        fixture->linkDocuments(fixture->documentNode("a"), fixture->documentNode("b"));
        former->remove();
        LinkedDocument *successor = fixture.create("a"_s);
        processEvents(); // the former one goes
        QVERIFY(successor && successor->isLocal() && successor->isDirty());
        QCOMPARE(fixture->loadedDocument("a"_s), successor);
        QCOMPARE(ownDocuments(fixture->documents()).size(), 2);
        QVERIFY(fixture->documentNode("b")->incoming().isEmpty());
    }

    void edgesJoinBuiltDocumentsOnceAndGoWithThem()
    {
        ContextFixture fixture;
        QSignalSpy linked(fixture.context(), &Context::documentLinked);
        QSignalSpy unlinked(fixture.context(), &Context::documentUnlinked);
        fixture.create("a"_s);
        DocumentNode *a = fixture->documentNode("a");
        DocumentNode *b = fixture->addDocumentNode("plain", plainTag);
        fixture->linkDocuments(a, b);
        fixture->unlinkDocuments(a, b);
        QVERIFY(linked.isEmpty() && unlinked.isEmpty() && b->document()); // now it is built
        fixture->linkDocuments(a, b);
        fixture->linkDocuments(a, b);
        fixture->linkDocuments(b, a);
        QCOMPARE(linked.size(), 3);
        QCOMPARE(linked.constFirst(), QVariantList({ QByteArray("a"), QByteArray("plain") }));
        QVERIFY(a->outgoing().size() == 1 && a->outgoing() == b->incoming());
        fixture->unlinkDocuments(a, b);
        QVERIFY(a->outgoing().isEmpty() && b->incoming().isEmpty() && !a->incoming().isEmpty());
        fixture->linkDocuments(a, b);
        fixture->linkDocuments(a, a);
        fixture->removeDocument("a"_s);
        processEvents();
        QCOMPARE(unlinked.size(), 3); // what it referred to
        QVERIFY(b->incoming().isEmpty() && b->outgoing().isEmpty());
        fixture->linkDocuments(b, b);
        delete b->document(); // by somebody else
        QVERIFY(!fixture->isLoaded("plain"_s));
    }

    void onlyOtherRevisionsReachTheUpdateHandler()
    {
        ContextFixture fixture;
        const auto announce = [&](const QString &id, const QString &revision) {
            QMetaObject::invokeMethod(fixture.context(), "handleNewRevision", Q_ARG(QString, id),
                                      Q_ARG(QString, revision));
        };
        QStringList log;
        fixture.create("a"_s, "1-x"_s);
        fixture.create("?"_s, "1-x"_s); // what Latin-1 makes of the one below
        fixture->addDocumentNode("plain", plainTag);
        fixture->setUpdateHandler(new UpdateHandler(&log, [&](LinkedDocument *document) {
            if (document->documentId() == "a"_s) {
                announce("?"_s, "2-x"_s); // itself inside itself
                return;
            }
            fixture->setUpdateHandler(
                new UpdateHandler(&log, [&](LinkedDocument *) { fixture.destroyContext(); }));
        }));
        announce("a"_s, "1-x"_s);
        announce("plain"_s, "2-x"_s);
        announce("日"_s, "2-x"_s);
        QVERIFY(log.isEmpty());
        announce("a"_s, "2-x"_s);
        QCOMPARE(log, "a ? end end deleted"_l);
        announce("a"_s, "2-x"_s);
        QCOMPARE(log.mid(5), "a end deleted"_l);
    }

    void incubatesInOrderAndInSlices()
    {
        IncubatorNest nest;
        nest->setAttachmentDownloadEnabled(true); // only then is the Context busy
        nest.lay("a", 1).end = [&] { nest.lay("c"); };
        nest.lay("b").action = [&] {
            QMetaObject::invokeMethod(
                nest.incubator, [&] { nest.log << "event"_s; }, Qt::QueuedConnection);
            useUpTheSlice();
        };
        QVERIFY(nest.incubator->isIncubating() && nest->isBusy() && nest.log.isEmpty());
        processEvents();
        QCOMPARE(nest.log, "a a a! b b! event c c!"_l);
        QVERIFY(!nest.incubator->isIncubating() && !nest->isBusy());
        QCOMPARE(nest.changes.size(), 2);
    }

    void incubationIsDrainedAtOnceAlsoFromInside()
    {
        IncubatorNest nest;
        Egg &a = nest.lay("a", 1);
        a.action = [&] {
            a.action = nullptr;
            useUpTheSlice();
            nest.lay("b");
        };
        nest->finishIncubation();
        QCOMPARE(nest.log, "a a b"_l); // without ending the objects
        Egg &inner = nest.lay("c");
        inner.action = [&] {
            inner.action = nullptr;
            nest->finishIncubation();
        };
        nest.lay("d");
        processEvents();
        QCOMPARE(nest.log.mid(3), "c d c!"_l); // it passes the one that is served
        QVERIFY(!nest.incubator->isIncubating());
    }

    void incubationMayDestroyIt()
    {
        for (const QString &when : "incubate finish drain"_l) {
            IncubatorNest nest;
            Egg &egg = nest.lay("a");
            (when == "finish"_s ? egg.end : egg.action) = [&] { nest.destroyContext(); };
            nest.lay("late");
            if (when == "drain"_s) {
                nest->finishIncubation();
            }
            processEvents();
            QVERIFY(!nest.context() && !nest.log.contains("late"_s));
        }
    }

    void reportsDocumentsByType()
    {
        ContextFixture fixture;
        for (const QString &type : "tag data:thing tag data:box"_l) {
            fixture->createDocument(type);
        }
        new LangString(ownDocuments(fixture->documents()).constFirst());
        LogCapture log;
        fixture->documentReport();
        QCOMPARE(
            log.lines().replaceInStrings("vorrel.data.context|info|"_s, ""_s),
            "Document report for 6 documents|\"data:box\" 1|\"data:thing\" 1|"
            "\"mediaassetfolder:presets\" 1|\"mediaassetfolder:root\" 1|\"tag\" 2|Orphaned inline "
            "documents: 1|\"langstring\" 1|"
            "Cached 0 in 0 bytes, revisions 0|Known 6, linked 0, unsaved 4, wanted 0, incubating 0, tasks 0"_lines);
    }

    void everyContextHasTheAutomaticDocuments()
    {
        TypeRegistry::instance().addLinked<HouseRules>(); // for the rest of this program
        Context context;
        auto *rules = qobject_cast<HouseRules *>(context.loadedDocument("house.rules"_s));
        QVERIFY(rules && !context.hasLocalChanges()); // so that it overwrites nothing
    }
};

QTEST_GUILESS_MAIN(tst_Context)
#include "tst_context.moc"
