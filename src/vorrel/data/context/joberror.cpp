// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/joberror.h>

#include <vorrel/data/context/job.h>

namespace vo::data {

JobError::JobError(Severity severity, int statusCode, QNetworkReply::NetworkError error, Job *job,
                   QObject *parent)
    : NetworkError(severity, statusCode, error, parent)
    , m_job(job)
{
    connect(job, &Job::statusChanged, this, &JobError::statusChange, Qt::UniqueConnection);
}

JobError::~JobError() = default;

Job *JobError::job() const
{
    return m_job;
}

void JobError::tryFix()
{
    if (m_job) {
        m_job->execute();
    } else {
        Q_EMIT fixed();
    }
}

void JobError::statusChange()
{
    if (m_job && m_job->status() == Job::Finished) {
        Q_EMIT fixed();
    }
}

} // namespace vo::data

#include "moc_joberror.cpp"
