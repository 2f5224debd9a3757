// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datafiltermodel.h>

#include <vorrel/data/custom/proxies/datarows.h>
#include <vorrel/data/custom/proxies/proxycriteria_p.h>

#include <algorithm>

namespace vo::data {

namespace {

RowFilter functionOf(const DataFilterCriterion &criterion, const DataRows &rows)
{
    const RowFilter function = criterion.createFilterFunction(rows);
    if (!criterion.inverted()) {
        return function;
    }
    return [function](int row) { return !function(row); };
}

} // namespace

struct DataFilterModel::Private
{
    ProxyCriteria<DataFilterCriterion, RowFilter> criteria;
};

DataFilterModel::DataFilterModel(QObject *parent)
    : DataProxyModel(parent)
    , d(new Private { { this, [this] { Q_EMIT criteriaChanged(); }, [this] { update(); } } })
{ }

DataFilterModel::~DataFilterModel() = default;

QQmlListProperty<DataFilterCriterion> DataFilterModel::criteria()
{
    return d->criteria.property();
}

bool DataFilterModel::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    if (parent.isValid() || !isComplete()) {
        return true;
    }
    return d->criteria.ask(
        [this](const DataFilterCriterion &criterion) { return functionOf(criterion, rows()); },
        [row](const std::vector<RowFilter> &functions) {
            return std::all_of(functions.begin(), functions.end(),
                               [row](const RowFilter &function) { return function(row); });
        });
}

void DataFilterModel::forgetFunctions()
{
    d->criteria.forget();
}

void DataFilterModel::update()
{
    if (isComplete()) {
        invalidateFilter();
    }
}

} // namespace vo::data

#include "moc_datafiltermodel.cpp"
