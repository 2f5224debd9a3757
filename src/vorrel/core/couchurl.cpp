// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/couchurl.h>

namespace vo {

namespace {

// Encodes all but what may stand in a path segment. The plus sign is encoded too: the server
// reads a bare one as a blank.
QString segment(const QString &name)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(name, "!$&'()*,;:@="));
}

QString queryText(const CouchUrl::Query &query)
{
    QStringList items;
    for (const auto &[name, value] : query) {
        items.append(QString::fromLatin1(QUrl::toPercentEncoding(name) + '='
                                         + QUrl::toPercentEncoding(value)));
    }
    return items.join(QLatin1Char('&'));
}

// "." and ".." would be resolved away, here or on the road, even when they are encoded.
bool isAddressable(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..");
}

QUrl below(const QUrl &serviceUrl, const QString &encodedPath)
{
    QUrl url = serviceUrl.adjusted(QUrl::RemoveQuery | QUrl::RemoveFragment);
    QString path = url.path(QUrl::FullyEncoded);
    while (path.endsWith(QLatin1Char('/')))
        path.chop(1);
    url.setPath(path + QLatin1Char('/') + encodedPath, QUrl::TolerantMode);
    return url;
}

} // namespace

QUrl CouchUrl::databaseUrl(const QUrl &serviceUrl, const QString &database)
{
    return isAddressable(database) ? below(serviceUrl, segment(database)) : QUrl();
}

QUrl CouchUrl::documentUrl(const QUrl &serviceUrl, const QString &database, const QString &id)
{
    QString prefix;
    for (const QLatin1String special : { QLatin1String("_design/"), QLatin1String("_local/") }) {
        if (id.startsWith(special))
            prefix = special;
    }
    const QString name = id.mid(prefix.size());
    if (!isAddressable(name) || (prefix.isEmpty() && name.startsWith(QLatin1Char('_'))))
        return QUrl();
    return resource(serviceUrl, database, prefix + segment(name));
}

QUrl CouchUrl::attachmentUrl(const QUrl &serviceUrl, const QString &database, const QString &id,
                             const QString &name)
{
    const QUrl document = documentUrl(serviceUrl, database, id);
    return document.isValid() && isAddressable(name) ? below(document, segment(name)) : QUrl();
}

QUrl CouchUrl::resource(const QUrl &serviceUrl, const QString &database, const QString &path,
                        const Query &query)
{
    if (!isAddressable(database))
        return QUrl();
    QUrl url = below(serviceUrl, segment(database) + QLatin1Char('/') + path);
    if (!query.isEmpty())
        url.setQuery(queryText(query), QUrl::TolerantMode);
    return url;
}

QString CouchUrl::displayText(const QUrl &url)
{
    return url.toString(QUrl::RemoveUserInfo | QUrl::FullyEncoded);
}

} // namespace vo
