// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/referencecount.h>

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/jobs/referencejobs_p.h>

#include <QtCore/QTimer>

namespace vo::data {

struct ReferenceCount::Private
{
    explicit Private(ReferenceCount *referenceCount)
        : q(referenceCount)
    { }

    void setDocument(Document *newDocument);
    void dropJob();
    void setResult(int newCount, Status newStatus);

    ReferenceCount *const q;
    QPointer<Document> document;
    int count = 0;
    Status status = Ready;
    QPointer<ReferenceCountJob> job; // that is waited for
};

ReferenceCount::ReferenceCount(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{ }

ReferenceCount::~ReferenceCount()
{
    d->dropJob();
}

Document *ReferenceCount::document() const
{
    return d->document;
}

void ReferenceCount::setDocument(Document *document)
{
    if (document != d->document) {
        d->dropJob();
        d->setDocument(document);
    }
}

void ReferenceCount::Private::setDocument(Document *newDocument)
{
    if (document) {
        document->disconnect(q);
    }
    document = newDocument;
    if (newDocument) {
        // Later: with it, its whole Context may be going.
        const auto forget = [this] {
            if (!document) {
                setDocument(nullptr);
            }
        };
        connect(newDocument, &QObject::destroyed, q, forget, Qt::QueuedConnection);
    }
    const QPointer<ReferenceCount> self(q);
    Q_EMIT q->documentChanged();
    if (self) {
        q->update();
    }
}

int ReferenceCount::count() const
{
    return d->count;
}

ReferenceCount::Status ReferenceCount::status() const
{
    return d->status;
}

void ReferenceCount::update()
{
    QTimer::singleShot(tuning::referenceCountDelay, this, &ReferenceCount::performUpdate);
}

// The job is asked for, not the status: after another document was set, and after the end of the
// Context, that is still Loading.
void ReferenceCount::performUpdate()
{
    if (d->job) {
        return;
    }
    if (!d->document) {
        d->setResult(0, Ready);
        return;
    }
    d->job = new ReferenceCountJob(d->document);
    connect(d->job, &Job::finished, this, &ReferenceCount::finishUpdate);
    d->setResult(d->count, Loading);
}

void ReferenceCount::finishUpdate()
{
    const int count = d->job->count();
    d->job.clear();
    d->setResult(count, Ready);
}

void ReferenceCount::Private::dropJob()
{
    if (job) {
        job->abort();
        job.clear();
    }
}

void ReferenceCount::Private::setResult(int newCount, Status newStatus)
{
    const bool hasOtherCount = std::exchange(count, newCount) != newCount;
    const bool hasOtherStatus = std::exchange(status, newStatus) != newStatus;
    const QPointer<ReferenceCount> self(q);
    if (hasOtherCount) {
        Q_EMIT q->countChanged();
    }
    if (self && hasOtherStatus) {
        Q_EMIT q->statusChanged();
    }
}

} // namespace vo::data

#include "moc_referencecount.cpp"
