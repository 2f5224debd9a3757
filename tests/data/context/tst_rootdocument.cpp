// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/signalhook.h"

#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/context/rootdocument.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

/// A database with the documents a and b, and a window on it.
struct RootFixture : ContextFixture
{
    RootFixture()
    {
        store("a"_s);
        store("b"_s);
        root.setContext(context());
    }

    /// What is shown when all is loaded.
    QString shown()
    {
        static_cast<void>(finishLoading());
        processEvents();
        return root.document() ? root.document()->documentId() : QString();
    }

    RootDocument root;
    QSignalSpy changes { &root, &RootDocument::documentChanged };
};

} // namespace

class tst_RootDocument : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsItsDocument()
    {
        RootFixture fixture;
        QVERIFY(!fixture->loadQueue()->isLoading()); // no id, no request
        fixture.root.setDocumentId("a"_s);
        QVERIFY(!fixture.root.document());
        QCOMPARE(fixture.shown(), "a"_s);
        fixture.root.setDocumentId("a"_s);
        fixture.root.setContext(fixture.context());
        QVERIFY(fixture.root.document()); // nothing changed
        QCOMPARE(fixture.changes.size(), 1);
        RootDocument other;
        other.setDocumentId("a"_s);
        other.setContext(fixture.context());
        QVERIFY(!other.document()); // it is there already, and still comes in a later turn
        processEvents();
        QCOMPARE(other.document(), fixture.root.document());
        fixture.root.setDocumentId(""_s);
        QVERIFY(!fixture.root.document());
        fixture.root.setContext(nullptr);
        fixture.root.setDocumentId("b"_s);
        QCOMPARE(fixture.shown(), ""_s);
        QCOMPARE(fixture.couch().calls().size(), 1);
    }

    void aSupersededRequestShowsNothing()
    {
        RootFixture fixture;
        fixture.root.setDocumentId("a"_s);
        fixture.couch().hold();
        fixture.tick();
        fixture.root.setDocumentId("b"_s);
        fixture.couch().release();
        processEvents();
        QVERIFY(fixture->isLoaded("a"_s) && !fixture.root.document());
        QCOMPARE(fixture.shown(), "b"_s);
        QCOMPARE(fixture.changes.size(), 1);
    }

    void takesUpWhatIsMadeHereAndHidesWhatIsDeleted()
    {
        RootFixture fixture;
        fixture.root.setDocumentId("new"_s);
        QCOMPARE(fixture.shown(), ""_s);
        fixture.create("other"_s);
        QVERIFY(!fixture.root.document());
        LinkedDocument *document = fixture.create("new"_s, "1-x"_s);
        QCOMPARE(fixture.root.document(), document);
        document->setDeleted(true);
        QVERIFY(!fixture.root.document());
        document->setDeleted(false);
        QCOMPARE(fixture.root.document(), document);
        QCOMPARE(fixture.changes.size(), 3);
        document->remove();
        LinkedDocument *successor = fixture.create("new"_s);
        QVERIFY(successor && fixture.root.document() == successor);
        fixture.changes.clear();
        processEvents(); // the former one goes
        QCOMPARE(fixture.root.document(), successor);
        QCOMPARE(fixture.changes.size(), 0);
        LogCapture log;
        fixture->removeDocument(successor);
        QVERIFY(!fixture.root.document());
        processEvents();
        fixture.root.setDocumentId("b"_s);
        QCOMPARE(fixture.shown(), "b"_s);
    }

    void survivesItsContextOrLeavesIt()
    {
        for (const QString &shown : { ""_s, "a"_s }) {
            RootFixture fixture;
            fixture.root.setDocumentId("a"_s);
            QVERIFY(shown.isEmpty() || fixture.shown() == shown);
            QObject::connect(&fixture.root, &RootDocument::documentChanged, [&] {
                if (Context *context = fixture.root.context()) { // which is being destroyed
                    QVERIFY(!context->loadDocument("b"_s));
                    QVERIFY(!context->createDocument("tag"_s));
                    QVERIFY(!context->loadedDocument("a"_s));
                    context->finishIncubation();
                }
            });
            fixture.changes.clear();
            fixture.destroyContext();
            QCOMPARE(fixture.changes.size(), shown.isEmpty() ? 0 : 1);
            QVERIFY(!fixture.root.document() && !fixture.root.context());
            fixture.root.setDocumentId("b"_s);
            QCOMPARE(fixture.shown(), ""_s);
        }
        RootFixture fixture;
        Context other;
        fixture.root.setDocumentId("a"_s);
        fixture.root.setContext(&other);
        QVERIFY(fixture.create("a"_s)); // ends the request, and is announced
        QCOMPARE(fixture.shown(), ""_s);
        QVERIFY(other.createDocumentWithId("tag"_s, "a"_s));
        QCOMPARE(fixture.root.document(), other.loadedDocument("a"_s));
    }

    void slotsMayChangeItsMind()
    {
        RootFixture fixture;
        const auto change = [&] { fixture.root.setDocumentId("b"_s); };
        QObject::connect(&fixture.root, &RootDocument::documentIdChanged, change);
        fixture.root.setDocumentId("a"_s);
        QCOMPARE(fixture.shown(), "b"_s);
        QObject::disconnect(&fixture.root, &RootDocument::documentIdChanged, nullptr, nullptr);
        QObject::connect(fixture->loadQueue(), &LoadQueue::loadingChanged, change);
        fixture.couch().hold();
        fixture.root.setDocumentId("c"_s);
        processEvents();
        QCOMPARE(fixture.root.document(), fixture->loadedDocument("b"_s));
    }

    void mayDieInItsSlots()
    {
        const QList<QByteArray> names = signalNames(RootDocument::staticMetaObject);
        for (const QByteArray &name : names) {
            ContextFixture fixture;
            fixture.create("a"_s);
            const QPointer<RootDocument> root(new RootDocument);
            const SignalHook hook(root, name, [&] { delete root; });
            root->setDocumentId("a"_s);
            if (root) {
                root->setContext(fixture.context());
            }
            processEvents();
            QVERIFY2(!root, name);
        }
    }
};

QTEST_GUILESS_MAIN(tst_RootDocument)
#include "tst_rootdocument.moc"
