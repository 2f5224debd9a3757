// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/changefeed/basechangefeedmonitor.h>

#include <vorrel/data/base/clocktimer_p.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/changefeed/changerecord_p.h>
#include <vorrel/data/changefeed/revisionfetchrequest.h>
#include <vorrel/data/changefeed/revisiontable_p.h>
#include <vorrel/data/context/documentcache.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QJsonArray>
#include <QtCore/QSet>

#include <algorithm>
#include <deque>
#include <numeric>

namespace vo::data {

namespace {

using Records = std::deque<ChangeRecord>;

/// The records of an answer, read when their turn comes.
struct Answer
{
    QJsonArray records;
    ChangeRecord (*read)(const QJsonObject &record);
    int next = 0;
};

// Of each document the newest record stays, and whatever says that it was deleted.
void dropOutdated(Records &records)
{
    QSet<QString> seen;
    Records kept;
    for (auto it = records.rbegin(); it != records.rend(); ++it) {
        if (it->deleted || !seen.contains(it->id)) {
            seen.insert(it->id);
            kept.push_front(std::move(*it));
        }
    }
    records.swap(kept);
}

} // namespace

struct BaseChangeFeedMonitor::Private
{
    QString lastSequence;
    RevisionTable revisions;
    QSet<QString> unknownRevisions; // ids to ask for
    ClockTimer *fetchTimer = nullptr;
    std::deque<Answer> answers;
    Records queuedRecords;                   // later than the answers
    size_t queueLimit = tuning::heldRecords; // where the queue is thinned out
    bool drainScheduled = false;
    QPointer<RevisionFetchRequest> fetchRequest;
    bool askedFromNow = false; // at least once
    bool mayHaveMissed = false;
};

BaseChangeFeedMonitor::BaseChangeFeedMonitor(const QString &database, Context *context)
    : ChangeFeedMonitor(database, context)
    , d(new Private)
{
    d->fetchTimer = new ClockTimer([this] { fetchRevisions(); }, this);
    d->fetchTimer->startPeriodic(tuning::revisionFetchPeriod);
    connect(context, &Context::saved, this, &BaseChangeFeedMonitor::processQueuedRecords);
}

BaseChangeFeedMonitor::~BaseChangeFeedMonitor() = default;

// The sequence

int BaseChangeFeedMonitor::revisionCount() const
{
    return d->revisions.count();
}

QString BaseChangeFeedMonitor::lastSequence() const
{
    return d->lastSequence;
}

void BaseChangeFeedMonitor::updateSequence(const QJsonValue &value)
{
    const QString sequence = ChangeRecord::sequenceText(value);
    if (!sequence.isEmpty()) {
        d->lastSequence = sequence;
    }
}

QUrl BaseChangeFeedMonitor::nextFeedUrl(const CouchUrl::Query &query)
{
    QString since = d->lastSequence;
    if (since.isEmpty()) {
        since = QStringLiteral("now");
        d->mayHaveMissed = std::exchange(d->askedFromNow, true);
    }
    return CouchUrl::resource(context()->serviceUrl(), database(), QStringLiteral("_changes"),
                              CouchUrl::Query { { QStringLiteral("since"), since } } + query);
}

void BaseChangeFeedMonitor::feedAnswers()
{
    if (!std::exchange(d->mayHaveMissed, false)) {
        return;
    }
    const QList<Document *> documents = context()->documents();
    for (const Document *document : documents) {
        if (!document->isLocal()) {
            d->unknownRevisions.insert(document->documentId());
        }
    }
}

bool BaseChangeFeedMonitor::canConnect() const
{
    return networkAccessManager() && !context()->serviceUrl().isEmpty();
}

// Records

void BaseChangeFeedMonitor::handleRecord(const QJsonObject &record)
{
    if (context()->isSaving() || hasQueuedRecords()) {
        holdRecord(ChangeRecord::fromFeed(record));
    } else {
        applyRecord(ChangeRecord::fromFeed(record));
    }
}

void BaseChangeFeedMonitor::handleAnswer(const QJsonObject &answer)
{
    updateSequence(answer.value(jsonkeys::lastSequence));
    d->answers.push_back({ answer.value(jsonkeys::results).toArray(), &ChangeRecord::fromFeed });
    drain();
}

bool BaseChangeFeedMonitor::hasQueuedRecords() const
{
    return !d->answers.empty() || !d->queuedRecords.empty();
}

// Nothing at the end of an answer.
std::optional<ChangeRecord> BaseChangeFeedMonitor::takeRecord()
{
    if (d->answers.empty()) {
        const ChangeRecord record = std::move(d->queuedRecords.front());
        d->queuedRecords.pop_front();
        return record;
    }
    Answer &answer = d->answers.front();
    if (answer.next == answer.records.size()) {
        d->answers.pop_front();
        return std::nullopt;
    }
    return answer.read(answer.records.at(answer.next++).toObject());
}

void BaseChangeFeedMonitor::holdRecord(const ChangeRecord &record)
{
    d->queuedRecords.push_back(record);
    if (d->queuedRecords.size() > d->queueLimit) {
        dropOutdated(d->queuedRecords);
        // Documents may be as many: not again with the next record.
        d->queueLimit = std::max<size_t>(tuning::heldRecords, 2 * d->queuedRecords.size());
    }
}

void BaseChangeFeedMonitor::processQueuedRecords()
{
    if (!context()->isSaving() && hasQueuedRecords()) {
        const auto count =
            std::accumulate(d->answers.begin(), d->answers.end(), d->queuedRecords.size(),
                            [](size_t sum, const Answer &answer) {
                                return sum + size_t(answer.records.size() - answer.next);
                            });
        qCDebug(lcChangeFeed) << "Processing" << count << "queued change records";
        drain();
    }
}

void BaseChangeFeedMonitor::drain()
{
    const QPointer<BaseChangeFeedMonitor> self(this);
    const TimeSlice slice(tuning::changeFeedSlice);
    while (hasQueuedRecords() && !context()->isSaving()) {
        if (slice.isOver()) {
            scheduleDrain();
            return;
        }
        if (const std::optional<ChangeRecord> record = takeRecord()) {
            applyRecord(*record);
        }
        if (!self || !context()) {
            return;
        }
    }
}

void BaseChangeFeedMonitor::scheduleDrain()
{
    if (std::exchange(d->drainScheduled, true)) {
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this] {
            d->drainScheduled = false;
            drain();
        },
        Qt::QueuedConnection);
}

