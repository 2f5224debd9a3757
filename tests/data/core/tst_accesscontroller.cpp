// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"
#include "support/signalhook.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_AccessController : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void updateIsAnEdit()
    {
        QStringList order;
        const SignalHook dirty(m_document, "editedChanged", [&] { order += "dirty"_s; });
        const SignalHook told(m_document, "accessControlParametersChanged",
                              [&] { order += "told"_s; });
        const SignalHook level(m_document, "accessLevelChanged", [&] { order += "level"_s; });
        const QSignalSpy reported(m_context.get(), &Context::documentChanged);
        m_document->accessController()->update(1);
        QCOMPARE(m_document->serialize()["accessControl"_s], QJsonValue(1));
        QTRY_COMPARE(m_document->accessLevel(), Document::ReadAccess);
        QCOMPARE(order, "dirty told level"_l);
        QCOMPARE(int(m_context->changes.size()), 1);
        QTRY_COMPARE(reported.count(), 1);
    }

    void updateThatChangesNothingIsNone()
    {
        QVERIFY(m_document->accessController()->setParameters(2));
        const QSignalSpy told(m_document, &LinkedDocument::accessControlParametersChanged);
        m_document->accessController()->update(2);
        m_document->accessController()->update(99); // 2, when it is mended
        for (const auto level : { Document::ReadAccess, Document::NoAccess }) {
            AccessContext::setLevel(m_document, level);
            m_document->updateAccessLevel();
            m_document->accessController()->update(1);
        }
        QCOMPARE(m_document->accessController()->parameters(), QJsonValue(2));
        QVERIFY(!m_document->isDirty());
        QVERIFY(m_context->changes.empty());
        QCOMPARE(told.count(), 0);
    }

    void updateIsTakenBackAlsoWithoutAccess()
    {
        QVERIFY(m_document->accessController()->setParameters(2));
        m_document->accessController()->update(0);
        QTRY_COMPARE(m_document->accessLevel(), Document::ReadAccess); // it is dirty
        const int edits = m_document->changeSequenceNumber();
        m_context->undo();
        QCOMPARE(m_document->accessController()->parameters(), QJsonValue(2));
        QTRY_COMPARE(m_document->accessLevel(), Document::WriteAccess);
        m_context->redo();
        QTRY_COMPARE(m_document->accessLevel(), Document::ReadAccess);
        QCOMPARE(m_document->changeSequenceNumber(), edits + 2);
        delete m_document;
        m_context->undo();
    }

    void storedParametersAreNoEdit()
    {
        const QSignalSpy told(m_document, &LinkedDocument::accessControlParametersChanged);
        QJsonObject json = m_document->serialize();
        QVERIFY(!json.contains("accessControl"_s));
        m_document->assignData(json);
        QCOMPARE(told.count(), 0);
        json.insert("accessControl"_s, 1);
        m_document->assignData(json);
        m_document->assignData(json);
        QCOMPARE(told.count(), 1);
        QVERIFY(!m_document->isDirty());
        QTRY_COMPARE(m_document->accessLevel(), Document::ReadAccess);
    }

private:
    void prepare() override
    {
        m_document = load<LinkDocument>({});
        m_context->active = true;
        QCOMPARE(m_document->accessLevel(), Document::WriteAccess);
    }

    LinkDocument *m_document = nullptr;
};

QTEST_GUILESS_MAIN(tst_AccessController)
#include "tst_accesscontroller.moc"
