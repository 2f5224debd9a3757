// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"
#include "support/signalhook.h"

#include <QtCore/QPointer>
#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <functional>

using namespace vo::data;
using namespace vo::test;
using Action = std::function<void(LinkDocument &)>;
Q_DECLARE_METATYPE(Action)

/// Documents may be destroyed at any time, by anybody. Much of what is tested here only shows under
/// the address sanitizer.
class tst_DocumentLifetime : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void documentMayDieInEachOfItsSignals_data()
    {
        const Action lockOut = [](auto &document) {
            for (Document *source : document.referencingDocuments()) { // no access through them
                source->markClean("1-a"_s, source->changeSequenceNumber(), {});
                AccessContext::setLevel(static_cast<LinkedDocument *>(source), Document::NoAccess);
                static_cast<LinkedDocument *>(source)->updateAccessLevel();
            }
            AccessContext::setLevel(&document, Document::NoAccess);
            document.updateAccessLevel();
        };
        const Action lockOutAlone = [](auto &document) {
            AccessContext::setLevel(&document, Document::NoAccess);
            document.updateAccessLevel();
        };
        const Action store = [](auto &document) {
            document.assignData(R"({"_id": "victim", "_rev": "2-b", ":data": {"s:a": {}},
                                    "accessControl": 1, "label": "stored", "deleted": true})"_json);
        };
        const Action remove = [](auto &document) { document.remove(); };
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<Action>("action");
        const auto row = [](const char *tag, const char *signal, const Action &action) {
            QTest::newRow(tag) << QByteArray(signal) << action;
        };
        row("label", "labelChanged", [](auto &document) { document.setLabel("a"_s); });
        row("deleted", "deletedChanged", remove);
        row("deleted, edited", "editedChanged", remove);
        row("deleted, target", "targetChanged", remove);
        row("deleted, detached", "attachedDocumentsChanged", remove);
        row("edited", "editedChanged", [](auto &document) { document.markDirty(); });
        row("clean", "editedChanged", [](auto &document) { document.markClean("2-b"_s, 0, {}); });
        row("access level", "accessLevelChanged", lockOut);
        row("access level, label", "labelChanged", lockOut);
        row("implicit access", "implicitReadAccessChanged", lockOutAlone);
        row("access parameters", "accessControlParametersChanged",
            [](auto &document) { document.accessController()->update(1); });
        row("attached", "attachedDocumentsChanged",
            [](auto &document) { document.attachDocument(&document); });
        row("detached", "attachedDocumentsChanged",
            [](auto &document) { document.d->target.set(nullptr); });
        row("struct", "structValueChanged",
            [](auto &document) { document.setStructValue("s"_s, "f"_s, 1); });
        row("stored, edited", "editedChanged", store);
        row("stored, struct", "structValueChanged", store);
        row("stored, list", "listChanged", store);
        row("stored, access parameters", "accessControlParametersChanged", store);
        row("stored, label", "labelChanged", store);
    }
    void documentMayDieInEachOfItsSignals()
    {
        QFETCH(QByteArray, signal);
        QFETCH(Action, action);
        auto *source = create<LinkDocument>("source"_s);
        auto *target = create<LinkDocument>("target"_s);
        const QPointer<LinkDocument> victim(
            load<LinkDocument>(R"({"_id": "victim", "_rev": "1-a"})"_json));
        source->d->target.set(victim);
        source->updateDependencies();
        victim->d->target.set(target);
        victim->markClean("1-a"_s, victim->changeSequenceNumber(), {});
        QCOMPARE(victim->accessLevel(), Document::WriteAccess);
        QCoreApplication::processEvents();

        const SignalHook hook(victim, signal, [&] { delete victim.data(); });
        action(*victim);
        QVERIFY(victim.isNull());
        QVERIFY(source->attached().isEmpty());
        QVERIFY(target->referencingDocuments().isEmpty());
        QVERIFY(!m_context->isLoaded("victim"_s));
        QCoreApplication::processEvents();
    }

    void documentMayDieInEachSignalOfItsContext_data()
    {
        const Action save = [](auto &document) {
            document.markClean("1-a"_s, document.changeSequenceNumber(), {});
        };
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<bool>("dirty"); // to begin with
        QTest::addColumn<Action>("action");
        const auto row = [](const char *tag, const char *signal, bool dirty, const Action &action) {
            QTest::newRow(tag) << QByteArray(signal) << dirty << action;
        };
        row("dirty", "hasLocalChangesChanged", false,
            [](auto &document) { document.setLabel("a"_s); });
        row("clean", "hasLocalChangesChanged", true, save);
        row("stored", "localDocumentsChanged", true, save);
        row("changed", "documentChanged", true, [](auto &document) { document.setLabel("a"_s); });
        row("deleted", "hasLocalChangesChanged", true, [](auto &document) { document.remove(); });
    }
    void documentMayDieInEachSignalOfItsContext()
    {
        QFETCH(QByteArray, signal);
        QFETCH(bool, dirty);
        QFETCH(Action, action);
        const QPointer<LinkDocument> victim(create<LinkDocument>("victim"_s));
        if (!dirty) {
            victim->markClean(QString(), victim->changeSequenceNumber(), {});
        }
        const SignalHook hook(m_context.get(), signal, [&] { delete victim.data(); });
        action(*victim);
        QTRY_VERIFY(victim.isNull());
        QCoreApplication::processEvents();
        QVERIFY(m_context->dirtyDocuments().isEmpty());
        QVERIFY(m_context->localDocuments().isEmpty());
        QVERIFY(!m_context->isLoaded("victim"_s));
    }

    void documentMayDieWhileItIsMade_data()
    {
        QTest::addColumn<QByteArray>("signal");
        for (const char *signal : { "documentNodeAdded", "documentAdded", "localDocumentsChanged",
                                    "hasLocalChangesChanged", "" }) {
            QTest::newRow(signal) << QByteArray(signal);
        }
    }
    void documentMayDieWhileItIsMade()
    {
        QFETCH(QByteArray, signal);
        QPointer<Document> victim;
        connect(m_context.get(), &Context::documentNodeAdded, this,
                [&](const QString &id) { victim = m_context->loadedDocument(id); });
        const auto destroy = [&] { delete victim.data(); };
        std::unique_ptr<SignalHook> hook;
        if (signal.isEmpty()) {
            m_context->addCreationHandler("link"_s, [&](Document *) { destroy(); });
        } else {
            hook = std::make_unique<SignalHook>(m_context.get(), signal, destroy);
        }
        QCOMPARE(create<LinkDocument>("a"_s), nullptr);
        QCOMPARE(m_context->createDocument("link"_s), nullptr);
        if (signal != "hasLocalChangesChanged") { // stored data makes nothing dirty
            QCOMPARE(load<LinkDocument>(R"({"_id": "a"})"_json), nullptr);
        }
        QVERIFY(m_context->documents().isEmpty());
        QCoreApplication::processEvents();
        disconnect(m_context.get(), nullptr, this, nullptr);
    }

    void targetMayDieWhileItIsAttached_data()
    {
        QTest::addColumn<Action>("action");
        QTest::newRow("attached") << Action(
            [](auto &document) { document.attachDocument(document.attached().constFirst()); });
        QTest::newRow("detached") << Action(
            [](auto &document) { document.detachDocument(document.attached().constFirst()); });
        QTest::newRow("dropped") << Action([](auto &document) { document.d->target.set(nullptr); });
    }
    void targetMayDieWhileItIsAttached()
    {
        QFETCH(Action, action);
        auto *source = create<LinkDocument>();
        auto *other = create<LinkDocument>();
        QPointer<LinkDocument> target(create<LinkDocument>());
        source->d->target.set(target);
        const SignalHook hook(source, "attachedDocumentsChanged", [&] { delete target.data(); });
        action(*source);
        QVERIFY(target.isNull());
        QVERIFY(source->attached().isEmpty());
        target = other;
        source->attachDocument(other); // for the first time
        QVERIFY(target.isNull());
        QVERIFY(source->attached().isEmpty());
    }

    void documentsMayGoInAnyOrder()
    {
        QRandomGenerator random(1);
        for (int round = 0; round < 50; ++round) {
            QList<LinkDocument *> documents;
            for (int number = 0; number < 8; ++number) {
                documents += create<LinkDocument>();
            }
            for (int number = 0; number < 16; ++number) {
                LinkDocument *source = documents[random.bounded(8)];
                source->d->target.set(documents[random.bounded(8)]);
                source->updateDependencies();
            }
            while (!documents.isEmpty()) {
                LinkDocument *document = documents.takeAt(random.bounded(int(documents.size())));
                if (random.bounded(2) == 0) {
                    document->remove();
                }
                delete document;
                for (const LinkDocument *left : std::as_const(documents)) {
                    QVERIFY(!left->attached().contains(document));
                    QVERIFY(!left->referencingDocuments().contains(document));
                }
            }
            QVERIFY(m_context->documents().isEmpty());
        }
    }

    void propertyThatIsGoneForbidsNothing()
    {
        auto *target = create<LinkDocument>();
        auto *forbidding = create<LinkDocument>();
        forbidding->d->target.set(target);
        forbidding->d->target.allowsDelete = false;
        target->remove();
        QVERIFY(!target->deleted());
        delete forbidding;
        target->remove();
        QVERIFY(target->deleted());
    }

    void deferredWorkOutlivesItsDocument()
    {
        auto *document = load<LinkDocument>(R"({"_id": "a", "_rev": "1-a"})"_json);
        const QPointer<LinkDocument> target(
            load<LinkDocument>(R"({"_id": "b", "_rev": "1-b"})"_json));
        document->d->elements.insert(target, -1);                 // an update of the edges
        document->Document::assignData(R"({"label": "a"})"_json); // a report
        AccessContext::setLevel(document, Document::ReadAccess);
        m_context->removeDocument(document);
        delete document;
        m_context->removeDocument(target.data());
        QVERIFY(target);
        QTRY_VERIFY(target.isNull());
        QVERIFY(!m_context->isLoaded("a"_s));
    }
};

QTEST_GUILESS_MAIN(tst_DocumentLifetime)
#include "tst_documentlifetime.moc"
