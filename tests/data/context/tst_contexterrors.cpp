// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/manualclock.h"
#include "support/testerror.h"

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/networkerror.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

class TestNetworkError : public NetworkError
{
public:
    using NetworkError::NetworkError;
    void tryFix() override { }
};

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

    /// Whether the countdown runs.
    bool pass(std::chrono::milliseconds time)
    {
        clock.advance(time);
        return tickTimer(this, tuning::errorRetryTick);
    }

    void fix(ContextError *error)
    {
        Q_EMIT error->fixed();
        processEvents();
    }
};

} // namespace

class tst_ContextErrors : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void codeFollowsStatusThenNetworkError_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("code");
        QTest::newRow("status wins") << 503 << 99 << 503;
        QTest::newRow("smallest status") << 400 << 1 << 400;
        QTest::newRow("status below") << 399 << 1 << 1;
        QTest::newRow("cancelled") << 200 << 5 << 999;
        QTest::newRow("handshake") << 0 << 6 << 6;
        QTest::newRow("unknown") << 0 << 99 << 99;
        QTest::newRow("redirect") << 302 << 11 << 999;
        QTest::newRow("nothing") << 0 << 0 << 999;
    }
    void codeFollowsStatusThenNetworkError()
    {
        QFETCH(int, status);
        QFETCH(int, error);
        const TestNetworkError object(ContextError::Major, status,
                                      QNetworkReply::NetworkError(error));
        QTEST(object.errorCode(), "code");
        QCOMPARE(int(object.severity()), 1);
    }

    void worstAndOldestComesFirst()
    {
        ClockedContext context;
        ContextError *minor = context.add(ContextError::Minor);
        ContextError *first = context.add(ContextError::Blocking);
        QCOMPARE(context.primary.size(), 2);
        ContextError *second = context.add(ContextError::Blocking);
        ContextError *major = context.add(ContextError::Major);
        QCOMPARE(context.errors(), QList<ContextError *>({ first, second, major, minor }));
        QCOMPARE(context.list.size(), 4);
        QCOMPARE(context.primary.size(), 2);
        context.fix(major);
        QCOMPARE(context.primary.size(), 2);
        delete first; // by its maker, without a word
        processEvents();
        QCOMPARE(context.primaryError(), second);
        QCOMPARE(context.primary.size(), 3);
        QCOMPARE(context.list.size(), 6);
    }

    void fixedErrorGoesOnceAndTheCountdownStops()
    {
        ClockedContext context;
        const QPointer<ContextError> error(context.add(ContextError::Major));
        QCOMPARE(error->parent(), &context);
        QVERIFY(context.pass(4s));
        Q_EMIT error->fixed();
        Q_EMIT error->fixed();
        QCOMPARE(context.errors().size(), 1); // until the next turn
        processEvents();
        QVERIFY(!error);
        QCOMPARE(context.list.size(), 2);
        QCOMPARE(context.primary.size(), 2);
        QVERIFY(!context.pass(4s));
        QCOMPARE(context.tryFixRemainingTime(), 11000);
        context.add(ContextError::Major);
        QCOMPARE(context.tryFixRemainingTime(), 15000);
    }

    void everyErrorIsTriedWhenTheCountdownEnds()
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
        QVERIFY(tried.isEmpty());
        context.clock.advance(-1h); // the clock is set right
        context.pass(0ms);
        context.pass(1ms);
        QCOMPARE(tried, "goes adds last"_l);
        QCOMPARE(triggered.size(), 1);
        QCOMPARE(remaining, QList<QVariantList>({ { 1 }, { 1 }, { 0 }, { 15000 } }));
        context.pass(5s);
        context.tryFixErrors();
        QCOMPARE(triggered.size(), 2);
        QCOMPARE(context.tryFixRemainingTime(), 10000);
    }

    void reportsBecomeRarer()
    {
        ClockedContext context;
        LogCapture log;
        ContextError *other = context.add(ContextError::Minor, "other"_s);
        context.pass(10s);
        context.add(ContextError::Blocking, "no \"server\""_s);
        context.pass(19s);
        QVERIFY(!log.contains("blocked"_s));
        context.pass(1s);
        const QString line = "vorrel.data.context|critical|"_s;
        QCOMPARE(
            log.lines().filter("|critical|"_s),
            QStringList({ line + "Context is blocked by 2 pending errors since "_s
                              + QDateTime::fromMSecsSinceEpoch(1600000000000).toString(Qt::ISODate),
                          line + "no \"server\""_s, line + "other"_s }));
        for (int report = 1; report <= 14; ++report) {
            const std::chrono::seconds wait(std::min(report * 300, 3600));
            log.clear();
            context.pass(wait - 1s);
            QVERIFY2(!log.contains("blocked"_s), qPrintable(QString::number(report)));
            context.pass(1s);
            QVERIFY2(log.contains("blocked"_s), qPrintable(QString::number(report)));
        }
        log.clear();
        context.fix(other);
        context.pass(4s);
        QVERIFY(!log.contains("blocked"_s));
        context.pass(1s);
        QVERIFY(log.contains("by 1 pending"_s));
        context.addError(nullptr);
        QCOMPARE(log.count("|warning|"_s), 1);
    }
};

QTEST_GUILESS_MAIN(tst_ContextErrors)

#include "tst_contexterrors.moc"
