// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/downloadprogress.h>
#include <vorrel/data/context/downloadstatus.h>
#include <vorrel/data/context/job.h>
#include <vorrel/data/context/joberror.h>

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

/// Ends each run as its script says; Running is an end that is still to come.
struct TestJob : Job
{
    TestJob(Context *context, const QList<Status> &ends)
        : Job(context)
        , script(ends)
    { }
    using Job::setStatus;
    void run() override
    {
        ++runs;
        setStatus(script.takeFirst());
    }
    ContextError *createJobError() override
    {
        return new JobError(ContextError::Major, 503, QNetworkReply::NoError, this);
    }

    QList<Status> script;
    int runs = 0;
};

class tst_Jobs : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void jobStartsByItselfKeepsTheContextBusyAndGoes()
    {
        Context context;
        QStringList events;
        connect(&context, &Context::busyChanged, this,
                [&] { events += context.isBusy() ? "busy"_s : "idle"_s; });
        const QPointer<TestJob> job(new TestJob(&context, { Job::Running }));
        connect(job, &Job::statusChanged, this, [&] { events += QString::number(job->status()); });
        connect(job, &Job::finished, this, [&] { events += "finished"_s; });
        processEvents();
        job->execute(); // in vain, as is the next line
        job->setStatus(Job::Running);
        QCOMPARE(job->runs, 1);
        new TestJob(&context, { Job::Finished });
        processEvents();
        job->setStatus(Job::Finished);
        job->execute();
        processEvents();
        QVERIFY(!job);
        QCOMPARE(events, "busy 1 3 finished idle"_l);
    }

    void failureIsOneErrorUntilARetrySucceeds()
    {
        Context context;
        const QPointer<TestJob> job(
            new TestJob(&context, { Job::Error, Job::Error, Job::Running }));
        processEvents();
        const QPointer<ContextError> error(context.primaryError());
        QCOMPARE(error->errorCode(), 503);
        context.tryFixErrors();
        QCOMPARE(context.errors().size(), 1);
        context.tryFixErrors();
        context.tryFixErrors(); // it runs
        QCOMPARE(job->runs, 3);
        QVERIFY(context.isBusy());
        job->setStatus(Job::Finished);
        processEvents();
        QVERIFY(!error && !job && !context.isBusy());
    }

    void abortedJobNeverRunsAndItsErrorGoes()
    {
        Context context;
        auto *failed = new TestJob(&context, { Job::Error });
        failed->execute();
        auto *fresh = new TestJob(&context, { Job::Finished });
        connect(fresh, &Job::statusChanged, this, [] { QFAIL("An aborted job ran"); });
        fresh->abort();
        failed->abort();
        processEvents();
        QVERIFY(!context.isBusy());
        context.tryFixErrors();
        processEvents();
        QVERIFY(context.errors().isEmpty());
    }

    void jobMayEndInASlot()
    {
        for (const Job::Status status : { Job::Running, Job::Error, Job::Finished }) {
            for (const QByteArray victim : { "job", "context", "abort" }) {
                auto context = std::make_unique<Context>();
                const QPointer<TestJob> job(new TestJob(context.get(), { status }));
                const QPointer<TestJob> other(new TestJob(context.get(), { Job::Finished }));
                connect(job, &Job::statusChanged, this, [&] {
                    if (job->status() == status) {
                        if (victim == "job") {
                            delete job;
                        } else if (victim == "abort") {
                            job->abort();
                        } else {
                            context.reset();
                        }
                    }
                });
                processEvents();
                QVERIFY(!job && !other);
                QVERIFY(!context || (context->errors().isEmpty() && !context->isBusy()));
            }
        }
    }

    void downloadStatusSumsUpAndEndsAtOne()
    {
        Context context;
        const auto tick = [&] { return tickTimer(&context, tuning::downloadTick); };
        const auto shows = [&](qint64 received, qint64 total, double percent) {
            const DownloadStatus *status = tick() ? context.downloadStatus() : nullptr;
            return status && status->received() == received && status->total() == total
                && status->percent() == percent;
        };
        const auto first = context.beginDownload();
        const auto second = context.beginDownload();
        first->total = -1;
        QVERIFY(shows(0, 0, 0));
        *first = { 30, 40, false };
        *second = { 20, 60, false };
        QVERIFY(shows(50, 100, 0.5));
        first->received = 99; // more than was said
        context.endDownload(first);
        QVERIFY(shows(119, 100, 1));
        second->received = 1; // broken off
        first->received = 40;
        context.endDownload(second);
        QVERIFY(shows(100, 100, 1));
        QVERIFY(tick() && !context.download() && !tick());
    }
};

QTEST_GUILESS_MAIN(tst_Jobs)

#include "tst_jobs.moc"
