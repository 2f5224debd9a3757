// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/databaseview_p.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>

#include <vorrel/core/request.h>

#include <QtCore/QJsonDocument>

namespace vo::data {

namespace {

constexpr QLatin1String views("_design/tessaro/_view/");
constexpr int httpNotFound = 404;

} // namespace

QUrl DatabaseView::url(const Context *context, QLatin1String view, const CouchUrl::Query &query)
{
    return CouchUrl::resource(context->serviceUrl(), context->database(), QString(views) + view,
                              query);
}

QString DatabaseView::key(const QString &text)
{
    const QString list = key(QJsonArray { text }); // Qt writes lists and objects only
    return list.mid(1, list.size() - 2);
}

QString DatabaseView::key(const QJsonArray &parts)
{
    return QString::fromUtf8(QJsonDocument(parts).toJson(QJsonDocument::Compact));
}

QStringList DatabaseView::rowIds(const QJsonObject &answer)
{
    QStringList ids;
    const QJsonArray rows = answer.value(jsonkeys::rows).toArray();
    for (const QJsonValue &row : rows) {
        const QString id = row.toObject().value(jsonkeys::recordId).toString();
        if (!id.isEmpty()) {
            ids.append(id);
        }
    }
    return ids;
}

void DatabaseView::reportIfMissing(const Request &request)
{
    if (request.responseCode() == httpNotFound) {
        qCCritical(lcListing, "database has no view %s: install the design document",
                   qPrintable(request.url().fileName()));
    }
}

} // namespace vo::data
