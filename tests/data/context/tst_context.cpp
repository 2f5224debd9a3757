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

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

const QJsonObject plainTag = R"({"_id":"plain","type":"tag"})"_json;

void announceRevision(Context *context, const QString &id, const QString &revision)
{
    QMetaObject::invokeMethod(context, "handleNewRevision", Q_ARG(QString, id),
                              Q_ARG(QString, revision));
}

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
    void mayDieInASlotOfEachSignal_data()
    {
        QTest::addColumn<QByteArray>("senderClass");
        QTest::addColumn<QByteArray>("signal");
        const auto add = [](const char *senderClass, const QList<QByteArray> &names) {
            for (const QByteArray &name : names) {
                QTest::newRow(name) << QByteArray("vo::data::") + senderClass << name;
            }
        };
        QList<QByteArray> names = signalNames(Context::staticMetaObject);
        names.removeOne("languageChanged"); // these two never come
        names.removeOne("countryChanged");
        add("Context", names);
        add("LoadQueue", { "loadingChanged", "documentNotFound" });
        add("LoadRequest", { "finished" });
        add("DocumentIncubator", { "incubatingChanged" });
        add("Document", { "editedChanged", "labelChanged", "deletedChanged" });
    }
    void mayDieInASlotOfEachSignal()
    {
        QFETCH(QByteArray, senderClass);
        QFETCH(QByteArray, signal);
        LogCapture log;
        int lives = 0;
        while (diesInSlot(senderClass, signal, lives)) {
            ++lives;
        }
        QVERIFY(lives > 0);
    }

    void mayDieWithWorkOpen()
    {
        IncubatorNest fixture;
        fixture.lay("egg");
        fixture.couch().hold();
        const QPointer<LoadRequest> request = fixture->loadDocuments("a gone"_l);
        fixture.tick();
        const QPointer<LinkedDocument> document(fixture.create("b"_s));
        document->setLabel("x"_s);                                 // a task
        const QPointer<Document> bare(new Tag(fixture.context())); // in no table
        QSignalSpy changes(fixture.context(), &Context::hasLocalChangesChanged);
        fixture.destroyContext();
        QVERIFY(!request && !document && !bare);
        QCOMPARE(changes.size(), 0);
        fixture.couch().release();
        processEvents();
    }

    // Configuration

    void configurationTellsOfChangesOnly()
    {
        Context context;
        QSignalSpy url(&context, &Context::serviceUrlChanged);
        QSignalSpy monitor(&context, &Context::changeFeedMonitorTypeChanged);
        QSignalSpy policy(&context, &Context::contentFetchPolicyChanged);
        // From C++ these two are for the time before a database is open, and tell nobody.
        context.setServiceUrl(QUrl("http://one.test"_s));
        context.setChangeFeedMonitorType(Context::PollingMonitor);
        QCOMPARE(url.size() + monitor.size(), 0);
        for (int i = 0; i < 2; ++i) {
            context.setProperty("serviceUrl", QUrl("http://two.test"_s));
            context.setProperty("changeFeedMonitorType", Context::NullMonitor);
            context.setAttachmentDownloadEnabled(true);
        }
        QCOMPARE(url, QList<QVariantList>({ { QUrl("http://two.test"_s) } }));
        QCOMPARE(monitor.size(), 1);
        QCOMPARE(int(context.contentFetchPolicy()), 4 | 1);
        context.setAttachmentDownloadEnabled(false);
        context.setContentFetchPolicy(Context::DefaultPolicy);
        QCOMPARE(policy.size(), 2);
    }

    void theCacheFollowsTheDatabase()
    {
        Context first(QUrl("http://one.test"_s), "same"_s);
        Context second(QUrl("http://two.test"_s), "same"_s);
        const QSharedPointer<DocumentCache> cache = first.documentCache();
        QVERIFY(cache && second.documentCache() == cache);
        QStringList names;
        QObject::connect(&first, &Context::databaseChanged, [&](const QString &name) {
            names << name;
            QCOMPARE(first.database(), name);
            QCOMPARE(first.documentCache(), cache); // not open yet
            if (name == "a"_s) {
                first.setDatabase("b"_s); // the last one wins
            }
        });
        first.setDatabase("same"_s);
        first.setDatabase("a"_s);
        QCOMPARE(names, "a b"_l);
        QCOMPARE(first.documentCache(), DocumentCache::getCache("b"_s));
        Context none;
        none.setDatabase(""_s); // the one that it has
        QVERIFY(!none.documentCache());
    }

    void anotherDatabaseKeepsTheDocumentsAndWarnsOfUnsavedOnes()
    {
        LogCapture log;
        ContextFixture fixture;
        LinkedDocument *document = fixture.create("a"_s);
        fixture->setDatabase("second"_s);
        document->markClean("1-x"_s, document->changeSequenceNumber(), {});
        fixture->setDatabase("third"_s);
        QCOMPARE(log.count("|warning|"_s), 1);
        QVERIFY(log.contains("vorrel.data.context|warning|Changing the database from "_s));
        QVERIFY(log.contains(" to second with 1 unsaved documents"_s));
        QCOMPARE(fixture->loadedDocument("a"_s), document);
    }

    void qmlSetsPropertiesInAnyOrder()
    {
        const Context registersTheTypes;
        QQmlEngine engine;
        engine.setImportPathList({}); // so that no plugin of an installed version is found
        for (const char *properties : { "serviceUrl: 'http://a.test'; database: 'db' }",
                                        "database: 'db'; serviceUrl: 'http://a.test' }" }) {
            QQmlComponent component(&engine);
            component.setData("import vorrel.data.Core 1.0\nContext { property url seen\n"
                              "onDatabaseChanged: seen = serviceUrl\n"
                                  + QByteArray(properties),
                              QUrl());
            const std::unique_ptr<QObject> object(component.create());
            auto *context = qobject_cast<Context *>(object.get());
            QVERIFY2(context, qPrintable(component.errorString()));
            QCOMPARE(context->documentCache(), DocumentCache::getCache("db"_s));
            QCOMPARE(context->networkAccessManager(), engine.networkAccessManager());
            QCOMPARE(context->property("seen").toUrl(), QUrl("http://a.test"_s));
            context->setDatabase("other"_s); // at once from now on
            QCOMPARE(context->database(), "other"_s);
        }
    }

    void isBusyWhileLoading()
    {
        IncubatorNest fixture;
        fixture.tickByItself();
        fixture.store("a"_s);
        QSignalSpy busy(fixture.context(), &Context::busyChanged);
        fixture->loadDocument("a"_s);
        QVERIFY(!fixture->isBusy()); // told in a later turn
        QTRY_VERIFY(fixture->isBusy());
        QTRY_VERIFY(!fixture->isBusy());
        QVERIFY(fixture->isLoaded("a"_s));
        QCOMPARE(busy.size(), 2);
        // Incubation counts only if attachments are wanted.
        for (const bool wanted : { false, true }) {
            fixture->setAttachmentDownloadEnabled(wanted);
            fixture.lay("egg");
            QCOMPARE(fixture->isBusy(), wanted);
            processEvents();
            QVERIFY(!fixture->isBusy());
        }
        QCOMPARE(busy.size(), 4);
    }

    // Documents

    void makesOnlyDocumentsThatCanBe_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("line"); // of the refusal
        const QString taken = "vorrel.data.context|critical|A document with the id %1 exists"_s;
        const QString unknown = "vorrel.data|critical|Creating unknown document: "_s;
        QTest::newRow("free id") << "tag"_s
                                 << "free"_s << QString();
        QTest::newRow("no id") << "tag"_s
                               << ""_s << QString();
        QTest::newRow("generic") << "data:thing"_s
                                 << "g"_s << QString();
        QTest::newRow("unknown type") << "ship"_s
                                      << ""_s << unknown + "ship"_s;
        QTest::newRow("no type") << ""_s
                                 << ""_s << unknown;
        QTest::newRow("id of a document") << "tag"_s
                                          << "made"_s << taken.arg("made"_s);
        QTest::newRow("id that is not built") << "tag"_s
                                              << "plain"_s << taken.arg("plain"_s);
        QTest::newRow("id beyond Latin-1")
            << "tag"_s
            << "日"_s
            << "vorrel.data.context|warning|Refusing the document id"_s;
        QTest::newRow("forbidden type") << "data:forbidden"_s
                                        << ""_s
                                        << ""_s;
    }
    void makesOnlyDocumentsThatCanBe()
    {
        QFETCH(QString, type);
        QFETCH(QString, id);
        QFETCH(QString, line);
        struct Strict : Context
        {
            [[nodiscard]] bool canCreateNewDocument(const QString &newType) const override
            {
                return newType != "data:forbidden"_s;
            }
        };
        ContextFixture fixture(new Strict);
        fixture.create("made"_s);
        fixture->addDocumentNode("plain", plainTag);
        LogCapture log;
        QSignalSpy added(fixture.context(), &Context::documentAdded);
        Document *document = fixture->createDocumentWithId(type, id);
        QCOMPARE(added.size(), document ? 1 : 0);
        QCOMPARE(document == nullptr, !line.isNull());
        QCOMPARE(log.lines().size(), line.isEmpty() ? 0 : 1);
        QVERIFY(line.isEmpty() || log.lines().constFirst().startsWith(line));
        if (document) {
            QCOMPARE(document->type(), type);
            QVERIFY(id.isEmpty() ? document->id().size() == 32 : document->documentId() == id);
            QCOMPARE(fixture->loadedDocument(document->documentId()), document);
            QVERIFY(document->isDirty() && document->isLocal());
            QVERIFY(document->parent()); // else JavaScript could come to own it
            QCOMPARE(QQmlEngine::objectOwnership(document), QQmlEngine::CppOwnership);
        }
    }

    void creationHandlersRunFromTheShortestType()
    {
        ContextFixture fixture;
        QStringList calls;
        for (const QString &type : "data:thing:part data data:thing dat data: tag data"_l) {
            fixture->addCreationHandler(type, [&calls, type](Document *) { calls << type; });
        }
        QObject::connect(fixture.context(), &Context::documentAdded, [&] { calls << "added"_s; });
        QVERIFY(fixture->createDocument("data:thing:part"_s));
        QCOMPARE(calls, "data data data:thing data:thing:part added"_l);
        fixture.store("b"_s);
        QVERIFY(fixture.load("b"_s)); // loaded ones count as well
        QCOMPARE(calls.mid(5), "tag added"_l);
    }

    void creationHandlersMayAddAndDestroy()
    {
        ContextFixture fixture;
        QSignalSpy added(fixture.context(), &Context::documentAdded);
        int late = 0;
        fixture->addCreationHandler("data"_s, [&](Document *) {
            for (int i = 0; i < 100; ++i) { // enough to move what holds them
                fixture->addCreationHandler(i % 2 == 0 ? "data"_s : QString::number(i),
                                            [&](Document *) { ++late; });
            }
            fixture.create("other"_s);
        });
        QVERIFY(fixture->createDocument("data:thing"_s));
        fixture->addCreationHandler("tag"_s, [](Document *document) { delete document; });
        fixture->addCreationHandler("tag"_s, [&](Document *) { ++late; });
        QVERIFY(!fixture.create("a"_s));
        fixture.store("b"_s);
        QVERIFY(!fixture.load("b"_s));
        processEvents();
        QCOMPARE(late, 0);
        QCOMPARE(added.size(), 2);
        QVERIFY(!fixture->isLoaded("a"_s) && !fixture->isLoaded("b"_s));
    }

    void oneObjectForEachId()
    {
        LogCapture log;
        ContextFixture fixture;
        QSignalSpy nodes(fixture.context(), &Context::documentNodeAdded);
        DocumentNode *node = fixture->addDocumentNode("plain", plainTag);
        QCOMPARE(fixture->addDocumentNode("plain", {}), node);
        QCOMPARE(nodes.size(), 1);
        QVERIFY(fixture->documents().isEmpty()); // not built yet
        Document *document = fixture->loadedDocument("plain"_s);
        QVERIFY(document && document == node->document());
        node->instantiate();
        QCOMPARE(fixture->loadedDocument("plain"_s), document);
        QVERIFY(log.lines().isEmpty());
        // Somebody makes another object of it.
        delete LinkedDocument::create(plainTag, fixture.context());
        QVERIFY(log.contains("vorrel.data.context|critical|A second object for document plain"_s));
        QCOMPARE(fixture->loadedDocument("plain"_s), document);
        QCOMPARE(fixture->documentNode(document), node);
        // The key of a document wins over the id that it holds.
        fixture->addDocumentNode("b", plainTag);
        QCOMPARE(fixture->loadedDocument("b"_s)->documentId(), "b"_s);
        QVERIFY(log.contains("vorrel.data|critical|Document b holds the id \"plain\""_s));
    }

    void tellsOfDirtyAndLocalDocuments()
    {
        ContextFixture fixture;
        QSignalSpy edges(fixture.context(), &Context::hasLocalChangesChanged);
        QSignalSpy locals(fixture.context(), &Context::localDocumentsChanged);
        LinkedDocument *first = fixture.create("a"_s);
        LinkedDocument *second = fixture.create("b"_s);
        QCOMPARE(fixture->localDocuments(), QList<Document *>({ first, second }));
        QCOMPARE(fixture->dirtyDocuments().size(), 2);
        first->markClean("1-x"_s, first->changeSequenceNumber(), {});
        QCOMPARE(fixture->localDocuments(), QList<Document *>({ second }));
        QCOMPARE(fixture->dirtyDocuments(), QList<LinkedDocument *>({ second }));
        QCOMPARE(edges.size(), 1);
        delete second; // both lists forget it
        QVERIFY(fixture->localDocuments().isEmpty() && !fixture->hasLocalChanges());
        QTRY_COMPARE(edges.size(), 2); // in a later turn, when it has gone for good
        QCOMPARE(locals.size(), 4);
    }

    void removedDocumentsGoLater()
    {
        for (const QString &label : { ""_s, "edited"_s }) {
            LogCapture log;
            ContextFixture fixture;
            fixture.store("a"_s);
            const QPointer<LinkedDocument> document(fixture.load("a"_s));
            document->setLabel(label);
            QStringList events;
            QObject::connect(fixture.context(), &Context::documentRemoved, [&](Document *removed) {
                events << "removed"_s;
                QVERIFY(removed == document && removed->deleted());
                QVERIFY(!fixture->isLoaded("a"_s)); // the table first
            });
            QObject::connect(document, &QObject::destroyed, [&] { events << "destroyed"_s; });
            fixture->removeDocument("a"_s);
            fixture->removeDocument("a"_s); // once more makes no difference
            QVERIFY(!fixture->loadedDocument("a"_s) && fixture->isLoaded("a"_s));
            QVERIFY(!document->isDirty() && !fixture->hasLocalChanges());
            QVERIFY(!fixture->documentCache()->contains("a"_s));
            QVERIFY(events.isEmpty());
            processEvents();
            QCOMPARE(events, "removed destroyed"_l);
            QCOMPARE(log.count("vorrel.data.context|warning|Document a was removed from the "
                               "database: its unsaved edits are lost"_s),
                     label.isEmpty() ? 0 : 1);
            QVERIFY(fixture.load("a"_s)); // it can come again
        }
    }

    void aNewDocumentTakesTheIdOfADeletedOne()
    {
        LogCapture log;
        ContextFixture fixture;
        LinkedDocument *former = fixture.create("a"_s, "1-x"_s);
        LinkedDocument *other = fixture.create("b"_s);
        fixture->linkDocuments(fixture->documentNode("a"), fixture->documentNode("b"));
        former->remove();
        fixture->removeDocument(former); // the removal is on its way
        QSignalSpy removed(fixture.context(), &Context::documentRemoved);
        LinkedDocument *successor = fixture.create("a"_s);
        QVERIFY(successor && successor->isLocal() && successor->isDirty());
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(fixture->loadedDocument("a"_s), successor);
            QCOMPARE(fixture->documents().size(), 2);
            QVERIFY(fixture->documentNode(other)->incoming().isEmpty());
            processEvents(); // the former one goes
        }
        QCOMPARE(removed.size(), 1);
        QCOMPARE(fixture->dirtyDocuments().size(), 2);
    }

    void edgesJoinBuiltDocumentsOnceAndGoWithThem()
    {
        LogCapture log;
        ContextFixture fixture;
        QSignalSpy linked(fixture.context(), &Context::documentLinked);
        QSignalSpy unlinked(fixture.context(), &Context::documentUnlinked);
        fixture.create("a"_s);
        DocumentNode *a = fixture->documentNode("a");
        DocumentNode *b = fixture->addDocumentNode("plain", plainTag);
        fixture->linkDocuments(a, b);
        fixture->linkDocuments(b, a);
        fixture->unlinkDocuments(a, b);
        QCOMPARE(linked.size() + unlinked.size(), 0); // one is not built
        QVERIFY(b->document());
        fixture->unlinkDocuments(a, b); // told even if there is nothing to take away
        QCOMPARE(unlinked.size(), 1);
        fixture->linkDocuments(a, b);
        fixture->linkDocuments(a, b);
        fixture->linkDocuments(b, a);
        QCOMPARE(linked.size(), 3);
        QCOMPARE(linked.constFirst(), QVariantList({ QByteArray("a"), QByteArray("plain") }));
        QCOMPARE(a->outgoing().size(), 1);
        QVERIFY(a->outgoing() == b->incoming() && a->incoming() == b->outgoing());
        QVERIFY(a->outgoing().constFirst()->source == a && a->outgoing().constFirst()->target == b);
        fixture->unlinkDocuments(a, b);
        QVERIFY(a->outgoing().isEmpty() && b->incoming().isEmpty() && !a->incoming().isEmpty());
        QCOMPARE(unlinked.size(), 2);

        fixture->linkDocuments(a, b);
        fixture->linkDocuments(a, a);
        fixture->removeDocument("a"_s);
        processEvents();
        QCOMPARE(unlinked.size(), 4); // what it referred to
        QVERIFY(b->incoming().isEmpty() && b->outgoing().isEmpty());
        fixture->linkDocuments(b, b);
        delete b->document(); // by somebody else
        processEvents();
        QVERIFY(!fixture->isLoaded("plain"_s));
    }

    // Updates and reports

    void onlyOtherRevisionsReachTheUpdateHandler()
    {
        ContextFixture fixture;
        QStringList log;
        fixture->setUpdateHandler(new UpdateHandler(&log, [](LinkedDocument *) {}));
        fixture.create("a"_s, "1-x"_s);
        fixture.create("?"_s, "1-x"_s); // what Latin-1 makes of the last one below
        fixture->addDocumentNode("plain", plainTag);
        for (const QString &id : "unknown plain 日"_l) {
            announceRevision(fixture.context(), id, "2-x"_s);
        }
        announceRevision(fixture.context(), "a"_s, "1-x"_s);
        QVERIFY(log.isEmpty());
        announceRevision(fixture.context(), "a"_s, "2-x"_s);
        fixture->setUpdateHandler(nullptr);
        announceRevision(fixture.context(), "a"_s, "3-x"_s);
        QCOMPARE(log, "a end deleted"_l);
    }

    void anUpdateHandlerMayReplaceItselfOrDestroyTheContext()
    {
        ContextFixture fixture;
        QStringList log;
        fixture.create("a"_s, "1-x"_s);
        fixture.create("b"_s, "1-x"_s);
        fixture->setUpdateHandler(new UpdateHandler(&log, [&](LinkedDocument *document) {
            if (document->documentId() == "a"_s) {
                announceRevision(fixture.context(), "b"_s, "2-x"_s); // itself inside itself
                return;
            }
            fixture->setUpdateHandler(
                new UpdateHandler(&log, [&](LinkedDocument *) { fixture.destroyContext(); }));
        }));
        announceRevision(fixture.context(), "a"_s, "2-x"_s);
        QCOMPARE(log, "a b end end deleted"_l);
        announceRevision(fixture.context(), "a"_s, "2-x"_s);
        QCOMPARE(log.mid(5), "a end deleted"_l);
    }

    void reportsDocumentsByType()
    {
        ContextFixture fixture;
        for (const QString &type : "tag data:thing tag data:box"_l) {
            fixture->createDocument(type);
        }
        new LangString(fixture->documents().constFirst());
        LogCapture log;
        fixture->documentReport();
        QCOMPARE(log.lines().replaceInStrings("vorrel.data.context|info|"_s, ""_s),
                 "Document report for 4 documents|\"data:box\" 1|\"data:thing\" 1|"
                 "\"tag\" 2|Orphaned inline documents: 1|\"langstring\" 1|"
                 "Known 4, linked 0, unsaved 4, wanted 0, incubating 0, tasks 0"_lines);
    }

    void everyContextHasTheAutomaticDocuments()
    {
        TypeRegistry::instance().addLinked<HouseRules>(); // for the rest of this program
        Context context;
        auto *rules = qobject_cast<HouseRules *>(context.loadedDocument("house.rules"_s));
        QVERIFY(rules && !context.hasLocalChanges()); // so that it overwrites nothing
        rules->setLabel("x"_s);
        QVERIFY(context.hasLocalChanges());
        QVERIFY(Context().loadedDocument("house.rules"_s));
    }
};

QTEST_GUILESS_MAIN(tst_Context)
#include "tst_context.moc"
