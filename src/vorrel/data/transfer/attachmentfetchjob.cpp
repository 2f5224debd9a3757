// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/transfer/attachmentfetchjob.h>

#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/core/documenttask.h>
#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

/// Starts the download in a slice of time: there may be thousands of them at once.
class AttachmentFetchJob::StartTask : public DocumentTask
{
public:
    explicit StartTask(AttachmentFetchJob *job)
        : m_job(job)
    { }

    void run() override
    {
        if (m_job) {
            m_job->start();
        }
    }

private:
    const QPointer<AttachmentFetchJob> m_job;
};

AttachmentFetchJob::AttachmentFetchJob(LinkedDocument *document, const QString &property)
    : Job(document->context())
    , m_attachment(document->attachment(property))
{ }

AttachmentFetchJob::~AttachmentFetchJob() = default;

Attachment *AttachmentFetchJob::attachment() const
{
    return m_attachment;
}

bool AttachmentFetchJob::needsNothing() const
{
    return !m_attachment || !m_attachment->hasFile() || m_attachment->isLocal();
}

void AttachmentFetchJob::run()
{
    documentStore(context()).addDocumentGraphTask(std::make_unique<StartTask>(this));
}

void AttachmentFetchJob::start()
{
    if (needsNothing()) {
        finish(true);
        return;
    }
    const auto connection = Qt::UniqueConnection; // it may run again
    connect(m_attachment, &Attachment::downloadFinished, this, &AttachmentFetchJob::finish,
            connection);
    // Another hash may end the download without a word, and so does the end of the document.
    connect(m_attachment, &Attachment::urlChanged, this, &AttachmentFetchJob::finishIfIdle,
            connection);
    connect(m_attachment, &QObject::destroyed, this, &AttachmentFetchJob::finishIfIdle, connection);
    m_attachment->download();
}

void AttachmentFetchJob::finishIfIdle()
{
    // The Context ends its jobs itself when it goes.
    if (context() && !documentStore(context()).isClosing() && needsNothing()) {
        finish(true);
    }
}

void AttachmentFetchJob::finish(bool success)
{
    setStatus(success && checkResult() ? Finished : Error);
}

bool AttachmentFetchJob::checkResult()
{
    return true;
}

ContextError *AttachmentFetchJob::createJobError()
{
    return new AttachmentFetchJobError(this);
}

// The error

namespace {
constexpr int fetchErrorCode = 100;
} // namespace

AttachmentFetchJobError::AttachmentFetchJobError(AttachmentFetchJob *job, QObject *parent)
    : ContextError(Major, parent)
    , m_job(job)
{
    connect(job, &Job::finished, this, &ContextError::fixed);
    if (job->attachment()) {
        connect(job->attachment(), &Attachment::downloadFinished, this, [this](bool success) {
            if (success) {
                Q_EMIT fixed();
            }
        });
    }
}

AttachmentFetchJobError::~AttachmentFetchJobError() = default;

int AttachmentFetchJobError::errorCode() const
{
    return fetchErrorCode;
}

QString AttachmentFetchJobError::errorString() const
{
    const QByteArray id = textids::networkErrorPrefix + QByteArray::number(fetchErrorCode);
    return qtTrId(id.constData());
}

void AttachmentFetchJobError::tryFix()
{
    Attachment *attachment = m_job ? m_job->attachment() : nullptr;
    if (!attachment || attachment->isLocal()) {
        Q_EMIT fixed();
    } else {
        attachment->download();
    }
}

} // namespace vo::data

#include "moc_attachmentfetchjob.cpp"
