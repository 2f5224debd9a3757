// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/coreexport.h>

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QUrl>

namespace vo {

/// Makes the URLs of a CouchDB database from the URL of the service, which may have a path of its
/// own (a proxy's prefix) and a slash at its end. Query and fragment of the service URL are
/// dropped, user name and password stay.
///
/// Names are percent-encoded, so that none can address anything but what it names; for plain names
/// the result reads like service URL + "/" + database + "/" + id.
class VORREL_CORE_EXPORT CouchUrl
{
public:
    /// Names and plain values of query items, in the order in which they are sent.
    using Query = QList<QPair<QString, QString>>;

    /// Invalid for an empty name.
    static QUrl databaseUrl(const QUrl &serviceUrl, const QString &database);

    /// The prefixes "_design/" and "_local/" keep their slash. Invalid for ids that cannot be
    /// addressed: an empty one, ".", "..", and other names with an underscore in front, which
    /// belong to the database server.
    static QUrl documentUrl(const QUrl &serviceUrl, const QString &database, const QString &id);

    /// The attachment \p name of a document. Invalid as the two above.
    static QUrl attachmentUrl(const QUrl &serviceUrl, const QString &database, const QString &id,
                              const QString &name);

    /// A resource that the server offers below the database, such as "_all_docs" or
    /// "_design/name/_view/view". \p path is taken as it is, \p query is encoded.
    static QUrl resource(const QUrl &serviceUrl, const QString &database, const QString &path,
                         const Query &query = Query());

    /// The text of \p url for logs and messages: without user name and password.
    static QString displayText(const QUrl &url);

    CouchUrl() = delete;
};

} // namespace vo
