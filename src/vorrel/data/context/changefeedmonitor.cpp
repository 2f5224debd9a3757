// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/changefeedmonitor.h>

#include <vorrel/core/couchurl.h>

#include <QtCore/QHash>
#include <QtNetwork/QNetworkAccessManager>

namespace vo::data {

namespace {

QHash<int, ChangeFeedMonitor::Creator> &creators()
{
    static QHash<int, ChangeFeedMonitor::Creator> table;
    return table;
}

} // namespace

void ChangeFeedMonitor::registerType(Context::ChangeFeedMonitorType type, Creator creator)
{
    creators().insert(type, creator);
}

ChangeFeedMonitor *ChangeFeedMonitor::create(Context::ChangeFeedMonitorType type,
                                             const QString &database, Context *context)
{
    const Creator silent = creators().value(Context::NullMonitor);
    const Creator creator = database.isEmpty() ? silent : creators().value(type, silent);
    return creator ? creator(database, context) : nullptr;
}

ChangeFeedMonitor::ChangeFeedMonitor(const QString &database, Context *context)
    : QObject(context)
    , m_database(database)
    , m_context(context)
{ }

ChangeFeedMonitor::~ChangeFeedMonitor() = default;

int ChangeFeedMonitor::revisionCount() const
{
    return 0;
}

Context *ChangeFeedMonitor::context() const
{
    return m_context;
}

QString ChangeFeedMonitor::database() const
{
    return m_database;
}

QNetworkAccessManager *ChangeFeedMonitor::networkAccessManager() const
{
    return m_context ? m_context->networkAccessManager() : nullptr;
}

QUrl ChangeFeedMonitor::feedUrl() const
{
    return m_context
        ? CouchUrl::resource(m_context->serviceUrl(), m_database, QStringLiteral("_changes"))
        : QUrl();
}

} // namespace vo::data

#include "moc_changefeedmonitor.cpp"
