// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/listing.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/loadrequest.h>
#include <vorrel/data/core/documenttasks_p.h>
#include <vorrel/data/core/typeregistry_p.h>
#include <vorrel/data/jobs/databaseview_p.h>
#include <vorrel/data/jobs/listing_p.h>

#include <QtCore/QElapsedTimer>

#include <algorithm>

namespace vo::data {

namespace {

/// The newest first. The ids decide between those of the same time, or they would change places
/// whenever the list is made.
bool isBefore(const Document *a, const Document *b)
{
    const qint64 timeOfA = a->creationTimestamp();
    const qint64 timeOfB = b->creationTimestamp();
    return timeOfA != timeOfB ? timeOfA > timeOfB : a->id() < b->id();
}

bool isShown(const Document *document)
{
    return !document->deleted() && document->accessLevel() >= Document::ReadAccess
        && !document->implicitReadAccess();
}

} // namespace

Listing::Listing(Context *context)
    : d(new ListingPrivate(this))
{
    connect(this, &Listing::queryLimitChanged, d.get(), &ListingPrivate::updateListing);
    setContext(context);
}

Listing::~Listing()
{
    if (d->context) {
        d->context->removeListing(this);
    }
}

Context *Listing::context() const
{
    return d->context;
}

void Listing::setContext(Context *context)
{
    if (context == d->context) {
        return;
    }
    if (d->context) {
        d->context->disconnect(this);
        d->context->removeListing(this);
    }
    d->context = context;
    if (context) {
        context->addListing(this);
        connect(context, &Context::documentAdded, this, &Listing::documentAdded);
        connect(context, &Context::documentRemoved, this, &Listing::documentRemoved);
        connect(context, &Context::documentChanged, this, &Listing::documentChanged);
        QMetaObject::invokeMethod(this, "update", Qt::QueuedConnection);
    }
    d->clear();
    const QPointer<Listing> self(this);
    Q_EMIT contextChanged();
    if (self) {
        Q_EMIT documentsChanged();
    }
}

int Listing::queryLimit() const
{
    return d->queryLimit;
}

void Listing::setQueryLimit(int limit)
{
    if (limit != d->queryLimit) {
        d->queryLimit = limit;
        Q_EMIT queryLimitChanged(limit);
    }
}

QList<Document *> Listing::documentList() const
{
    return d->documents.objects();
}

QQmlListProperty<Document> Listing::documents()
{
    return ReadOnlyObjectList<Document>::property(
        this, [](QObject *owner) { return static_cast<Listing *>(owner)->documentList(); });
}

Listing::Status Listing::status() const
{
    return d->status;
}

bool Listing::includeLocalDocument(Document * /*document*/) const
{
    return false;
}

// What changes

void Listing::documentAdded(Document *document)
{
    if (document->isLocal() && includeLocalDocument(document)) {
        addToList(document);
    }
}

void Listing::documentRemoved(Document *document)
{
    removeFromList(document);
}

void Listing::documentChanged(Document *document)
{
    if (d->documentSet.contains(document)) {
        d->scheduleResult();
    }
}

void Listing::addToList(Document *document)
{
    if (!d->documentSet.contains(document)) {
        d->documentSet.insert(document);
        d->scheduleResult();
    }
}

void Listing::removeFromList(Document *document)
{
    if (d->documentSet.remove(document)) {
        d->scheduleResult();
    }
}

void Listing::update()
{
    qCDebug(lcListing) << "Scheduling listing update for" << this;
    d->timer.start();
}

void Listing::reset()
{
    d->clear();
    const QPointer<Listing> self(this);
    Q_EMIT documentsChanged();
    if (self) {
        update();
    }
}

// The list

void Listing::updateResult()
{
    qCDebug(lcListing, "Finishing listing update");
    QElapsedTimer clock;
    clock.start();
    d->resultScheduled = false;
    const QList<Document *> wanted = d->wantedDocuments();
    const int count = int(wanted.size());
    const bool isChanged = d->documents.assign(wanted);
    qCDebug(lcListing) << "Listing result update took" << clock.elapsed() << "msecs for" << count
                       << "documents";
    if (isChanged) {
        Q_EMIT documentsChanged();
    }
}

ListingPrivate::ListingPrivate(Listing *listing)
    : q(listing)
    , documents(listing, [listing] { Q_EMIT listing->documentsChanged(); })
{
    timer.setInterval(tuning::listingDelay);
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &ListingPrivate::updateListing);
}

ListingPrivate::~ListingPrivate() = default;

