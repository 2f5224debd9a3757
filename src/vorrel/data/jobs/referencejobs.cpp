// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/referencejobs_p.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/jobs/databaseview_p.h>

#include <vorrel/core/postrequest.h>

#include <algorithm>

namespace vo::data {

namespace {

constexpr QLatin1String view("references");

CouchUrl::Query everyRow()
{
    return { { QStringLiteral("reduce"), QStringLiteral("false") } };
}

/// Whether the document is an object already. Asked without making it one.
bool isBuilt(const Context *context, const QString &id)
{
    return context->isLoaded(id) && context->documentNode(id.toLatin1())->isInstantiated();
}

} // namespace

// What is known

QUrl References::queryUrl(const Document *document)
{
    CouchUrl::Query query = everyRow();
    query.prepend({ QStringLiteral("key"), DatabaseView::key(document->documentId()) });
    return DatabaseView::url(document->context(), view, query);
}

QList<Document *> References::loaded(const Document *document)
{
    const QList<Document *> all = document->referencingDocuments();
    QList<Document *> referrers;
    std::copy_if(all.begin(), all.end(), std::back_inserter(referrers),
                 [](const Document *referrer) { return referrer->linkSource(); });
    return referrers;
}

// One document

ReferenceCountJob::ReferenceCountJob(Document *document)
    : ViewJob(References::queryUrl(document), ContextError::Major, document->context())
    , m_document(document)
{ }

ReferenceCountJob::~ReferenceCountJob() = default;

void ReferenceCountJob::run()
{
    qCDebug(lcJob) << "Runing ReferenceCount job" << CouchUrl::displayText(url());
    ViewJob::run();
}

void ReferenceCountJob::answered(int statusCode)
{
    qCDebug(lcJob) << "Finished ReferenceCount job with code" << statusCode;
    if (!result().isObject()) {
        return;
    }
    const QPointer<ReferenceCountJob> self(this);
    context()->finishIncubation();
    if (self) {
        m_count = m_document ? countReferrers() : 0;
    }
}

// What is built knows best whether it refers to the document: the view may be older. All else
// counts by its rows, once each.
int ReferenceCountJob::countReferrers() const
{
    QStringList ids = DatabaseView::rowIds(result().toObject());
    ids.removeDuplicates();
    const auto stored = std::count_if(ids.cbegin(), ids.cend(), [this](const QString &id) {
        return !isBuilt(m_document->context(), id);
    });
    return int(stored + References::loaded(m_document).size());
}

// Many documents

ReferenceCounterJob::ReferenceCounterJob(const QList<Document *> &documents)
    : ViewJob(DatabaseView::url(documents.constFirst()->context(), view, everyRow()),
              ContextError::Major, documents.constFirst()->context())
{
    m_documents.assign(documents);
}

ReferenceCounterJob::~ReferenceCounterJob() = default;

void ReferenceCounterJob::run()
{
    if (documents().isEmpty()) {
        setStatus(Finished); // there is nothing left to ask for
        return;
    }
    qCDebug(lcJob) << "Run ReferenceCounterJob" << CouchUrl::displayText(url());
    ViewJob::run();
}

Request *ReferenceCounterJob::createRequest(const QNetworkRequest &request)
{
    QJsonArray keys;
    for (const Document *document : m_documents.objects()) {
        keys.append(document->documentId());
    }
    return new PostRequest(request, context()->networkAccessManager(), { { jsonkeys::keys, keys } },
                           this);
}

void ReferenceCounterJob::answered(int statusCode)
{
    qCDebug(lcJob) << "Finished ReferenceCounterJob code" << statusCode;
    if (result().isObject()) {
        context()->finishIncubation();
    }
}

} // namespace vo::data

#include "moc_referencejobs_p.cpp"
