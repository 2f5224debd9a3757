// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/couchdbloader.h>

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/jsonslices_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/context/documentcache.h>

#include <vorrel/core/couchurl.h>
#include <vorrel/core/postrequest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QMetaEnum>
#include <QtCore/QPointer>
#include <QtCore/QSet>

#include <algorithm>
#include <deque>

namespace vo::data {

namespace {

constexpr int databasePriority = 100;

void logFailure(int status, QNetworkReply::NetworkError error)
{
    const char *name = QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error);
    if (status == 0) {
        qCCritical(lcLoadQueue) << "Document load request failed with network error" << name;
    } else if (error == QNetworkReply::NoError) {
        qCCritical(lcLoadQueue) << "Document load request failed: the answer with HTTP status"
                                << status << "lacks documents that were asked for";
    } else {
        qCCritical(lcLoadQueue) << "Document load request failed with HTTP status" << status
                                << name;
    }
}

QStringList inOrder(const QStringList &ids, const QSet<QString> &chosen)
{
    QStringList result;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(result),
                 [&](const QString &id) { return chosen.contains(id); });
    return result;
}

// The rows of an answer; empty if it is damaged.
QByteArray rowsOf(const QByteArray &answer)
{
    QByteArray rows;
    JsonSlices members(answer);
    while (members.next()) {
        if (members.key() == jsonkeys::rows.data()) {
            rows = members.value();
        }
    }
    return members.isWhole() ? rows : QByteArray();
}

} // namespace

/// One request on its way, and what it was made for: the answer counts only for that.
struct CouchDBLoader::Batch
{
    QStringList ids;
    QUrl url;
    QSharedPointer<DocumentCache> cache;
    QPointer<PostRequest> request;
};

struct CouchDBLoader::Private
{
    std::deque<QString> pendingIds;
    bool scheduled = false; // a flush is queued or a request is in flight
    int failedAttempts = 0; // in a row
    std::chrono::milliseconds nextDelay {};
    int lastStatus = -1;
    QNetworkReply::NetworkError lastError = QNetworkReply::NoError;
};

CouchDBLoader::CouchDBLoader(Context *context)
    : Loader(databasePriority, context)
    , d(new Private)
{ }

CouchDBLoader::~CouchDBLoader() = default;

bool CouchDBLoader::load(const QString &id)
{
    d->pendingIds.push_back(id);
    schedule();
    return true;
}

void CouchDBLoader::schedule()
{
    if (d->scheduled) {
        return;
    }
    d->scheduled = true;
    const auto delay = std::exchange(d->nextDelay, std::chrono::milliseconds::zero());
    if (delay.count() < 1) {
        QMetaObject::invokeMethod(this, &CouchDBLoader::flush, Qt::QueuedConnection);
    } else {
        Clock::instance().singleShot(delay, this, [this] { flush(); });
    }
}

void CouchDBLoader::flush()
{
    if (d->pendingIds.empty()) {
        d->scheduled = false;
        return;
    }
    Batch batch;
    while (!d->pendingIds.empty() && batch.ids.size() < tuning::bulkFetchSize) {
        batch.ids.append(std::move(d->pendingIds.front()));
        d->pendingIds.pop_front();
    }
    batch.url = CouchUrl::databaseUrl(context()->serviceUrl(), context()->database());
    batch.cache = context()->documentCache();

    const QUrl url = CouchUrl::resource(
        context()->serviceUrl(), context()->database(), QStringLiteral("_all_docs"),
        { { QStringLiteral("include_docs"), QStringLiteral("true") } });
    const QJsonObject body { { jsonkeys::keys, QJsonArray::fromStringList(batch.ids) } };
    batch.request =
        new PostRequest(QNetworkRequest(url), context()->networkAccessManager(), body, this);
    batch.request->setSuppressErrors(true);
    connect(batch.request, &Request::finished, this, [this, batch] { handleAnswer(batch); });
}

void CouchDBLoader::handleAnswer(const Batch &batch)
{
    const QPointer<CouchDBLoader> self(this);
    const QUrl present = CouchUrl::databaseUrl(context()->serviceUrl(), context()->database());
    if (batch.url != present || batch.cache != context()->documentCache()) {
        // Another database was opened in the meantime: it will be asked for these ids.
        for (const QString &id : batch.ids) {
            Q_EMIT failed(id);
            if (!self) {
                return;
            }
        }
    } else if (batch.request->isOk(200)) {
        handleRows(batch);
    } else {
        handleFailure(batch, batch.ids);
    }
    if (self) {
        d->scheduled = false;
        schedule();
    }
}

void CouchDBLoader::handleRows(const Batch &batch)
{
    const QPointer<CouchDBLoader> self(this);
    QSet<QString> unanswered(batch.ids.begin(), batch.ids.end());
    const QByteArray answer = batch.request->rawResponse();
    const QByteArray all = rowsOf(answer);
    for (JsonSlices rows(all); rows.next();) {
        const QByteArray doc = JsonSlices::member(rows.value(), jsonkeys::doc);
        const bool missing = doc.isEmpty() || doc == "null";
        const QString id =
            JsonSlices::toString(missing ? JsonSlices::member(rows.value(), jsonkeys::key)
                                         : JsonSlices::member(doc, jsonkeys::id));
        if (!unanswered.remove(id)) {
            qCWarning(lcLoadQueue, "Ignoring a row for the document \"%s\" that was not asked for",
                      qPrintable(id));
            continue;
        }
        if (missing) {
            Q_EMIT notFound(id);
        } else if (const QJsonObject document = takeDocument(batch, id, doc); document.isEmpty()) {
            unanswered.insert(id);
        } else {
            Q_EMIT loaded(id, document);
        }
        if (!self) {
            return;
        }
    }
    if (unanswered.isEmpty()) {
        if (d->failedAttempts > 0) {
            qCInfo(lcLoadQueue) << "Document load request succeeded after" << d->failedAttempts
                                << "failed attempts";
        }
        d->failedAttempts = 0;
        d->lastStatus = -1;
    } else {
        // The page of some proxy, say. Nothing is known about these documents.
        handleFailure(batch, inOrder(batch.ids, unanswered));
    }
}

// Parsed once, and cached as the text that came. Empty if it is damaged.
QJsonObject CouchDBLoader::takeDocument(const Batch &batch, const QString &id,
                                        const QByteArray &json)
{
    QJsonObject document =
        batch.cache ? batch.cache->insert(id, json) : QJsonDocument::fromJson(json).object();
    if (document.value(jsonkeys::id).toString() != id) {
        if (batch.cache) {
            batch.cache->invalidate(id);
        }
        document = QJsonObject();
    }
    return document;
}

void CouchDBLoader::handleFailure(const Batch &batch, const QStringList &ids)
{
    d->nextDelay = std::min(tuning::bulkRetryStep * d->failedAttempts + tuning::bulkRetryBase,
                            tuning::bulkRetryLimit);
    const int status = batch.request->responseCode();
    const QNetworkReply::NetworkError error = batch.request->error();
    if (status != d->lastStatus || error != d->lastError) {
        d->lastStatus = status;
        d->lastError = error;
        logFailure(status, error);
    }
    ++d->failedAttempts;
    const QPointer<CouchDBLoader> self(this);
    for (const QString &id : ids) {
        Q_EMIT failed(id);
        if (!self) {
            return;
        }
    }
}

} // namespace vo::data

#include "moc_couchdbloader.cpp"
