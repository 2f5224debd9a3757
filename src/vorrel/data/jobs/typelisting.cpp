// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/jobs/typelisting.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/jobs/databaseview_p.h>

namespace vo::data {

TypeListing::TypeListing(Context *context)
    : Listing(context)
{
    connect(this, &TypeListing::typeChanged, this, &Listing::reset);
}

TypeListing::~TypeListing() = default;

QString TypeListing::type() const
{
    return m_type;
}

void TypeListing::setType(const QString &type)
{
    if (type != m_type) {
        m_type = type;
        Q_EMIT typeChanged(type);
    }
}

// Keys are arrays of the type and a value to sort by. Backwards, an empty array stands before every
// value and null behind them.
QUrl TypeListing::queryUrl() const
{
    if (m_type.isEmpty()) {
        return {};
    }
    CouchUrl::Query query {
        { QStringLiteral("startkey"), DatabaseView::key(QJsonArray { m_type, QJsonArray() }) },
        { QStringLiteral("endkey"), DatabaseView::key(QJsonArray { m_type, QJsonValue() }) },
        { QStringLiteral("descending"), QStringLiteral("true") },
    };
    if (queryLimit() >= 0) {
        query.append({ QStringLiteral("limit"), QString::number(queryLimit()) });
    }
    const QUrl url = DatabaseView::url(context(), QLatin1String("by_type"), query);
    qCDebug(lcListing) << "Type listing query URL" << CouchUrl::displayText(url);
    return url;
}

bool TypeListing::includeLocalDocument(Document *document) const
{
    return document->hasType(m_type);
}

} // namespace vo::data

#include "moc_typelisting.cpp"
