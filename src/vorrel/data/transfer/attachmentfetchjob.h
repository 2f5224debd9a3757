// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/contexterror.h>
#include <vorrel/data/context/job.h>
#include <vorrel/data/properties/attachment.h>

#include <QtCore/QPointer>

namespace vo::data {

class LinkedDocument;

/// Gets the file of an attachment from the database. It has finished when the file is local, or
/// when there is nothing to wait for any more: no such attachment, no file, no document. If another
/// file takes its place, that one is waited for.
class VORREL_DATACORE_EXPORT AttachmentFetchJob : public Job
{
    Q_OBJECT

public:
    /// \p property is the name of an attachment property of \p document.
    AttachmentFetchJob(LinkedDocument *document, const QString &property);
    ~AttachmentFetchJob() override;

    /// Null once it is gone.
    [[nodiscard]] Attachment *attachment() const;

protected:
    void run() override;
    [[nodiscard]] ContextError *createJobError() override;

    /// Whether the job may count as finished, asked after each success. True here.
    [[nodiscard]] virtual bool checkResult();

private:
    class StartTask;

    [[nodiscard]] bool needsNothing() const;
    void start();
    void finish(bool success);
    void finishIfIdle();

    const QPointer<Attachment> m_attachment;
};

/// An attachment could not be fetched. It is fixed when that works, or when the job is gone.
class VORREL_DATACORE_EXPORT AttachmentFetchJobError : public ContextError
{
    Q_OBJECT

public:
    /// \pre \p job is not null
    explicit AttachmentFetchJobError(AttachmentFetchJob *job, QObject *parent = nullptr);
    ~AttachmentFetchJobError() override;

    /// Always 100.
    [[nodiscard]] int errorCode() const override;
    [[nodiscard]] QString errorString() const override;

    /// Downloads again, unless there is nothing to download any more.
    void tryFix() override;

private:
    const QPointer<AttachmentFetchJob> m_job;
};

} // namespace vo::data
