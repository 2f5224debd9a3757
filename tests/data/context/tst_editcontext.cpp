// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/editmodel.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"

#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/core/changeset.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/core/genericchange.h>

#include <QtCore/QRandomGenerator>
#include <QtTest/QtTest>

using namespace vo::data;
using namespace vo::test;

class tst_EditContext;
using Act = std::function<void(tst_EditContext *)>;
Q_DECLARE_METATYPE(Act)

class tst_EditContext : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        registerDocument<Station>();
        registerDocument<Note>();
        m_context = std::make_unique<EditContext>();
    }

    void slotsOfAWalkMayDoAnything_data()
    {
        QTest::addColumn<Act>("act");
        const auto row = [](const char *name, const Act &act) { QTest::newRow(name) << act; };
        row("edits in a group", [](auto *t) {
            t->m_context->beginRecordChanges();
            t->find("a"_s)->setText("slot"_s);
            t->m_context->endRecordChanges();
        });
        row("opens a group", [](auto *t) { t->m_context->beginRecordChanges(); });
        row("closes a group", [](auto *t) { t->m_context->endRecordChanges(); });
        row("rolls back", [](auto *t) { t->m_context->rollbackChanges(); });
        row("moves", [](auto *t) { t->m_context->undo(), t->m_context->redo(); });
        row("clears", [](auto *t) { t->m_context->clearChanges(); });
        row("destroys b", [](auto *t) { delete t->find("b"_s); });
        row("destroys all", [](auto *t) { t->m_context.reset(); });
    }

    void slotsOfAWalkMayDoAnything()
    {
        QFETCH(const Act, act);
        const QByteArray name = QTest::currentDataTag();
        for (const QString &walk : "undo redo rollback"_l) {
            init();
            ManualClock clock;
            const LogCapture log;
            bool armed = false;
            for (const QString &id : "a b"_l) {
                connect(create(id), &Station::numberChanged, this, [&] {
                    if (std::exchange(armed, false)) {
                        act(this);
                    }
                });
            }
            number("a"_s, 1);
            clock.advance(std::chrono::seconds(1));
            m_context->beginRecordChanges();
            number("a"_s, 2);
            number("b"_s, 2);
            m_context->endRecordChanges();
            if (walk == "redo"_s) {
                m_context->undo();
            } else if (walk == "rollback"_s) {
                m_context->beginRecordChanges();
                number("a"_s, 3);
                number("b"_s, 3);
            }
            armed = true;
            QMetaObject::invokeMethod(m_context.get(),
                                      walk == "undo"_s       ? "undo"
                                          : walk == "redo"_s ? "redo"
                                                             : "rollbackChanges");
            QVERIFY(!armed);
            if (!m_context) {
                continue;
            }
            const bool closes = name == "closes a group" && walk != "rollback"_s;
            QCOMPARE(log.count("without beginRecordChanges"_s), int(closes));
            while (!m_context->isSaveEnabled()) {
                m_context->endRecordChanges();
            }
            QCOMPARE(find("a"_s)->number(), walk == "undo"_s ? 1 : 2);
            QVERIFY(!find("b"_s) || find("b"_s)->number() == (walk == "undo"_s ? 7 : 2));
            QCOMPARE(m_context->canUndo(), name != "clears");
            QCOMPARE(m_context->canRedo(), name != "clears" && walk == "undo"_s);
            m_context->undo(); // nothing is left behind in what remains
            QCOMPARE(find("a"_s)->number(),
                     name == "clears"       ? (walk == "undo"_s ? 1 : 2)
                         : walk == "undo"_s ? 7
                                            : 1);
        }
    }

    void whatOthersDeleteIsNoStep()
    {
        const LogCapture log;
        create("a"_s)->setNext(create("b"_s));
        m_context->beginRecordChanges();
        m_context->removeDocument("b"_s);
        processEvents(); // the second half of the removal comes in a later turn
        m_context->endRecordChanges();
        QVERIFY(!m_context->isLoaded("b"_s) && !find("a"_s)->next() && !m_context->canUndo());
    }

    void misuseIsTold()
    {
        const LogCapture log;
        auto *change = new GenericChange(create("a"_s), [](bool) {});
        QVERIFY(!m_context->recordChange(change));
        m_context->endRecordChanges();
        ChangeSet().rollback();
        m_context->beginRecordChanges();
        QVERIFY(!m_context->isSaveEnabled());
        m_context.reset();
        QVERIFY(log.contains("warning|Attempt to record change without active change set"_s));
        QVERIFY(log.contains("warning|Call to endRecordChanges() without beginRecordChanges()"_s));
        QVERIFY(
            log.contains("critical|Attempt to roll back invalid change set - this is a bug!"_s));
        QVERIFY(log.contains("warning|Closing a context with 1 open change groups"_s));
    }

    void randomEditsFollowAPlainModel()
    {
        const QString given = qEnvironmentVariable("VORREL_TEST_SEED");
        const quint32 seed =
            given.isEmpty() ? QRandomGenerator::global()->generate() : given.toUInt();
        QRandomGenerator random(seed);
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt();
        ManualClock clock;
        EditModel model;
        for (int step = 0; step < steps; ++step) {
            const QByteArray trace =
                "VORREL_TEST_SEED=%1, step %2"_s.arg(seed).arg(step).toLatin1();
            randomStep(random, clock, model);
            processEvents();
            QVERIFY2(worldOf(m_context.get()) == model.now, trace);
            const bool idle = model.levels.isEmpty();
            QVERIFY2(m_context->isSaveEnabled() == idle, trace);
            QVERIFY2(m_context->canUndo() == (idle && model.position >= 0), trace);
            QVERIFY2(m_context->canRedo() == (idle && model.position + 1 < model.stack.size()),
                     trace);
        }
    }