void BaseChangeFeedMonitor::applyRecord(const ChangeRecord &record)
{
    if (!record.sequence.isEmpty()) {
        d->lastSequence = record.sequence;
    }
    // Once another database is open, this one says nothing about its documents.
    if (record.id.isEmpty() || context()->database() != database()) {
        return;
    }
    const QPointer<BaseChangeFeedMonitor> self(this);
    const bool changed = insert(record.id, record.revision);
    if (self && changed && record.isNews && record.isFirstRevision()) {
        Q_EMIT newDocument(record.id);
    }
    if (self && record.deleted && context()) {
        context()->removeDocument(record.id);
    }
}

bool BaseChangeFeedMonitor::insert(const QString &id, const QString &revision)
{
    if (d->revisions.value(id) == revision) {
        return false;
    }
    qCDebug(lcChangeFeed) << "Inserting new document revision" << id << revision;
    d->revisions.insert(id, revision);
    if (const QSharedPointer<DocumentCache> cache = context()->documentCache()) {
        cache->invalidate(id, revision);
    }
    Q_EMIT newRevision(id, revision);
    return true;
}

// Revisions

void BaseChangeFeedMonitor::registerDocument(LinkedDocument *document)
{
    if (document->isLocal()) {
        return;
    }
    const QString id = document->documentId();
    const QString known = d->revisions.value(id);
    const bool isOther = !known.isEmpty() && known != document->revision();
    if (!document->wasCached()) {
        if (isOther) {
            // It may have been overtaken on its way, or since it came without being built.
            d->unknownRevisions.insert(id);
        }
        insert(id, document->revision());
    } else if (known.isEmpty()) {
        d->unknownRevisions.insert(id);
    } else if (isOther) {
        Q_EMIT newRevision(id, known);
    }
}

void BaseChangeFeedMonitor::fetchRevisions()
{
    if (d->unknownRevisions.isEmpty() || d->fetchRequest || !canConnect()) {
        return;
    }
    const QStringList ids = d->unknownRevisions.values();
    d->unknownRevisions.clear();
    const QUrl url =
        CouchUrl::resource(context()->serviceUrl(), database(), QStringLiteral("_all_docs"));
    const QJsonObject body { { jsonkeys::keys, QJsonArray::fromStringList(ids) } };
    d->fetchRequest =
        new RevisionFetchRequest(QNetworkRequest(url), networkAccessManager(), body, ids, this);
    d->fetchRequest->setSuppressErrors(true);
    connect(d->fetchRequest, &Request::finished, this,
            &BaseChangeFeedMonitor::updateCurrentRevisions);
}

void BaseChangeFeedMonitor::updateCurrentRevisions()
{
    if (!d->fetchRequest) {
        qCCritical(lcChangeFeed) << "Call to updateCurrentRevisions without fetch request."
                                 << "This is a bug!";
        return;
    }
    const QJsonValue rows = d->fetchRequest->isOk(200)
        ? d->fetchRequest->responseObject(nullptr).value(jsonkeys::rows)
        : QJsonValue();
    if (!rows.isArray()) { // also where a proxy answers in the place of the database
        const QStringList ids = d->fetchRequest->ids();
        d->unknownRevisions.unite(QSet<QString>(ids.begin(), ids.end()));
        return;
    }
    d->answers.push_back({ rows.toArray(), &ChangeRecord::fromRow });
    drain();
}

} // namespace vo::data

#include "moc_basechangefeedmonitor.cpp"
