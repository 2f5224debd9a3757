// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datasortmodel.h>

#include <vorrel/data/custom/proxies/datarows.h>
#include <vorrel/data/custom/proxies/proxycriteria_p.h>

#include <utility>

namespace vo::data {

namespace {

RowCompare functionOf(const DataSortCriterion &criterion, const DataRows &rows)
{
    const RowCompare function = criterion.createCompareFunction(rows);
    if (!criterion.descending()) {
        return function;
    }
    return [function](int a, int b) { return function(b, a); };
}

} // namespace

struct DataSortModel::Private
{
    ProxyCriteria<DataSortCriterion, RowCompare> criteria;
    bool isCheckScheduled = false;
};

DataSortModel::DataSortModel(QObject *parent)
    : DataProxyModel(parent)
    , d(new Private { { this, [this] { Q_EMIT criteriaChanged(); }, [this] { update(); } } })
{
    sort(0);
}

DataSortModel::~DataSortModel() = default;

QQmlListProperty<DataSortCriterion> DataSortModel::criteria()
{
    return d->criteria.property();
}

bool DataSortModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const int a = left.row();
    const int b = right.row();
    if (left.parent().isValid() || !isComplete()) {
        return a < b;
    }
    return d->criteria.ask(
        [this](const DataSortCriterion &criterion) { return functionOf(criterion, rows()); },
        [a, b](const std::vector<RowCompare> &functions) {
            for (const RowCompare &function : functions) {
                if (const int result = function(a, b)) {
                    return result < 0;
                }
            }
            return a < b;
        });
}

void DataSortModel::forgetFunctions()
{
    d->criteria.forget();
}

void DataSortModel::update()
{
    if (isComplete()) {
        invalidate();
    }
}

// A source may change the values of many rows before it tells of them, one after the other. Then
// the base class looks for the place of the first among others that stand where they do not belong
// any more.
void DataSortModel::valuesChanged()
{
    if (!std::exchange(d->isCheckScheduled, true)) {
        QMetaObject::invokeMethod(this, &DataSortModel::checkOrder, Qt::QueuedConnection);
    }
}

void DataSortModel::checkOrder()
{
    d->isCheckScheduled = false;
    for (int row = 1; row < rowCount(); ++row) {
        if (lessThan(mapToSource(index(row, 0)), mapToSource(index(row - 1, 0)))) {
            update();
            return;
        }
    }
}

} // namespace vo::data

#include "moc_datasortmodel.cpp"
