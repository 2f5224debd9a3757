// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"
#include "support/logcapture.h"

#include <vorrel/data/custom/proxies/datafiltermodel.h>
#include <vorrel/data/custom/proxies/datasortmodel.h>

#include <QtCore/QDate>
#include <QtCore/QRandomGenerator>
#include <QtGui/QStandardItemModel>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlListReference>
#include <QtTest/QAbstractItemModelTester>

using namespace vo::data;
using namespace vo::test;

namespace {

/// A model with a filter on it and a sorter on that, which change at random.
struct RandomLife
{
    explicit RandomLife(quint32 seed)
        : random(seed)
    {
        QLocale::setDefault(QLocale("en_US"_s));
        QQmlComponent component(&engine);
        component.setData(R"(import vorrel.data.Core 1.0
            DataSortModel {
                sourceModel: DataFilterModel {
                    id: filter
                    property int limit: 2
                    StringDataFilter { role: "title"; contains: "B" }
                    DateDataFilter { role: "day"; from: new Date(2024, 0, 2) }
                    ScriptDataFilter { accepts: { const most = filter.limit; return row => row.price <= most } }
                    ScriptDataFilter { role: "price"; inverted: true; accepts: price => price === 1 }
                    ScriptDataFilter { enabled: false; accepts: row => nobody }
                }
                StringDataSorter { role: "title" }
                DateDataSorter { role: "day" }
                ScriptDataSorter { role: "price"; compare: (a, b) => (a || 0) - (b || 0) }
                ScriptDataSorter { compare: (a, b) => a.price.x.y }
            })",
                          {});
        sorted.reset(qobject_cast<DataSortModel *>(component.create()));
        found = qobject_cast<DataFilterModel *>(sorted->sourceModel());
        rename();
        found->setSourceModel(source.get());
    }

    /// Empties the source, and gives its roles other numbers.
    void rename()
    {
        first = first == Qt::UserRole ? Qt::UserRole + 1 : Qt::UserRole;
        source->clear();
        source->setItemRoleNames(
            { { first, "title" }, { first + 1, "day" }, { first + 2, "price" } });
    }

    [[nodiscard]] QObject *criterion(const QObject *model, int i) const
    {
        return QQmlListReference(const_cast<QObject *>(model), "criteria").at(i);
    }

    [[nodiscard]] QVariant value(int row, int role) const
    {
        return source->index(row, 0).data(first + role);
    }

    void act()
    {
        const int number = random.bounded(4);
        const int role = random.bounded(3);
        const int row = random.bounded(source->rowCount() + 1);
        const QVariant values[] { texts.at(random.bounded(5)), QDate(2024, 1, number), number };
        QAbstractItemModel *model =
            number > 2 ? static_cast<QAbstractItemModel *>(sorted.get()) : source.get();
        const std::function<void()> acts[] {
            [&] { source->insertRow(row, new QStandardItem); },
            [&] { source->insertRow(row, new QStandardItem); },
            [&] { source->removeRow(row); },
            [&] { row > 0 ? source->insertRow(row - 1, source->takeRow(0)) : void(); },
            [&] { model->setData(model->index(row, 0), values[role], first + role); },
            [&] { random.bounded(50) == 0 ? rename() : void(); },
            [&] { criterion(found, number)->setProperty("enabled", role > 0); },
            [&] { criterion(sorted.get(), role)->setProperty("enabled", number > 1); },
            [&] { criterion(sorted.get(), role)->setProperty("descending", number > 1); },
            [&] { found->setProperty("limit", number); },
        };
        acts[random.bounded(int(std::size(acts)))]();
    }

    [[nodiscard]] bool passes(int row) const
    {
        const bool answers[] {
            value(row, 0).toString().contains(QLatin1Char('b'), Qt::CaseInsensitive),
            value(row, 1).toDate() >= QDate(2024, 1, 2),
            value(row, 2).isValid() && value(row, 2).toInt() <= found->property("limit").toInt(),
            value(row, 2) != 1
        };
        int i = -1;
        return std::all_of(std::begin(answers), std::end(answers), [&](bool answer) {
            return ++i, answer || !criterion(found, i)->property("enabled").toBool();
        });
    }

    [[nodiscard]] bool isBefore(int a, int b) const
    {
        for (int role = 0; role < 3; ++role) {
            const auto rank = [&](int row) -> qint64 {
                const QVariant key = value(row, role);
                return role == 0 ? texts.indexOf(key.toString())
                    : role == 1  ? key.toDate().toJulianDay()
                                 : key.toInt();
            };
            const QObject *rule = criterion(sorted.get(), role);
            if (rule->property("enabled").toBool() && rank(a) != rank(b)) {
                return (rank(a) < rank(b)) != rule->property("descending").toBool();
            }
        }
        return false;
    }

    /// Whether the rows of the source that have to show do so, and in their order.
    [[nodiscard]] bool isRight() const
    {
        std::vector<int> rows, shown;
        for (int row = 0; row < source->rowCount(); ++row) {
            passes(row) ? rows.push_back(row) : void();
        }
        std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) { return isBefore(a, b); });
        for (int row = 0; row < sorted->count(); ++row) {
            shown.push_back(found->sourceRow(sorted->sourceRow(row)));
        }
        return rows == shown;
    }

    QRandomGenerator random;
    const QStringList texts = "9b 10B A9 a10 b"_l; // as they are sorted
    int first = 0;
    QQmlEngine engine;
    std::unique_ptr<QStandardItemModel> source = std::make_unique<QStandardItemModel>();
    std::unique_ptr<DataSortModel> sorted;
    DataFilterModel *found = nullptr;
};

} // namespace

class tst_DataProxies : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void randomStepsLeadWhereTheyHaveTo()
    {
        const QString other = QString::number(QRandomGenerator::global()->generate());
        const quint32 seed = qEnvironmentVariable("VORREL_TEST_SEED", other).toUInt();
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt() / 2;
        LogCapture log;
        RandomLife life(seed);
        const QAbstractItemModelTester filterTester(life.found), sorterTester(life.sorted.get());
        int told = 0;
        connect(life.sorted.get(), &DataProxyModel::countChanged,
                [&] { told = life.sorted->count(); });
        for (int step = 0; step < steps; ++step) {
            life.act();
            QVERIFY2(life.isRight() && told == life.sorted->count(),
                     qPrintable("VORREL_TEST_SEED=%1"_s.arg(seed)));
        }
        for (int i = 0; i < 4; ++i) {
            life.criterion(life.found, i)->setProperty("enabled", false);
        }
        life.source->appendRow(new QStandardItem), life.source->appendRow(new QStandardItem);
        life.criterion(life.found, 4)->setProperty("enabled", true);
        QCOMPARE(life.sorted->count(), 0);
        QCOMPARE(log.count("custom|warning|The function of a"_s), 2);
        life.source.reset();
        QVERIFY(!life.found->sourceModel());
    }
};

QTEST_GUILESS_MAIN(tst_DataProxies)
#include "tst_dataproxies.moc"
