// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/downloadprogress.h>
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
    void run() override { setStatus(script.takeFirst()); }
    ContextError *createJobError() override
    {
        return new JobError(ContextError::Major, 503, QNetworkReply::NoError, this);
    }
    QList<Status> script;
};

class tst_Jobs : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void jobStartsByItselfIsRetriedAndGoes()
    {
        Context context;
        QStringList events;
        connect(&context, &Context::busyChanged, this,
                [&] { events += context.isBusy() ? "busy"_s : "idle"_s; });
        const QPointer<TestJob> job(
            new TestJob(&context, { Job::Error, Job::Error, Job::Running }));
        connect(job, &Job::statusChanged, this, [&] { events += QString::number(job->status()); });
        connect(job, &Job::finished, this, [&] { events += "finished"_s; });
        processEvents();
        const QPointer<ContextError> error(context.primaryError());
        for (int i = 0; i < 3; ++i) { // the last time it runs
            context.tryFixErrors();
            QCOMPARE(context.errors(), QList<ContextError *> { error });
        }
        new TestJob(&context, { Job::Finished });
        processEvents();
        job->setStatus(Job::Finished);
        job->execute(); // in vain
        processEvents();
        QVERIFY(!job && !error);
        QCOMPARE(events, "busy 1 2 1 2 1 3 finished idle"_l);
    }

    void jobMayEndInASlotAndItsErrorGoes()
    {
        for (const Job::Status status : { Job::Running, Job::Error, Job::Finished }) {
            for (const char victim : { 'j', 'c', 'a' }) {
                auto context = std::make_unique<Context>();
                const QPointer<TestJob> job(new TestJob(context.get(), { status }));
                auto *failed = new TestJob(context.get(), { Job::Error });
                failed->execute();
                failed->abort(); // before it starts by itself
                connect(job, &Job::statusChanged, this, [&] {
                    if (job->status() == status) {
                        victim == 'j' ? delete job : victim == 'a' ? job->abort() : context.reset();
                    }
                });
                processEvents();
                QVERIFY(!job);
                if (context) {
                    QVERIFY(!context->isBusy());
                    context->tryFixErrors();
                    processEvents();
                    QVERIFY(context->errors().isEmpty());
                }
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
        *first = { 30, -1, false };
        *second = { 20, 100, false };
        QVERIFY(shows(50, 100, 0.5));
        first->received = 99; // more than was said
        QVERIFY(shows(119, 100, 1));
        context.endDownload(first);
        context.endDownload(second);
        QVERIFY(shows(100, 100, 1));
        QVERIFY(tick() && !context.download() && !tick());
    }
};

QTEST_GUILESS_MAIN(tst_Jobs)

#include "tst_jobs.moc"
