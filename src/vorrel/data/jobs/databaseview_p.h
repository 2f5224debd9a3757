// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/couchurl.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

namespace vo {
class Request;
}

namespace vo::data {

class Context;

/// How the views of the design document "tessaro" are asked, and what they answer.
class DatabaseView
{
public:
    /// Invalid as long as \p context has no database.
    static QUrl url(const Context *context, QLatin1String view, const CouchUrl::Query &query);

    /// A key as JSON, for the query.
    static QString key(const QString &text);
    static QString key(const QJsonArray &parts);

    /// The ids of the documents that the rows come from, in their order. One with several rows is
    /// there as often.
    static QStringList rowIds(const QJsonObject &answer);

    /// Logs in "vorrel.listing", at critical, if \p request has found no such view.
    static void reportIfMissing(const Request &request);

    DatabaseView() = delete;
};

} // namespace vo::data