QList<Document *> ListingPrivate::wantedDocuments() const
{
    QList<Document *> wanted;
    std::copy_if(documentSet.begin(), documentSet.end(), std::back_inserter(wanted), isShown);
    const QStringList always = TypeRegistry::instance().autoInstances().keys();
    for (const QString &id : always) {
        Document *document = context ? context->loadedDocument(id) : nullptr;
        if (document && q->includeLocalDocument(document)) {
            wanted.append(document);
        }
    }
    std::sort(wanted.begin(), wanted.end(), isBefore);
    return wanted;
}

void ListingPrivate::scheduleResult()
{
    if (!resultScheduled) {
        resultScheduled = true;
        QMetaObject::invokeMethod(q, "updateResult", Qt::QueuedConnection);
    }
}

void ListingPrivate::clear()
{
    if (job) {
        job->disconnect(this); // it asks for something else
        job.clear();
    }
    ++queries;
    documentSet.clear();
    documents.assign({});
}

void ListingPrivate::documentDestroyed(const Document *document)
{
    documentSet.remove(const_cast<Document *>(document));
}

// The query

void ListingJob::run()
{
    qCDebug(lcJob) << "Run listing job" << CouchUrl::displayText(url());
    ViewJob::run();
}

void ListingPrivate::updateListing()
{
    if (!context) {
        return;
    }
    if (job) {
        q->update();
        return;
    }
    qCDebug(lcListing, "Performing listing update");
    const QPointer<ListingPrivate> self(this);
    setStatus(Listing::Updating);
    if (!self || !context || job) {
        return;
    }
    const QList<Document *> locals = context->localDocuments();
    for (Document *document : locals) {
        if (q->includeLocalDocument(document)) {
            documentSet.insert(document);
        }
    }
    const QUrl url = q->queryUrl();
    if (url.isEmpty()) {
        qCCritical(lcListing, "Listing has no query url");
        return;
    }
    job = new ListingJob(url, context);
    connect(job, &Job::finished, this, &ListingPrivate::processViewResult);
}

void ListingPrivate::processViewResult()
{
    if (!job) {
        qCCritical(lcListing, "Entered process view without request");
        return;
    }
    qCDebug(lcListing, "Processing view result");
    const QStringList ids = DatabaseView::rowIds(job->result().toObject());
    for (const QString &id : ids) {
        qCDebug(lcListing, "Processing listing row: %s", qPrintable(id));
    }
    job.clear();
    load(ids);
    setStatus(Listing::Loaded);
}

void ListingPrivate::load(const QStringList &ids)
{
    if (ids.isEmpty()) {
        scheduleResult();
        return;
    }
    const LoadRequest *request = context->loadDocuments(ids);
    if (!request) {
        return; // the Context is going
    }
    connect(request, &LoadRequest::finished, this, [this, ids, request, query = queries] {
        qCDebug(lcListing) << "Finished Pending Job: job" << request;
        if (query == queries) {
            take(ids, query);
        }
    });
}

// Documents are built in slices: thousands at once would stop the program for a while.
void ListingPrivate::take(const QStringList &ids, int query)
{
    const QPointer<ListingPrivate> self(this);
    const auto isWanted = [self, query] { return self && self->context && self->queries == query; };
    for (const QString &id : ids) {
        context->addDocumentGraphTask(std::make_unique<RunFunctionTask>([self, isWanted, id] {
            Document *document = isWanted() ? self->context->loadedDocument(id) : nullptr;
            if (document && isWanted()) {
                self->documentSet.insert(document);
            }
        }));
    }
    context->addDocumentGraphTask(std::make_unique<RunFunctionTask>([self, isWanted] {
        if (isWanted()) {
            self->scheduleResult();
        }
    }));
}

void ListingPrivate::setStatus(Listing::Status newStatus)
{
    if (newStatus != status) {
        status = newStatus;
        qCDebug(lcListing) << "Listing status changed:" << status;
        Q_EMIT q->statusChanged();
    }
}

// The error

ListingUpdateError::ListingUpdateError(Severity severity, int statusCode,
                                       QNetworkReply::NetworkError error, Listing *listing,
                                       QObject *parent)
    : NetworkError(severity, statusCode, error, parent)
    , m_listing(listing)
{
    connect(listing, &Listing::statusChanged, this, [this] {
        if (m_listing->status() == Listing::Loaded) {
            Q_EMIT fixed();
        }
    });
}

ListingUpdateError::~ListingUpdateError() = default;

void ListingUpdateError::tryFix()
{
    if (m_listing) {
        m_listing->update();
    } else {
        Q_EMIT fixed();
    }
}

} // namespace vo::data

#include "moc_listing.cpp"
#include "moc_listing_p.cpp"
