// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <vorrel/core/version.h>
#include <vorrel/data/core/typeregistry_p.h>

#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

/// Notes the steps of its life.
class DiaryDocument : public PictureDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "diary")
public:
    using PictureDocument::PictureDocument;

    inline static QStringList diary;
    inline static StorageFlags flags;

    void assignData(const QJsonObject &object) override
    {
        diary += "assignData"_s;
        LinkedDocument::assignData(object);
    }
    void convert(const QJsonObject &object) override
    {
        diary += "convert"_s + QString::number(object.size());
        setLabel("converted"_s); // not an edit
    }
    void initialize() override
    {
        diary += "initialize"_s;
        LinkedDocument::initialize();
    }
    void initializeCopy(const LinkedDocument *source) override { diary += source->label(); }
    [[nodiscard]] StorageFlags storageFlags() const override { return flags; }
    [[nodiscard]] QString sanitizeLabel(const QString &label, bool &accepted) const override
    {
        accepted = label != "refused"_s;
        return label.toUpper();
    }
};

class tst_LinkedDocument : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void storedDocumentIsMadeInOrder()
    {
        connect(m_context.get(), &Context::documentAdded, this,
                [](const Document *document) { DiaryDocument::diary += document->label(); });
        const auto *document = load<DiaryDocument>(R"({"label": "stored"})"_json);
        QCOMPARE(DiaryDocument::diary, "assignData convert2 initialize CONVERTED"_l);
        QVERIFY(!document->isDirty());
        QVERIFY(m_context->changes.empty());
    }

    void newDocumentIsMadeInOrder_data()
    {
        QTest::addColumn<Document::StorageFlags>("flags");
        for (const int flags : { 0, 1, 2, 3 }) { // StoreNewDocument and CreatedInternally
            QTest::addRow("%d", flags) << Document::StorageFlags(flags);
        }
    }
    void newDocumentIsMadeInOrder()
    {
        QFETCH(Document::StorageFlags, flags);
        DiaryDocument::flags = flags;
        for (const bool recording : { false, true }) {
            m_context->active = recording;
            DiaryDocument::diary.clear();
            auto *document = create<DiaryDocument>();
            const bool internal = flags.testFlag(Document::CreatedInternally);
            QCOMPARE(DiaryDocument::diary, "initialize"_l);
            QCOMPARE(m_context->changes.empty(), internal || !recording);
            QCOMPARE(document->isDirty(), flags.testFlag(Document::StoreNewDocument));
            QCOMPARE(document->isInternal(), internal);
            QVERIFY(m_context->localDocuments().contains(document));
            QCOMPARE(document->creationTimestamp(), m_clock.currentMSecsSinceEpoch());
        }
    }

    void storedFormHasItsKeys()
    {
        auto stored = R"json({
            "_id": "a/1", "_rev": "1-a", "type": "picture", "label": "l", "deleted": false,
            "created": "2020-01-02T03:04:05Z", "edited": "2020-02-03T04:05:06Z",
            ":data": {"s:a": {"f": "$ref(0,x)", "g": "$ref(1,y)"}, "l:b": ["c"]},
            "references": ["x"], "accessControl": 2})json"_json;
        stored.insert("creationVersion"_s, vo::Version::currentVersion().versionString());
        QJsonObject loaded = stored;
        loaded.insert("creationVersion"_s, "0.8.1"_s);
        loaded.insert("wasCached"_s, true);
        loaded.insert("foreign"_s, 1);
        const auto *document = load<PictureDocument>(loaded);
        QVERIFY(document->wasCached());
        QCOMPARE(document->creationVersion(), "0.8.1"_s);
        QCOMPARE(document->serialize(), stored);
        QCOMPARE(document->creationVersion(), stored["creationVersion"_s].toString());
    }
    void storedFormLeavesOutWhatIsEmpty()
    {
        const QJsonObject json = create<PictureDocument>()->serialize();
        QCOMPARE(json.keys(), "_id created creationVersion deleted edited references type"_l);
        QCOMPARE(json["references"_s], QJsonValue(QJsonArray()));
        QCOMPARE(json["created"_s].toString(), "2020-09-13T12:26:40Z"_s);
        const auto *old = load<PictureDocument>({});
        QCOMPARE(old->creationVersion(), "0.9.26"_s);
        QVERIFY(!old->wasCached());
    }

    void datesAreReadWithAnyOffset()
    {
        const std::vector<std::pair<QJsonValue, qint64>> rows {
            { "1970-01-02T00:00:00Z"_s, 86400000 },
            { "1970-01-02T02:00:00.5+02:00"_s, 86400500 },
            { "yesterday"_s, 0 },
            { 86400000, 0 },
            { QJsonValue::Undefined, 0 },
        };
        for (const auto &[text, time] : rows) {
            const auto *document =
                load<PictureDocument>({ { "created"_s, text }, { "edited"_s, text } });
            QCOMPARE(document->creationTimestamp(), time);
            QCOMPARE(document->created(), QDateTime::fromMSecsSinceEpoch(time, Qt::UTC));
            QCOMPARE(document->edited(), document->created());
            QCOMPARE(document->edited().timeSpec(), Qt::UTC);
        }
    }

    void idIsMadeOnceAndStands()
    {
        auto *document = create<PictureDocument>();
        const QByteArray id = document->id();
        QVERIFY(
            QRegularExpression("\\A[0-9a-f]{32}\\z"_s).match(document->documentId()).hasMatch());
        QCOMPARE(document->id(), id);
        QVERIFY(create<PictureDocument>()->id() != id);

        const LogCapture log;
        document->setDocumentId(document->documentId());
        QVERIFY(log.lines().isEmpty());
        document->setDocumentId("other"_s);
        document->assignData(R"({"label": "a"})"_json); // without an id
        QCOMPARE(log.count("vorrel.data|critical|Document "_s), 2);
        QCOMPARE(document->id(), id);
        QCOMPARE(document->label(), "a"_s);
    }

    void idBeyondLatin1IsRefused()
    {
        QCOMPARE(create<PictureDocument>("größe"_s)->documentId(), "größe"_s);
        const LogCapture log;
        for (const QString &id : "日本 a€b"_l) {
            QCOMPARE(create<PictureDocument>(id), nullptr);
            QCOMPARE(load<PictureDocument>({ { "_id"_s, id } }), nullptr);
        }
        QCOMPARE(log.count("|warning|"_s), 4);
    }

    void idOfALiveDocumentIsRefused()
    {
        m_context->addDocumentNode("unbuilt", R"({"_id": "unbuilt", "type": "picture"})"_json);
        const QPointer<PictureDocument> first(create<PictureDocument>("a"_s));
        const LogCapture log;
        QCOMPARE(m_context->createDocumentWithId("picture"_s, "a"_s), nullptr);
        QCOMPARE(create<PictureDocument>("unbuilt"_s), nullptr);
        QCOMPARE(log.count("vorrel.data.context|critical|"_s), 2);
        QCOMPARE(m_context->documents(), QList<Document *> { first });

        first->remove();
        const auto *second = create<PictureDocument>("a"_s);
        QVERIFY(second);
        QTRY_VERIFY(first.isNull());
        QCOMPARE(m_context->loadedDocument("a"_s), second);
    }

    void unknownTypeCostsNothing()
    {
        const QPointer<PictureDocument> deleted(create<PictureDocument>("a"_s));
        deleted->remove();
        const LogCapture log;
        QCOMPARE(LinkedDocument::create("no:such"_s, m_context.get()), nullptr);
        QCOMPARE(LinkedDocument::create("no:such"_s, "a"_s, m_context.get()), nullptr);
        QCOMPARE(LinkedDocument::create(R"({"type": "no:such"})"_json, m_context.get()), nullptr);
        QCOMPARE(log.count("vorrel.data|critical|Creating unknown document: no:such"_s), 3);
        QCoreApplication::processEvents();
        QVERIFY(deleted);
        QVERIFY(m_context->isLoaded("a"_s));
    }

    void copyIsANewDocument()
    {
        auto *source = load<DiaryDocument>(R"({"_id": "a", "_rev": "1-a"})"_json);
        source->setStructValue("s"_s, "f"_s, "$ref(0,x)"_s);
        const LinkedDocument *copy = source->copy();
        QVERIFY(copy);
        QVERIFY(copy->id() != source->id());
        QVERIFY(copy->isLocal());
        QCOMPARE(copy->changeSequenceNumber(), 1);
        QCOMPARE(DiaryDocument::diary.constLast(), "CONVERTED"_s);
        QJsonObject json = copy->serialize();
        for (const QString &key : "_id _rev created edited"_l) {
            json[key] = source->serialize()[key];
        }
        QCOMPARE(json, source->serialize());
    }

private:
    void registerMore() override { TypeRegistry::instance().addLinked<DiaryDocument>(); }
    void prepare() override
    {
        DiaryDocument::diary.clear();
        DiaryDocument::flags = Document::StoreNewDocument;
    }

    ManualClock m_clock;
};

QTEST_GUILESS_MAIN(tst_LinkedDocument)
#include "tst_linkeddocument.moc"
