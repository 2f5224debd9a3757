// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: the fetching of attachments. It stands here and not in context/, because it knows the
// jobs of this folder: so no arrow points up.

#include <vorrel/data/context/context_p.h>
#include <vorrel/data/transfer/attachmentfetchjob.h>

namespace vo::data {

void Context::Private::fetchAttachment(LinkedDocument *document, const QString &property,
                                       const std::function<void()> &finished)
{
    const Attachment *attachment = document->attachment(property);
    if (!attachment) {
        return;
    }
    // One for all who ask, or each would add an error of its own.
    QPointer<AttachmentFetchJob> job = attachmentFetches.value(attachment);
    if (!job || job->attachment() != attachment || job->status() == Job::Finished) {
        job = new AttachmentFetchJob(document, property);
        attachmentFetches.insert(attachment, job);
        QObject::connect(job, &QObject::destroyed, q, [this, attachment] {
            if (!attachmentFetches.value(attachment)) { // there may be a newer one
                attachmentFetches.remove(attachment);
            }
        });
    }
    if (finished) {
        QObject::connect(job, &Job::finished, document, finished);
    }
}

} // namespace vo::data
