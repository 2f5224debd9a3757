// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/tableloader.h"

#include "support/literals.h"

#include <vorrel/data/context/loadqueue.h>

#include <QtCore/QJsonArray>

namespace vo::test {

TableLoader::TableLoader(data::Context *context, Graph graph, int priority)
    : Loader(priority, context)
    , m_graph(std::move(graph))
{ }

bool TableLoader::load(const QString &id)
{
    if (declined.contains(id)) {
        return false;
    }
    asked << id;
    if (!held.contains(id)) {
        QMetaObject::invokeMethod(
            this, [this, id] { answer(id); }, Qt::QueuedConnection);
    }
    return true;
}

void TableLoader::release(const QString &id)
{
    held.remove(id);
    answer(id);
}

void TableLoader::answer(const QString &id)
{
    const auto document = m_graph.constFind(id);
    if (failures.value(id) > 0) {
        --failures[id];
        Q_EMIT failed(id);
    } else if (document == m_graph.cend()) {
        Q_EMIT notFound(id);
    } else {
        QJsonObject data { { "_id"_s, id }, { "type"_s, "tag"_s } };
        if (!document->isEmpty()) {
            data.insert("references"_s, QJsonArray::fromStringList(*document));
        }
        if (cached.contains(id)) {
            data.insert("wasCached"_s, true);
        }
        Q_EMIT loaded(id, data);
    }
}

QueueFixture::QueueFixture(const Graph &graph)
    : loader(renewQueue(graph))
{
    QObject::connect(context(), &data::Context::documentNodeAdded,
                     [this](const QString &id) { order << id; });
}

TableLoader *QueueFixture::renewQueue(const Graph &graph)
{
    auto *made = new TableLoader(context(), graph);
    auto *queue = new data::LoadQueue(context());
    queue->addLoader(made);
    context()->setLoadQueue(queue);
    return made;
}

void QueueFixture::want(const QStringList &ids)
{
    context()->loadQueue()->load(QSet<QString>(ids.begin(), ids.end()));
}

} // namespace vo::test

#include "moc_tableloader.cpp"
