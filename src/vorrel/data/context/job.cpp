// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/job.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/contexterror.h>

namespace vo::data {

Job::Job(Context *context)
    : QObject(context)
    , m_context(context)
{
    context->addJob(this);
    connect(this, &Job::finished, this, &Job::cleanup);
    // Later, so that constructors complete and the creator can connect.
    QMetaObject::invokeMethod(this, "execute", Qt::QueuedConnection);
}

Job::~Job()
{
    // First, because a slot of busyChanged() may destroy the Context with all of its children.
    setParent(nullptr);
    if (m_context) {
        m_context->removeJob(this);
    }
}

Context *Job::context() const
{
    return m_context;
}

Job::Status Job::status() const
{
    return m_status;
}

void Job::execute()
{
    if (m_aborted || m_status == Running || m_status == Finished) {
        return;
    }
    m_retrying = m_retrying || m_status == Error;
    const QPointer<Job> self(this);
    setStatus(Running);
    if (self && !m_aborted && m_status == Running) {
        run();
    }
}

void Job::setStatus(Status status)
{
    if (status == m_status) {
        return;
    }
    m_status = status;
    qCDebug(lcJob) << "Job status changed:" << this << status;
    const bool failed = status == Error && !m_retrying;
    const QPointer<Job> self(this);
    Q_EMIT statusChanged();
    if (!self || m_aborted) {
        return;
    }
    // A slot may have tried it again, even with success.
    if (failed && m_status != Finished) {
        reportError();
    } else if (status == Finished) {
        finish();
    }
}

void Job::reportError()
{
    if (m_context) {
        m_context->addError(createJobError());
    }
}

void Job::finish()
{
    const QPointer<Job> self(this);
    Q_EMIT finished();
    if (self) {
        m_retrying = false;
    }
    if (self && m_context) {
        m_context->removeJob(this);
    }
}

void Job::cleanup()
{
    deleteLater();
}

void Job::abort()
{
    m_aborted = true;
    disconnect();
    deleteLater();
}

} // namespace vo::data

#include "moc_job.cpp"
