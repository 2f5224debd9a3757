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

    template <typename... Arguments>
    TestError *add(Arguments... arguments)
    {
        auto *error = new TestError(arguments...);
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
        Q_EMIT error->fixed(), error->fixed();
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
        QSignalSpy list(&context, &Context::errorsChanged);
        QSignalSpy primary(&context, &Context::primaryErrorChanged);
        auto *minor = context.add(ContextError::Minor);
        auto *first = context.add(ContextError::Blocking);
        auto *second = context.add(ContextError::Blocking);
        auto *major = context.add(ContextError::Major);
        QCOMPARE(context.errors(), QList<ContextError *>({ first, second, major, minor }));
        context.fix(major);
        QVERIFY(list.size() == 5 && primary.size() == 2);
        delete first; // by others, without a word
        processEvents();
        QVERIFY(list.size() == 6 && primary.size() == 3 && context.primaryError() == second);
    }

    void countdownRunsWhileThereAreErrorsAndTriesThem()
    {
        ClockedContext context;
        QStringList tried;
        const auto attempt = [&](TestError *error) {
            tried += error->errorString();
            if (tried.constLast() == "adds"_s) {
                context.add(ContextError::Blocking, "new"_s);
            } else if (tried.constLast() == "goes"_s) {
                delete error;
            }
        };
        context.add(ContextError::Minor, "last"_s, attempt);
        context.add(ContextError::Major, "adds"_s, attempt);
        context.add(ContextError::Blocking, "goes"_s, attempt);
        QSignalSpy remaining(&context, &Context::tryFixRemainingTimeChanged);
        context.pass(14999ms);
        context.clock.advance(-1h); // somebody sets the clock
        context.pass(0ms);
        context.pass(1ms);
        QCOMPARE(remaining, QList<QVariantList>({ { 1 }, { 1 }, { 0 }, { 15000 } }));
        context.pass(5s);
        context.tryFixErrors();
        QCOMPARE(tried, "goes adds last adds last"_l);
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
        const QStringList lines = log.lines().filter("vorrel.data.context|critical|"_s);
        QVERIFY(
            lines.at(0).contains("|Context is blocked by 2 pending errors since 2020-09-13T"_s));
        QVERIFY(lines.at(1).endsWith("|no \"server\""_s) && lines.at(2).endsWith("|other"_s));
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
