// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/referencecounter.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/jobs/referencejobs_p.h>

#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QTimerEvent>

namespace vo::data {

namespace {

using Referrers = QSet<QString>; // ids

QHash<QString, Referrers> referrersOf(const ReferenceCounterJob &job)
{
    QHash<QString, Referrers> table;
    const QJsonArray rows = job.response().value(jsonkeys::rows).toArray();
    for (const QJsonValue &value : rows) {
        const QJsonObject row = value.toObject();
        table[row.value(jsonkeys::key).toString()].insert(row.value(jsonkeys::recordId).toString());
    }
    const QList<Document *> documents = job.documents();
    for (const Document *document : documents) {
        Referrers &referrers = table[document->documentId()];
        const QList<Document *> loaded = References::loaded(document);
        for (const Document *referrer : loaded) {
            referrers.insert(referrer->documentId());
        }
    }
    return table;
}

} // namespace

struct ReferenceCounter::Private
{
    explicit Private(ReferenceCounter *counter);

    void documentsAreOthers();
    void setStatus(Status newStatus);

    /// Null, with a warning for \p function, if they are not known.
    [[nodiscard]] const Referrers *find(const Document *document, const char *function) const;

    ReferenceCounter *const q;
    int timerId = 0;
    Status status = Ready;
    DocumentList documents;
    QHash<QString, Referrers> references; // by the id of the document that is referred to
    QPointer<ReferenceCounterJob> job;    // that is waited for
};

ReferenceCounter::Private::Private(ReferenceCounter *counter)
    : q(counter)
    , documents(
          counter, [this] { documentsAreOthers(); }, DocumentList::NoNulls)
{ }

void ReferenceCounter::Private::documentsAreOthers()
{
    const QPointer<ReferenceCounter> self(q);
    Q_EMIT q->documentsChanged();
    if (self) {
        q->scheduleUpdate();
    }
}

void ReferenceCounter::Private::setStatus(Status newStatus)
{
    if (newStatus != status) {
        status = newStatus;
        Q_EMIT q->statusChanged();
    }
}

ReferenceCounter::ReferenceCounter(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{ }

ReferenceCounter::~ReferenceCounter()
{
    if (d->job) {
        d->job->abort();
    }
}

ReferenceCounter::Status ReferenceCounter::status() const
{
    return d->status;
}

QQmlListProperty<Document> ReferenceCounter::documents()
{
    return d->documents.property(this);
}

// Counting

// The status alone would not do: it is still Loading when the Context has ended under the job.
void ReferenceCounter::scheduleUpdate()
{
    if (d->timerId != 0 || d->job) {
        return;
    }
    d->references.clear();
    if (d->documents.objects().isEmpty()) {
        d->setStatus(Ready);
        return;
    }
    d->timerId = startTimer(tuning::referenceCounterDelay, Qt::CoarseTimer);
    d->setStatus(Loading);
}

void ReferenceCounter::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != d->timerId) {
        QObject::timerEvent(event);
        return;
    }
    killTimer(std::exchange(d->timerId, 0));
    if (d->documents.objects().isEmpty()) {
        d->setStatus(Ready);
        return;
    }
    d->job = new ReferenceCounterJob(d->documents.objects());
    connect(d->job, &Job::finished, this, &ReferenceCounter::updateCount);
}

void ReferenceCounter::updateCount()
{
    d->references = referrersOf(*d->job);
    d->job.clear();
    d->setStatus(Ready);
}

// The answers

const Referrers *ReferenceCounter::Private::find(const Document *document,
                                                 const char *function) const
{
    if (status != Ready) {
        qCWarning(lcData, "ReferenceCounter::%s called on busy ReferenceCounter", function);
        return nullptr;
    }
    const auto entry = document ? references.constFind(document->documentId()) : references.cend();
    if (entry == references.cend()) {
        qCWarning(lcData, "ReferenceCounter::%s called on document not checked by ReferenceCounter",
                  function);
        return nullptr;
    }
    return &*entry;
}

bool ReferenceCounter::isReferenced(Document *document) const
{
    const Referrers *referrers = d->find(document, "isReferenced");
    return referrers && !referrers->isEmpty();
}

int ReferenceCounter::referenceCount(Document *document) const
{
    const Referrers *referrers = d->find(document, "referenceCount");
    return referrers ? int(referrers->size()) : 0;
}

} // namespace vo::data

#include "moc_referencecounter.cpp"
