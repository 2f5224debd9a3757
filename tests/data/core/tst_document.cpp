// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"
#include "support/testdocuments.h"

#include <vorrel/core/version.h>
#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/documentregistration.h>

#include <QtCore/QCryptographicHash>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

/// Notes the steps of its life.
class Picture : public LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "picture")
public:
    using LinkedDocument::LinkedDocument;

    inline static QStringList diary;

    void assignData(const QJsonObject &object) override
    {
        diary += "assignData"_s;
        LinkedDocument::assignData(object);
    }
    void convert(const QJsonObject & /*object*/) override
    {
        diary += "convert"_s;
        setLabel("converted"_s); // not an edit
    }
    void initialize() override
    {
        diary += "initialize"_s;
        LinkedDocument::initialize();
    }
};

/// Every Context has one.
class Singleton : public Picture
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "data:singleton")
    Q_CLASSINFO("InheritType", "false")
    Q_CLASSINFO("AutoInstance", "test.singleton")
public:
    using Picture::Picture;
    [[nodiscard]] StorageFlags storageFlags() const override { return CreatedInternally; }
};

class tst_Document : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        registerDocument<Picture>();
        registerDocument<Singleton>();
    }
    void init() { m_context = std::make_unique<TestContext>(); }

    void classFollowsFromTheType()
    {
        const QString longest(255, QLatin1Char('a'));
        const QList<std::pair<QByteArray, QStringList>> rows {
            { "Picture", "picture"_l },
            { "vo::data::ProductGroup", "group:product"_l },
            { "Singleton", "data:singleton"_l },
            { "vo::data::GenericData", "data:mytype data:a1:b2 data:singleton:more"_l },
            { "vo::data::GenericData", { "data:"_s + longest } },
            { "", "data data: photo photo:picture Picture picture: database:ab data:my-type"_l },
            { "", "data:myType data:a data:ab:c data:1a data:größe data:ab::cd data::ab"_l },
            { "", { QString(), "data:ab\n"_s, "data:ab"_s + QChar(0), "data:a"_s + longest } },
        };
        const LogCapture log;
        for (const auto &[className, types] : rows) {
            for (const QString &type : types) {
                const auto *document = LinkedDocument::create(type, m_context.get());
                const QByteArray made = document ? document->metaObject()->className() : "";
                QVERIFY2(made == className, qPrintable(type));
                QVERIFY(!document || document->serialize()["type"_s].toString() == type);
            }
        }
        QVERIFY(Document::isBaseType("asset"_s, "asset:image"_s));
        QVERIFY(!Document::isBaseType("asset"_s, "assets"_s));
    }

    void everyContextHasItsAutomaticDocuments()
    {
        const Context other;
        auto *document = qobject_cast<Singleton *>(m_context->loadedDocument("test.singleton"_s));
        QVERIFY(document && other.loadedDocument("test.singleton"_s) != document);
        // Its stored form may be in the database: only an edit may overwrite that.
        QVERIFY(!m_context->hasLocalChanges());
        document->setLabel("edited"_s);
        QVERIFY(m_context->hasLocalChanges());
    }

    void documentsAreMadeInOrder()
    {
        Picture::diary.clear();
        const auto *stored = LinkedDocument::create(R"({"type": "picture"})"_json, m_context.get());
        QCOMPARE(Picture::diary, "assignData convert initialize"_l);
        QVERIFY(!stored->isDirty());
        m_context->recording = true;
        QVERIFY(!m_context->create<Singleton>("internal"_s)->isDirty());
        QVERIFY(m_context->changes.empty());
        const Picture *document = m_context->create<Picture>();
        QCOMPARE(Picture::diary.mid(3), "initialize initialize"_l);
        QVERIFY(document->isDirty());
        m_context->undo();
        QVERIFY(document->deleted());
        m_context->redo();
        QVERIFY(!document->deleted());
    }

    void storedFormHasItsKeys()
    {
        auto stored = R"json({"_id": "a/1", "_rev": "1-a", "type": "picture", "deleted": false,
            "created": "2020-01-02T03:04:05Z", "edited": "2020-02-03T04:05:06Z",
            ":data": {"s:a": {"f": "$ref(0,x)", "g": "$ref(1,y)"}, "l:b": ["c"]},
            "label": "converted", "references": ["x"], "accessControl": 2})json"_json;
        QJsonObject loaded = stored;
        loaded.insert("creationVersion"_s, "0.8.1"_s);
        loaded.insert("foreign"_s, 1); // is dropped
        stored.insert("creationVersion"_s, vo::Version::currentVersion().versionString());
        const auto *document = LinkedDocument::create(loaded, m_context.get());
        QCOMPARE(document->creationVersion(), "0.8.1"_s);
        QCOMPARE(document->serialize(), stored);
        QCOMPARE(m_context->create<Picture>()->serialize().keys(),
                 "_id created creationVersion deleted edited references type"_l);
    }

    void idsStandAndAreUnique()
    {
        m_context->store("unbuilt"_s);
        const QPointer<Station> a(m_context->create("a"_s));
        QCOMPARE(QByteArray::fromHex(m_context->create()->id()).size(), 16);
        const LogCapture log;
        a->setDocumentId("other"_s);
        a->assignData(R"({"label": "loaded"})"_json); // without an id
        QCOMPARE(log.count("vorrel.data|critical|Document a"_s), 2);
        QCOMPARE(a->label() + a->documentId(), "loadeda"_s);
        for (const QString &id : "日本 a€b"_l) { // not in Latin-1
            const QJsonObject json { { "_id"_s, id }, { "type"_s, "station"_s } };
            QVERIFY(!m_context->create(id) && !LinkedDocument::create(json, m_context.get()));
        }
        QCOMPARE(log.count("|warning|"_s), 4);
        QVERIFY(!m_context->create("a"_s) && !m_context->create("unbuilt"_s));
        QCOMPARE(log.count("vorrel.data.context|critical|"_s), 2);
        a->remove();
        QVERIFY(!LinkedDocument::create("no:such"_s, "a"_s, m_context.get()));
        processEvents();
        QVERIFY(a);
        const Station *second = m_context->create("a"_s); // takes the id of the deleted one
        processEvents();
        QVERIFY(!a && second && m_context->find("a"_s) == second);
    }

    void editsAreCountedUntilTheyAreStored()
    {
        ManualClock clock;
        Station *a = m_context->create();
        clock.advance(std::chrono::seconds(5));
        a->setLabel("a"_s);
        QCOMPARE(a->edited().toMSecsSinceEpoch(), clock.currentMSecsSinceEpoch());
        a->markClean("1-a"_s, 1, { "hash" }); // one edit came during the upload
        QVERIFY(a->isDirty() && a->hasLocalChanges() && !a->isLocal());
        QCOMPARE(m_context->dirtyDocuments(), QList<LinkedDocument *> { a });
        QCOMPARE(a->currentAttachments(), QSet<QByteArray> { "hash" });
        a->markClean("2-b"_s, 2, {});
        QVERIFY(!a->isDirty() && !a->hasLocalChanges() && m_context->dirtyDocuments().isEmpty());
    }

    void deletionAsksFirstAndClearsAllLinks()
    {
        Station *source = m_context->load("source"_s);
        Station *a = m_context->load("a"_s);
        Station *target = m_context->create();
        source->setNext(a);
        source->setStructValue("s"_s, "f"_s, "$ref(0,a)"_s);
        a->setNext(target);
        for (const QString &id : "source a"_l) { // whose properties cannot be changed
            m_context->setLevel(id, Document::ReadAccess);
            processEvents();
            a->remove();
            QVERIFY(!a->deleted() && source->next() == a);
            m_context->setLevel(id, Document::WriteAccess);
            processEvents();
        }
        a->remove();
        QVERIFY(a->deleted() && a->isDirty() && a->attached().isEmpty());
        QVERIFY(!source->next() && source->getStructValue("s"_s, "f"_s).isNull());
        target->remove(); // was never stored and needs no upload of its deletion
        QVERIFY(target->deleted() && !target->isDirty());
    }

    void subtreeRevisionFollowsAllThatIsReachable()
    {
        Station *a = m_context->create("a%1"_s);
        a->d->exits.insert("x"_s, m_context->create("b"_s));
        a->setRevision("1-a"_s);
        m_context->find("b"_s)->setRevision("2-b"_s);
        const QByteArray text = "a%1-1-a-2b-2-b-1"; // the ids, revisions and numbers of edits
        QCOMPARE(a->subtreeRevision(),
                 QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex());
    }

    void accessChangesInALaterTurn()
    {
        m_context->defaultLevel = Document::ReadAccess;
        Station *a = m_context->load("a"_s);
        const QSignalSpy level(a, &Document::accessLevelChanged);
        const QSignalSpy text(a, &Station::textChanged);
        QCOMPARE(a->accessLevel(), Document::ReadAccess); // the first answer is silent
        for (const auto next :
             { Document::WriteAccess, Document::NoAccess, Document::ReadAccess }) {
            m_context->setLevel("a"_s, next);
            QVERIFY(a->accessLevel() != next);
            QTRY_COMPARE(a->accessLevel(), next);
        }
        QCOMPARE(level.count(), 3);
        QCOMPARE(text.count(), 2); // what can be read has changed
        a->markDirty();
        m_context->setLevel("a"_s, Document::NoAccess);
        processEvents();
        QCOMPARE(a->accessLevel(), Document::ReadAccess); // what is dirty stays readable
        a->overrideAccessLevel();
        QCOMPARE(a->accessLevel(), Document::WriteAccess);
        a->markClean("2-b"_s, a->changeSequenceNumber(), {});
        QTRY_COMPARE(a->accessLevel(), Document::NoAccess); // the grant ends with the next update
    }

    void accessParametersAreEdited()
    {
        Station *a = m_context->load("a"_s, R"({"accessControl": 2})"_json);
        AccessController *access = a->accessController();
        m_context->recording = true;
        access->update(99); // 2, when it is mended
        QVERIFY(!a->isDirty() && m_context->changes.empty());
        access->update(0);
        QCOMPARE(a->serialize()["accessControl"_s], QJsonValue(0));
        QTRY_COMPARE(a->accessLevel(), Document::ReadAccess);
        access->update(1); // that needs WriteAccess, taking back does not
        m_context->undo();
        QCOMPARE(access->parameters(), QJsonValue(2));
        QTRY_COMPARE(a->accessLevel(), Document::WriteAccess);
    }

private:
    std::unique_ptr<TestContext> m_context;
};

QTEST_GUILESS_MAIN(tst_Document)
#include "tst_document.moc"
