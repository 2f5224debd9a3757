// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/dataproxymodel.h>

#include <vorrel/data/custom/proxies/datarows.h>

#include <utility>

namespace vo::data {

struct DataProxyModel::Private
{
    DataRows rows;
    int count = 0; // as it was told
    bool isComplete = true;
};

DataProxyModel::DataProxyModel(QObject *parent)
    : QSortFilterProxyModel(parent)
    , d(new Private)
{
    for (const auto changed :
         { &QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved }) {
        connect(this, changed, this, &DataProxyModel::tellCount);
    }
    connect(this, &QAbstractItemModel::modelReset, this, &DataProxyModel::tellCount);
}

DataProxyModel::~DataProxyModel() = default;

void DataProxyModel::classBegin()
{
    d->isComplete = false;
}

void DataProxyModel::componentComplete()
{
    d->isComplete = true;
    update();
}

bool DataProxyModel::isComplete() const
{
    return d->isComplete;
}

const DataRows &DataProxyModel::rows() const
{
    return d->rows;
}

void DataProxyModel::setSourceModel(QAbstractItemModel *model)
{
    if (model == sourceModel()) {
        return;
    }
    if (sourceModel()) {
        sourceModel()->disconnect(this);
    }
    d->rows.setModel(model);
    forgetFunctions(); // the roles of that one have other numbers
    if (model) {
        watch(model);
    }
    QSortFilterProxyModel::setSourceModel(model);
}

// Before the base class hears of anything, so that it is not told what was.
void DataProxyModel::watch(QAbstractItemModel *model)
{
    const auto renew = [this] { d->rows.renew(); };
    connect(model, &QAbstractItemModel::rowsInserted, this, renew);
    connect(model, &QAbstractItemModel::rowsRemoved, this, renew);
    connect(model, &QAbstractItemModel::rowsMoved, this, renew);
    connect(model, &QAbstractItemModel::layoutChanged, this, renew);
    connect(model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) {
                d->rows.renew(first.row(), last.row());
                valuesChanged();
            });
    connect(model, &QAbstractItemModel::modelReset, this, [this] {
        d->rows.renew();
        forgetFunctions(); // the roles may be others
    });
    connect(model, &QObject::destroyed, this, [this] { setSourceModel(nullptr); });
}

void DataProxyModel::valuesChanged() { }

int DataProxyModel::count() const
{
    return rowCount();
}

void DataProxyModel::tellCount()
{
    const int now = rowCount();
    if (std::exchange(d->count, now) != now) {
        Q_EMIT countChanged();
    }
}

int DataProxyModel::sourceRow(int row) const
{
    return mapToSource(index(row, 0)).row();
}

int DataProxyModel::proxyRow(int row) const
{
    return sourceModel() ? mapFromSource(sourceModel()->index(row, 0)).row() : -1;
}

} // namespace vo::data

#include "moc_dataproxymodel.cpp"
