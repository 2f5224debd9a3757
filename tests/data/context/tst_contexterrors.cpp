// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"
#include "support/testerror.h"

#include <vorrel/data/base/tuning_p.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

/// A Context on a clock of its own.
struct ClockedContext : Context
{
    ManualClock clock;
    QSignalSpy list { this, &Context::errorsChanged };
    QSignalSpy primary { this, &Context::primaryErrorChanged };

    TestError *add(ContextError::Severity severity, const QString &text = {},
                   const std::function<void(TestError *)> &attempt = {})
    {
        auto *error = new TestError(severity, text, attempt);
        addError(error);
        return error;
    }
    bool pass(std::chrono::milliseconds time)
    {
        clock.advance(time);
        return tickTimer(this, tuning::errorRetryTick);
    }
    void fix(ContextError *error)
    {
        Q_EMIT error->fixed();
        Q_EMIT error->fixed();
        processEvents();
    }
};

class tst_ContextErrors : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void worstAndOldestComesFirst()
    {
        ClockedContext context;
        auto *minor = context.add(ContextError::Minor);
        auto *first = context.add(ContextError::Blocking);
        QCOMPARE(context.primary.size(), 2);
        auto *second = context.add(ContextError::Blocking);
        auto *major = context.add(ContextError::Major);
        QCOMPARE(context.errors(), QList<ContextError *>({ first, second, major, minor }));
        context.fix(major);
        QCOMPARE(context.primary.size(), 2);
        QCOMPARE(context.list.size(), 5);
        delete first; // by others, without a word
        processEvents();
        QCOMPARE(context.primaryError(), second);
        QCOMPARE(context.primary.size(), 3);
        QCOMPARE(context.list.size(), 6);
    }

    void countdownRunsWhileThereAreErrorsAndTriesThem()
    {
        ClockedContext context;
        QStringList tried;
        const auto tell = [&](TestError *error) { tried += error->errorString(); };
        context.add(ContextError::Minor, "last"_s, tell);
        context.add(ContextError::Major, "adds"_s, [&](TestError *error) {
            tell(error);
            context.add(ContextError::Blocking, "new"_s, tell);
        });
        context.add(ContextError::Blocking, "goes"_s, [&](TestError *error) {
            tell(error);
            delete error;
        });
        QSignalSpy remaining(&context, &Context::tryFixRemainingTimeChanged);
        QSignalSpy triggered(&context, &Context::tryFixTriggered);
        context.pass(14999ms);
        context.clock.advance(-1h); // somebody sets the clock
        context.pass(0ms);
        QVERIFY(tried.isEmpty());
        context.pass(1ms);
        QCOMPARE(tried, "goes adds last"_l);
        QCOMPARE(remaining, QList<QVariantList>({ { 1 }, { 1 }, { 0 }, { 15000 } }));
        context.pass(5s);
        context.tryFixErrors();
        QCOMPARE(triggered.size(), 2);
        QCOMPARE(context.tryFixRemainingTime(), 10000);
        while (context.primaryError()) {
            context.fix(context.primaryError());
        }
        QVERIFY(!context.pass(4s));
        QCOMPARE(context.tryFixRemainingTime(), 10000);
        context.add(ContextError::Major);
        QCOMPARE(context.tryFixRemainingTime(), 15000);
    }

    void reportsBecomeRarer()
    {
        ClockedContext context;
        LogCapture log;
        auto *other = context.add(ContextError::Minor, "other"_s);
        const QString start = QDateTime::fromMSecsSinceEpoch(context.clock.currentMSecsSinceEpoch())
                                  .toString(Qt::ISODate);
        const auto reportsAfter = [&](std::chrono::seconds wait) {
            log.clear();
            context.pass(wait - 1s);
            const bool early = log.contains("blocked"_s);
            context.pass(1s);
            return !early && log.contains("blocked"_s);
        };
        context.pass(10s);
        context.add(ContextError::Blocking, "no \"server\""_s);
        QVERIFY(reportsAfter(20s));
        QCOMPARE(log.lines().replaceInStrings("vorrel.data.context|critical|"_s, QString()),
                 QStringList({ "Context is blocked by 2 pending errors since "_s + start,
                               "no \"server\""_s, "other"_s }));
        for (int report = 1; report <= 14; ++report) {
            QVERIFY(reportsAfter(std::chrono::seconds(std::min(report * 300, 3600))));
        }
        context.fix(other);
        QVERIFY(reportsAfter(5s));
        context.addError(nullptr);
        QCOMPARE(log.count("|warning|"_s), 1);
    }
};

QTEST_GUILESS_MAIN(tst_ContextErrors)

#include "tst_contexterrors.moc"
