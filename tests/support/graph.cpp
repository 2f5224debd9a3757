// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/graph.h"

#include "support/literals.h"

#include <QtCore/QSet>

namespace vo::test {

namespace {

/// What is reached from \p start by one reference at least.
QSet<QString> reachable(const Graph &graph, const QString &start)
{
    QSet<QString> seen;
    QStringList open = graph.value(start);
    while (!open.isEmpty()) {
        const QString next = open.takeLast();
        if (graph.contains(next) && !seen.contains(next)) {
            seen.insert(next);
            open << graph.value(next);
        }
    }
    return seen;
}

} // namespace

Graph operator""_graph(const char *text, size_t size)
{
    Graph graph;
    for (const QString &document : operator""_lines(text, size)) {
        const QStringList parts = document.split(QLatin1Char(':')) + QStringList { QString() };
        graph.insert(parts[0], parts[1].split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }
    return graph;
}

Graph chain(int length, const QStringList &next)
{
    Graph graph;
    for (int i = 0; i < length; ++i) {
        graph.insert(QString::number(i), { QString::number(i + 1) });
    }
    graph.insert(QString::number(length - 1), next);
    return graph;
}

Graph randomGraph(QRandomGenerator &random, int size)
{
    Graph graph;
    const int degree = random.bounded(1, 5);
    for (int i = 0; i < size; ++i) {
        QStringList references;
        for (int j = random.bounded(degree); j > 0; --j) {
            // Mostly to later ones, so that there are deep graphs and not only large cycles.
            references << QString::number(random.bounded(random.bounded(20) == 0 ? 0 : i, size));
        }
        if (random.bounded(10) > 0) {
            graph.insert(QString::number(i), references);
        }
    }
    return graph;
}

QByteArray faultOf(Graph graph, const QStringList &wanted, const QStringList &order)
{
    const QString root = QStringLiteral("root");
    graph.insert(root, wanted);
    QSet<QString> missing = reachable(graph, root);
    for (const QString &id : order) {
        if (!missing.remove(id)) {
            return "twice or not wanted: " + id.toLatin1();
        }
        for (const QString &reference : graph.value(id)) {
            if (missing.contains(reference) && !reachable(graph, reference).contains(id)) {
                return id.toLatin1() + " before " + reference.toLatin1();
            }
        }
    }
    return missing.isEmpty() ? QByteArray() : "too few documents";
}

} // namespace vo::test
