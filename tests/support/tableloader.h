// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/contextfixture.h"
#include "support/graph.h"

#include <vorrel/data/context/loader.h>

#include <QtCore/QHash>
#include <QtCore/QSet>

namespace vo::test {

/// A source of tags that answers from a graph, in the next turn of the event loop.
class TableLoader : public data::Loader
{
    Q_OBJECT
public:
    TableLoader(data::Context *context, Graph graph, int priority = 1);

    bool load(const QString &id) override;

    /// Answers an id that was held back.
    void release(const QString &id);

    QStringList asked;            // in order
    QSet<QString> declined;       // ids that it does not take
    QSet<QString> held;           // ids that wait for release()
    QSet<QString> cached;         // documents that say so
    QHash<QString, int> failures; // how often an id fails before it is answered

private:
    void answer(const QString &id);

    const Graph m_graph;
};

/// A Context whose load queue has one TableLoader.
class QueueFixture : public ContextFixture
{
public:
    explicit QueueFixture(const Graph &graph = {});

    /// Puts a new queue with a new loader over \p graph into the Context.
    TableLoader *renewQueue(const Graph &graph);
    void want(const QStringList &ids);

    QPointer<TableLoader> loader; // of the first queue
    QStringList order;            // of the nodes that came
};

} // namespace vo::test