private:
    Station *create(const QString &id)
    {
        return static_cast<Station *>(LinkedDocument::create("station"_s, id, m_context.get()));
    }

    [[nodiscard]] Station *find(const QString &id) const
    {
        return static_cast<Station *>(m_context->loadedDocument(id));
    }

    /// An edit in a group of its own.
    void number(const QString &id, int number)
    {
        m_context->beginRecordChanges();
        find(id)->setNumber(number);
        m_context->endRecordChanges();
    }

    /// One thing that a user may do, in both.
    void randomStep(QRandomGenerator &random, ManualClock &clock, EditModel &model)
    {
        const int what = random.bounded(100);
        if (what < 12 && model.levels.size() < 3) {
            m_context->beginRecordChanges();
            model.begin();
        } else if (what < 25 && !model.levels.isEmpty()) {
            m_context->endRecordChanges();
            model.end();
        } else if (what < 30) {
            m_context->rollbackChanges();
            model.rollback();
        } else if (what < 40) {
            for (int times = random.bounded(50) ? 1 : 100; times > 0; --times) {
                m_context->undo();
                model.move(-1);
            }
        } else if (what < 48) {
            m_context->redo();
            model.move(1);
        } else if (what < 60) {
            const int times[] { 1, 100, 250, 500, 501 };
            clock.advance(std::chrono::milliseconds(times[random.bounded(5)]));
        } else if (what == 60 && random.bounded(4) == 0) {
            m_context->clearChanges();
            model.clear();
            for (Document *document : m_context->documents()) {
                if (document->deleted()) {
                    delete document; // or there would be ever more of them
                }
            }
        } else {
            m_context->beginRecordChanges();
            model.begin();
            randomEdit(random, model, m_context.get());
            model.end();
            m_context->endRecordChanges();
        }
    }

    std::unique_ptr<EditContext> m_context;
};

QTEST_GUILESS_MAIN(tst_EditContext)
#include "tst_editcontext.moc"
