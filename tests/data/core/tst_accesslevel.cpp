// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_AccessLevel : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void firstAnswerIsSilent()
    {
        LinkDocument *document = stored(Document::ReadAccess);
        const QSignalSpy level(document, &Document::accessLevelChanged);
        const QSignalSpy label(document, &Document::labelChanged);
        const QSignalSpy changed(m_context.get(), &Context::documentChanged);
        QCOMPARE(document->accessLevel(), Document::ReadAccess);
        QCoreApplication::processEvents();
        QCOMPARE(level.count() + label.count() + changed.count(), 0);
        QVERIFY(!document->signalsBlocked());
    }

    void changeOfPolicyComesInALaterTurn()
    {
        LinkDocument *document = stored(Document::WriteAccess);
        QCOMPARE(document->accessLevel(), Document::WriteAccess);
        const QSignalSpy level(document, &Document::accessLevelChanged);
        AccessContext::access(document).level = Document::ReadAccess;
        document->updateAccessLevel(); // nobody asked for it
        QCOMPARE(document->accessLevel(), Document::WriteAccess);
        m_context->updateAccessLevel();
        document->scheduleAccessLevelUpdate();
        QCOMPARE(document->accessLevel(), Document::WriteAccess);
        QTRY_COMPARE(document->accessLevel(), Document::ReadAccess);
        QCOMPARE(level.count(), 1);
    }

    void dirtyDocumentStaysReadable()
    {
        m_context->initialLevel = Document::NoAccess;
        auto *document = create<LinkDocument>();
        QCOMPARE(document->accessLevel(), Document::ReadAccess);
        QVERIFY(!document->implicitReadAccess());
        document->markClean("1-a"_s, document->changeSequenceNumber(), {});
        QTRY_COMPARE(document->accessLevel(), Document::NoAccess);
    }

    void grantEndsWithTheNextUpdate()
    {
        LinkDocument *document = stored(Document::NoAccess);
        document->overrideAccessLevel(); // before anybody asked for the level
        QCOMPARE(document->accessLevel(), Document::WriteAccess);
        document->scheduleAccessLevelUpdate();
        QTRY_COMPARE(document->accessLevel(), Document::NoAccess);
    }

    void readAccessFlowsAlongReferences()
    {
        LinkDocument *top = stored(Document::ReadAccess);
        LinkDocument *middle = stored(Document::NoAccess);
        LinkDocument *bottom = stored(Document::NoAccess);
        QCOMPARE(bottom->accessLevel(), Document::NoAccess);
        const QSignalSpy implicit(bottom, &Document::implicitReadAccessChanged);
        link(top, middle);
        link(middle, bottom);
        QTRY_COMPARE(bottom->accessLevel(), Document::ReadAccess);
        QVERIFY(bottom->implicitReadAccess() && !top->implicitReadAccess());
        QCOMPARE(implicit.count(), 1);
        AccessContext::setLevel(top, Document::NoAccess);
        QTRY_COMPARE(bottom->accessLevel(), Document::NoAccess);
        AccessContext::setLevel(top, Document::WriteAccess);
        QTRY_COMPARE(bottom->accessLevel(), Document::ReadAccess);

        QVERIFY(top->d->elements.remove(middle));
        top->updateDependencies();
        QTRY_COMPARE(bottom->accessLevel(), Document::NoAccess);
        link(top, middle);
        QTRY_COMPARE(bottom->accessLevel(), Document::ReadAccess);
        delete top;
        QTRY_COMPARE(bottom->accessLevel(), Document::NoAccess);
    }

    void crossingReadAccessAnnouncesAllProperties()
    {
        LinkDocument *document = stored(Document::WriteAccess);
        QCOMPARE(document->accessLevel(), Document::WriteAccess);
        const QSignalSpy level(document, &Document::accessLevelChanged);
        const QSignalSpy label(document, &Document::labelChanged);
        const QSignalSpy target(document, &LinkDocument::targetChanged);
        const QSignalSpy changed(m_context.get(), &Context::documentChanged);
        int crossed = 0;
        for (const auto next :
             { Document::ReadAccess, Document::NoAccess, Document::WriteAccess }) {
            AccessContext::setLevel(document, next);
            QTRY_COMPARE(document->accessLevel(), next);
            QTRY_COMPARE(changed.count(), crossed);
            QCOMPARE(label.count(), crossed);
            QCOMPARE(target.count(), crossed++);
        }
        QCOMPARE(level.count(), 3);
    }

    void ringOfUnreadableDocumentsHasNoAccess()
    {
        LinkDocument *a = stored(Document::NoAccess);
        LinkDocument *b = stored(Document::NoAccess);
        link(a, b);
        link(b, a);
        link(b, b);
        QCOMPARE(a->accessLevel(), Document::NoAccess);
        QCOMPARE(b->accessLevel(), Document::NoAccess);
    }

    void ringIsReadableFromOutside()
    {
        for (const int first : { 0, 1, 2 }) { // the one that is asked first
            QList<LinkDocument *> ring;
            for (int number = 0; number < 3; ++number) {
                ring += stored(Document::NoAccess);
            }
            for (int number = 0; number < 3; ++number) {
                link(ring[number], ring[(number + 1) % 3]);
            }
            link(stored(Document::ReadAccess), ring[0]);
            static_cast<void>(ring[first]->accessLevel());
            for (const LinkDocument *document : std::as_const(ring)) {
                QTRY_COMPARE(document->accessLevel(), Document::ReadAccess);
            }
        }
    }

    void longChainIsAnswered()
    {
        LinkDocument *last = stored(Document::ReadAccess);
        for (int number = 0; number < 20000; ++number) {
            LinkDocument *next = stored(Document::NoAccess);
            link(last, next);
            last = next;
        }
        QCOMPARE(last->accessLevel(), Document::ReadAccess);
        QVERIFY(last->implicitReadAccess());
    }

private:
    LinkDocument *stored(Document::AccessLevel level)
    {
        m_context->initialLevel = level;
        return load<LinkDocument>({});
    }
    /// As stored references do it, without an edit.
    static void link(LinkDocument *source, LinkDocument *target)
    {
        QVERIFY(source->d->elements.insert(target, -1));
        source->updateDependencies();
    }
};

QTEST_GUILESS_MAIN(tst_AccessLevel)
#include "tst_accesslevel.moc"
