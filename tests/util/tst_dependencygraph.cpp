// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/util/dependencygraph.h>

#include <QtCore/QStringList>
#include <QtTest/QTest>

using vo::util::DependencyGraph;

namespace {

// "a>b c>d" says that a needs b and c needs d; "e" is a node of its own.
void fill(DependencyGraph<QString> &graph, const QString &text)
{
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        if (word.contains(QLatin1Char('>'))) {
            graph.addDependency(word.section(QLatin1Char('>'), 0, 0),
                                word.section(QLatin1Char('>'), 1));
        } else {
            graph.addNode(word);
        }
    }
}

} // namespace

class tst_DependencyGraph : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void order_data();
    void order();
    void nodesAreMadeOnce();
    void takesLargeGraphsInLinearTime();
};

void tst_DependencyGraph::order_data()
{
    QTest::addColumn<QString>("graph");
    QTest::addColumn<QStringList>("last"); // what lies on a circle or needs one, in any order
    const auto row = [](const char *graph, const QStringList &last) {
        QTest::newRow(graph) << QString::fromLatin1(graph) << last;
    };
    const auto list = [](const char *words) {
        return QString::fromLatin1(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    };
    row("", {});
    row("a b", {});
    row("a>b", {});
    row("a>b a>b", {});
    row("a>b b>c a>c d>b", {});
    row("a>b a>c b>d c>d", {});
    row("a>b b>a c", list("a b"));
    row("a>a b", list("a"));
    row("a>b b>c c>b d>a e", list("a b c d"));
}

void tst_DependencyGraph::order()
{
    QFETCH(QString, graph);
    QFETCH(QStringList, last);
    DependencyGraph<QString> dependencies;
    fill(dependencies, graph);
    const QList<QString> order = dependencies.order();

    QString flat = graph;
    flat.replace(QLatin1Char('>'), QLatin1Char(' '));
    const QStringList words = flat.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QSet<QString> keys(words.begin(), words.end());
    QCOMPARE(order.size(), keys.size());
    QCOMPARE(QSet<QString>(order.begin(), order.end()), keys);
    const QList<QString> end = order.mid(order.size() - last.size());
    QCOMPARE(QSet<QString>(end.begin(), end.end()), QSet<QString>(last.begin(), last.end()));
    const QStringList links =
        graph.split(QLatin1Char(' '), Qt::SkipEmptyParts).filter(QLatin1String(">"));
    for (const QString &link : links) {
        const QString from = link.section(QLatin1Char('>'), 0, 0);
        const QString to = link.section(QLatin1Char('>'), 1);
        QVERIFY2(last.contains(from) || order.indexOf(to) < order.indexOf(from), qPrintable(link));
    }
}

void tst_DependencyGraph::nodesAreMadeOnce()
{
    DependencyGraph<QString> graph;
    auto *node = graph.addNode(QStringLiteral("a"));
    for (int i = 0; i < 1000; ++i) {
        graph.addDependency(QStringLiteral("a"), QString::number(i % 10));
    }
    QCOMPARE(graph.addNode(QStringLiteral("a")), node);
    QCOMPARE(graph.order().last(), QStringLiteral("a"));
}

// Chains, one node that all need, and one that needs all: where a walk over the whole table for
// each node would take minutes, until the time limit of the test.
void tst_DependencyGraph::takesLargeGraphsInLinearTime()
{
    constexpr int count = 100000;
    DependencyGraph<int> graph;
    for (int i = 1; i < count; ++i) {
        graph.addDependency(i, i - 1);
        graph.addDependency(i, 0);
        graph.addDependency(count, i);
    }
    const QList<int> order = graph.order();
    QCOMPARE(int(order.size()), count + 1);
    for (int i = 0; i <= count; ++i) {
        QCOMPARE(order.at(i), i);
    }
}

QTEST_GUILESS_MAIN(tst_DependencyGraph)
#include "tst_dependencygraph.moc"
