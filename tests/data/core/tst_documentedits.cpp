// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"
#include "support/manualclock.h"

#include <QtCore/QCryptographicHash>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_DocumentEdits : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void editsAreCountedUntilTheyAreStored()
    {
        ManualClock clock;
        auto *document = create<PictureDocument>();
        const QSignalSpy edited(document, &Document::editedChanged);
        const QSignalSpy local(m_context.get(), &Context::localDocumentsChanged);
        clock.advance(std::chrono::seconds(5));
        document->setLabel("a"_s);
        QCOMPARE(document->changeSequenceNumber(), 2);
        QCOMPARE(document->edited().toMSecsSinceEpoch(), clock.currentMSecsSinceEpoch());
        QCOMPARE(edited.count(), 1);

        document->markClean("1-a"_s, 1, { "hash" }); // one edit came during the upload
        QVERIFY(document->isDirty() && document->hasLocalChanges());
        QCOMPARE(m_context->dirtyDocuments(), QList<LinkedDocument *> { document });
        QCOMPARE(document->revision(), "1-a"_s);
        QCOMPARE(document->currentAttachments(), QSet<QByteArray> { "hash" });
        QVERIFY(!document->isLocal());
        QVERIFY(m_context->localDocuments().isEmpty());
        document->markClean("2-b"_s, 2, {});
        QVERIFY(!document->isDirty() && !document->hasLocalChanges());
        QVERIFY(m_context->dirtyDocuments().isEmpty());
        QCOMPARE(local.count(), 1);
    }

    void manyEditsGiveOneReport()
    {
        auto *document = create<ValueDocument>();
        const QSignalSpy reported(m_context.get(), &Context::documentChanged);
        for (int number = 0; number < 10; ++number) {
            document->setInteger(number);
            document->setLabel(QString::number(number));
        }
        QCOMPARE(reported.count(), 0);
        QTRY_COMPARE(reported.count(), 1);
        // An edit by the one who hears of it is not lost.
        const auto connection = connect(m_context.get(), &Context::documentChanged, this,
                                        [&] { document->setLabel("again"_s); });
        document->setInteger(100);
        QTRY_COMPARE(reported.count(), 3);
        disconnect(connection);
    }

    void deletionAsksFirst()
    {
        auto *source = create<LinkDocument>();
        auto *document = create<LinkDocument>();
        source->d->target.set(document);
        const auto setLevel = [](LinkedDocument *owner, Document::AccessLevel level) {
            AccessContext::setLevel(owner, level);
            owner->updateAccessLevel();
        };
        source->d->target.allowsDelete = false;
        document->remove();
        source->d->target.allowsDelete = true;
        setLevel(source, Document::ReadAccess); // its property cannot be changed
        document->remove();
        setLevel(source, Document::WriteAccess);
        setLevel(document, Document::ReadAccess);
        document->remove();
        QVERIFY(!document->deleted());
        QCOMPARE(document->changeSequenceNumber(), 1);
        QCOMPARE(source->attached(), QList<Document *> { document });
        setLevel(document, Document::WriteAccess);
        document->remove();
        QVERIFY(document->deleted());
    }

    void deletionClearsAllLinks()
    {
        auto *source = create<LinkDocument>();
        auto *document = create<LinkDocument>();
        auto *target = create<LinkDocument>();
        document->setRevision("1-a"_s);
        source->d->target.set(document);
        source->d->elements.insert(document, -1);
        document->d->target.set(target);
        document->d->elements.insert(target, -1);
        document->setStructValue("s"_s, "link"_s, "$ref(0,x)"_s);
        document->setStructValue("s"_s, "text"_s, "kept"_s);

        document->setProperty("deleted", true);
        QVERIFY(document->deleted());
        QVERIFY(document->isDirty());
        QVERIFY(document->attached().isEmpty() && document->referencingDocuments().isEmpty());
        QVERIFY(source->attached().isEmpty());
        QCOMPARE(document->getStruct("s"_s), R"({"link": null, "text": "kept"})"_json);
        document->setDeleted(false);
        QVERIFY(!document->deleted());

        // What was never stored needs no upload of its deletion.
        source->remove();
        QVERIFY(source->deleted() && !source->isDirty());
        QCOMPARE(m_context->loadedDocument(source->documentId()), nullptr);
    }

    void creationIsTakenBackWhateverTheAccess()
    {
        m_context->active = true;
        m_context->initialLevel = Document::ReadAccess;
        auto *document = create<PictureDocument>();
        m_context->undo();
        QVERIFY(document->deleted());
        m_context->redo(); // the grant still stands
        QVERIFY(!document->deleted());
        document->scheduleAccessLevelUpdate();
        QTRY_COMPARE(document->accessLevel(), Document::ReadAccess);
    }

    void subtreeRevisionFollowsAllThatIsReachable()
    {
        auto *top = create<LinkDocument>();
        auto *middle = create<LinkDocument>("middle%1"_s);
        auto *bottom = create<LinkDocument>("bottom"_s);
        top->d->target.set(middle);
        middle->d->target.set(bottom);
        QByteArray former = top->subtreeRevision();
        QCOMPARE(top->subtreeRevision(), former);
        create<LinkDocument>()->markDirty();
        QCOMPARE(top->subtreeRevision(), former);
        bottom->markDirty();
        QVERIFY(top->subtreeRevision() != former);
        former = top->subtreeRevision();
        middle->setRevision("1-a"_s);
        QVERIFY(top->subtreeRevision() != former);
        bottom->setRevision("2-b"_s);
        QCOMPARE(middle->subtreeRevision(),
                 QCryptographicHash::hash("bottom-2-b-2middle%1-1-a-2", QCryptographicHash::Md5)
                     .toHex());
    }

    void structFieldsAreEdited()
    {
        m_context->active = true;
        auto *document = load<PictureDocument>({});
        const QSignalSpy changed(document, &LinkedDocument::structValueChanged);
        // The struct comes into being although nothing is put into it.
        QVERIFY(!document->setStructValue("a"_s, "f"_s, QJsonValue::Undefined));
        QVERIFY(!document->isDirty());
        QCOMPARE(int(m_context->changes.size()), 1);
        QCOMPARE(document->serialize()[":data"_s], QJsonValue(R"({"s:a": {}})"_json));

        QVERIFY(document->setStructValue("a"_s, "f"_s, 1));
        QVERIFY(!document->setStructValue("a"_s, "f"_s, 1));
        QVERIFY(document->setStructValue("a"_s, "f"_s, QJsonValue::Null));
        QVERIFY(document->getStructValue("a"_s, "f"_s).isNull());
        QVERIFY(document->setStructValue("a"_s, "f"_s, QJsonValue::Undefined));
        QVERIFY(document->getStructValue("a"_s, "f"_s).isUndefined());
        QCOMPARE(changed.count(), 3);
        QCOMPARE(changed[0], (QList<QVariant> { "a"_s, "f"_s }));
        QCOMPARE(document->changeSequenceNumber(), 3);

        AccessContext::setLevel(document, Document::ReadAccess);
        document->updateAccessLevel();
        QVERIFY(!document->setStructValue("b"_s, "f"_s, 1));
        QCOMPARE(int(m_context->changes.size()), 4);
    }
};

QTEST_GUILESS_MAIN(tst_DocumentEdits)
#include "tst_documentedits.moc"
