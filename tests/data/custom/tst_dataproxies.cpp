// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/testdocuments.h"

#include <vorrel/data/custom/proxies/datafiltermodel.h>
#include <vorrel/data/custom/proxies/datasortmodel.h>

#include <QtCore/QRandomGenerator>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

/// A filter on one of two models and a sorter on that, all of which change, and what they have to
/// show.
static const char *const models = R"(
import QtQuick 2.15
import vorrel.data.Core 1.0
DataSortModel {
    id: sorter
    readonly property var texts: ["", "9b", "10B", "A9", "a10", "b"] // as they are sorted
    property LinkedDocument page
    property DataListModel first: DataListModel {
        document: sorter.page
        key: "first"
        StringField { name: "title" } DateField { name: "day" } IntegerField { name: "price" }
    }
    property DataListModel second: DataListModel {
        document: sorter.page
        key: "second"
        IntegerField { name: "price" } DateField { name: "day" } StringField { name: "title" }
    }
    property DataListModel source: first
    property int told: 0
    onCountChanged: told = count
    sourceModel: DataFilterModel {
        id: filter
        property int limit: 2
        sourceModel: sorter.source
        StringDataFilter { role: "title"; contains: "B" }
        DateDataFilter { role: "day"; from: new Date(2024, 0, 2) }
        ScriptDataFilter { accepts: { const most = filter.limit; return row => row.price <= most } }
        ScriptDataFilter { role: "price"; inverted: true; accepts: price => price === 1 }
        ScriptDataFilter { enabled: false; accepts: row => nobody }
    }
    StringDataSorter { role: "title" }
    DateDataSorter { role: "day" }
    ScriptDataSorter { role: "price"; compare: (a, b) => a - b }
    ScriptDataSorter { compare: (a, b) => a.price.x.y }

    function act(kind, number, role) {
        const row = number * source.count >> 3
        const changes = [["title", texts[number % 6]], ["day", number ? "2024-01-0" + number : ""], ["price", number]]
        if (kind < 2)
            source.insert(row, { title: "b" })
        else if (kind < 6 && source.count > 0)
            [() => source.remove(row), () => source.move(row, 0),
             () => source.setData(row, ...changes[role]), () => source.setData(row, ...changes[role])][kind - 2]()
        else
            [() => { filter.criteria[number >> 1].enabled = role > 0 },
             () => { criteria[role].enabled = number > 3 },
             () => { criteria[role].descending = number > 3 },
             () => { filter.limit = number },
             () => { source = number > 3 ? first : second },
             () => source.count > 20 ? source.revert() : source.commit()][kind % 6]()
    }

    function isRight() {
        const rows = Array.from({ length: source.count }, (value, i) => i)
        const ranks = rows.map(i => [texts.indexOf(source.data(i, "title")), Number(source.data(i, "day")) || 0, source.data(i, "price")])
        const passes = i => [/b/i.test(texts[ranks[i][0]]), ranks[i][1] >= Date.UTC(2024, 0, 2), ranks[i][2] <= filter.limit,
                             ranks[i][2] !== 1].every((answer, k) => answer || !filter.criteria[k].enabled)
        const compare = (a, b) => [0, 1, 2].reduce((order, k) => order || !criteria[k].enabled ? order
            : ((ranks[a][k] > ranks[b][k]) - (ranks[a][k] < ranks[b][k])) * (criteria[k].descending ? -1 : 1), 0) || a - b
        const shown = Array.from({ length: count }, (value, i) => filter.sourceRow(sourceRow(i)))
        return told === count && rows.filter(passes).sort(compare).join() === shown.join()
    }

    function fail() {
        [1, 2].forEach(i => source.append())
        for (let i = 0; i < 5; ++i)
            filter.criteria[i].enabled = i === 4
    }
})";

class tst_DataProxies : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void randomStepsLeadWhereTheyHaveTo()
    {
        const QString other = QString::number(QRandomGenerator::global()->generate());
        const quint32 seed = qEnvironmentVariable("VORREL_TEST_SEED", other).toUInt();
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt() / 5;
        QRandomGenerator random(seed);
        QLocale::setDefault(QLocale("en_US"_s));
        LogCapture log;
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(models, {});
        const std::unique_ptr<QObject> object(component.create());
        auto *sorted = qobject_cast<DataSortModel *>(object.get());
        TestContext context;
        sorted->setProperty("page", QVariant::fromValue<LinkedDocument *>(context.create()));
        const QAbstractItemModelTester sorterTester(sorted);
        const QAbstractItemModelTester filterTester(sorted->sourceModel());
        for (int step = 0; step < steps; ++step) {
            QVariant isRight;
            QMetaObject::invokeMethod(sorted, "act", Q_ARG(QVariant, random.bounded(12)),
                                      Q_ARG(QVariant, random.bounded(8)),
                                      Q_ARG(QVariant, random.bounded(3)));
            processEvents();
            QMetaObject::invokeMethod(sorted, "isRight", Q_RETURN_ARG(QVariant, isRight));
            QVERIFY2(isRight.toBool(), qPrintable("VORREL_TEST_SEED=%1"_s.arg(seed)));
        }
        QMetaObject::invokeMethod(sorted, "fail");
        QCOMPARE(sorted->count(), 0);
        QCOMPARE(log.count("custom|warning|The function of a"_s), 2);
    }
};

QTEST_GUILESS_MAIN(tst_DataProxies)
#include "tst_dataproxies.moc"
