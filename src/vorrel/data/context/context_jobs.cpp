// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: the work that goes on in the background, and how far downloads have come.

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context_p.h>
#include <vorrel/data/context/downloadstatus.h>
#include <vorrel/data/context/job.h>

#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

void Context::addJob(Job *job)
{
    d->jobs.append(job);
    qCDebug(lcContext) << "Adding job" << job << ", " << d->jobs.size() << "pending";
    if (d->jobs.size() == 1) {
        updateBusyState();
    }
}

void Context::removeJob(Job *job)
{
    d->jobs.removeOne(job);
    qCDebug(lcTrace) << "Removing job" << job << ", " << d->jobs.size() << "pending";
    if (d->jobs.isEmpty()) {
        updateBusyState();
    }
}

void Context::Private::destroyJobs()
{
    // To abort one may destroy others.
    const QVector<QPointer<Job>> all(jobs.cbegin(), jobs.cend());
    for (const QPointer<Job> &job : all) {
        if (job) {
            job->disconnect();
            job->abort();
        }
        delete job.data();
    }
}

// Downloads

QSharedPointer<DownloadProgress> Context::beginDownload()
{
    const auto progress = QSharedPointer<DownloadProgress>::create();
    d->downloads.append(progress);
    if (d->downloadTimerId == 0) {
        d->downloadTimerId = startTimer(tuning::downloadTick, Qt::CoarseTimer);
    }
    return progress;
}

void Context::endDownload(const QSharedPointer<DownloadProgress> &progress)
{
    progress->finished = true;
}

DownloadStatus *Context::downloadStatus() const
{
    return d->downloadStatus;
}

DownloadStatus *Context::download() const
{
    return d->downloadStatus;
}

void Context::Private::reportDownloads()
{
    if (downloads.isEmpty()) {
        q->killTimer(std::exchange(downloadTimerId, 0));
        delete std::exchange(downloadStatus, nullptr);
        Q_EMIT q->downloadChanged();
        return;
    }
    DownloadProgress sum;
    sum.finished = true;
    for (const auto &download : std::as_const(downloads)) {
        sum.received += download->received;
        sum.total += std::max<qint64>(download->total, 0);
        sum.finished = sum.finished && download->finished;
    }
    if (sum.finished) {
        downloads.clear();
    }
    const QPointer<Context> self(q);
    if (!downloadStatus) {
        downloadStatus = new DownloadStatus(q);
        Q_EMIT q->downloadChanged();
    }
    const QPointer<DownloadStatus> status(self ? downloadStatus : nullptr);
    if (status) {
        status->report(sum.received, sum.total);
    }
    if (status && sum.finished) {
        status->finish();
    }
}

} // namespace vo::data
