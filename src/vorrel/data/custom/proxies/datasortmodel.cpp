// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datasortmodel.h>

#include <vorrel/data/custom/proxies/datarows.h>
#include <vorrel/data/custom/proxies/proxycriteria_p.h>

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

} // namespace vo::data

#include "moc_datasortmodel.cpp"
