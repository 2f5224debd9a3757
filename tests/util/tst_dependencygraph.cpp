// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"

#include <vorrel/util/dependencygraph.h>

#include <QtTest/QTest>

using vo::util::DependencyGraph;
using namespace vo::test;

class tst_DependencyGraph : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // Chains, one node that all need, and one that needs all: where a walk over the whole table for
    // each node would take minutes, until the time limit of the test.
    void ordersLargeGraphsInLinearTime()
    {
        constexpr int count = 100000;
        DependencyGraph<int> graph;
        for (int i = 1; i < count; ++i) {
            graph.addDependency(i, i - 1);
            graph.addDependency(i, 0);
            graph.addDependency(i, 0); // once more makes no difference
            graph.addDependency(count, i);
        }
        const QList<int> order = graph.order();
        QCOMPARE(order.size(), count + 1);
        QVERIFY(std::is_sorted(order.begin(), order.end()));
    }

    void putsWhatLiesOnACircleOrNeedsOneLast()
    {
        DependencyGraph<QString> graph;
        for (const QString &link : "a>b b>c c>b d>a e>f f>g"_l) {
            graph.addDependency(link.section(QLatin1Char('>'), 0, 0), link.right(1));
        }
        graph.addNode("x"_s);
        const QList<QString> order = graph.order();
        QCOMPARE(order.size(), 8);
        QVERIFY(order.indexOf("g"_s) < order.indexOf("f"_s));
        QVERIFY(order.indexOf("f"_s) < order.indexOf("e"_s));
        for (const QString &late : "a b c d"_l) {
            QVERIFY(order.indexOf(late) >= 4);
        }
    }
};

QTEST_GUILESS_MAIN(tst_DependencyGraph)
#include "tst_dependencygraph.moc"
