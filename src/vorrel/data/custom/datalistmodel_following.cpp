// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// DataListModel: how it follows what happens to the document.

#include <vorrel/data/custom/commitstate_p.h>
#include <vorrel/data/custom/datalistmodel_p.h>

#include <utility>

namespace vo::data {

// Values

void DataListModel::processValueChange(const QString &id, const QString &field)
{
    const DataField *changed = field.isEmpty() ? nullptr : d->findField(field);
    if (d->isCommitting || (!field.isEmpty() && !changed)) {
        return;
    }
    const QPointer<DataListModel> self(this);
    tellOfCommitAfter(this, [&] {
        const QVector<int> roles = changed ? d->rolesOf(changed) : d->allRoles();
        const std::vector<int> rows = d->dropChangedValues(id, roles);
        for (const int row : rows) {
            if (self && d->isRow(row)) {
                Q_EMIT dataChanged(index(row), index(row), roles);
            }
        }
    });
}

// Of one item, or of all without an id. Gives the rows. An item that has none keeps its edits: the
// row may come back.
std::vector<int> DataListModel::Private::dropChangedValues(const QString &id,
                                                           const QVector<int> &roles)
{
    std::vector<int> changedRows;
    const int only = id.isEmpty() ? -1 : values.findId(id);
    const auto isChanged = [&](int number) { return id.isEmpty() || number == only; };
    for (int row = 0; row < int(rows.size()); ++row) {
        const int number = rows[std::size_t(row)];
        if (isChanged(number)) {
            changedRows.push_back(row);
            for (const int role : roles) {
                values.edits.erase({ number, column(role)->name });
            }
        }
    }
    for (int number = 0; number < values.idCount(); ++number) {
        for (const int role : isChanged(number) ? roles : QVector<int>()) {
            if (!values.isEdited(number, column(role)->name)) {
                values.drop(number, column(role)->name);
            }
        }
    }
    return changedRows;
}

// The list

void DataListModel::processListChange(const QString &key)
{
    if (!d->isCommitting && (key.isEmpty() || key == d->key)) {
        d->follow();
    }
}

void DataListModel::Private::follow()
{
    hasToFollow = true;
    if (isFollowing) {
        return; // a slot has changed the list again
    }
    const QPointer<DataListModel> self(q);
    const auto formerCount = rows.size();
    tellOfCommitAfter(q, [&] {
        log.clear(); // the document has won
        isFollowing = true;
        while (self && std::exchange(hasToFollow, false)) {
            takeRowsOver();
        }
        if (self) {
            isFollowing = false;
        }
    });
    if (self && rows.size() != formerCount) {
        Q_EMIT q->countChanged();
    }
}

void DataListModel::Private::takeRowsOver()
{
    const Rows wanted = numbered(storedIds());
    std::vector<int> counts(std::size_t(values.idCount())); // of rows, by the numbers of their ids
    std::vector<int> places(counts.size(), -1);             // and where they are to be
    bool isDistinct = true;
    for (const int number : rows) {
        isDistinct = ++counts[std::size_t(number)] == 1 && isDistinct;
    }
    for (int row = 0; row < int(wanted.size()); ++row) {
        int &place = places[std::size_t(wanted[std::size_t(row)])];
        isDistinct = std::exchange(place, row) < 0 && isDistinct;
    }
    for (std::size_t number = 0; number < counts.size(); ++number) {
        if (counts[number] > 0 && places[number] < 0) {
            values.dropEdits(int(number));
        } else if (counts[number] == 0 && places[number] >= 0) {
            values.dropRead(int(number)); // it may have changed while it was not in the list
        }
    }
    if (isDistinct) {
        removeRows(places) && insertRows(wanted, counts) && moveRows(wanted, places);
    } else {
        reset([&] { rows = wanted; });
    }
}

// The three give false if there is nothing left to do: the model, or what it showed, is gone.

bool DataListModel::Private::removeRows(const std::vector<int> &places)
{
    const Watch watch(this);
    const auto isGone = [&](int row) { return places[std::size_t(rows[std::size_t(row)])] < 0; };
    for (int last = int(rows.size()) - 1; last >= 0; --last) {
        if (!isGone(last)) {
            continue;
        }
        int first = last;
        while (first > 0 && isGone(first - 1)) {
            --first;
        }
        q->beginRemoveRows({}, first, last);
        if (watch.isSame()) {
            rows.erase(rows.begin() + first, rows.begin() + last + 1);
        }
        if (watch.isAlive()) {
            q->endRemoveRows();
        }
        if (!watch.isSame()) {
            return false;
        }
        last = first;
    }
    return true;
}

bool DataListModel::Private::insertRows(const Rows &wanted, const std::vector<int> &counts)
{
    const Watch watch(this);
    const auto isNew = [&](int row) { return counts[std::size_t(wanted[std::size_t(row)])] == 0; };
    for (int first = 0; first < int(wanted.size()); ++first) {
        if (!isNew(first)) {
            continue;
        }
        int last = first;
        while (last + 1 < int(wanted.size()) && isNew(last + 1)) {
            ++last;
        }
        q->beginInsertRows({}, first, last);
        if (watch.isSame()) {
            rows.insert(rows.begin() + first, wanted.begin() + first, wanted.begin() + last + 1);
        }
        if (watch.isAlive()) {
            q->endInsertRows();
        }
        if (!watch.isSame()) {
            return false;
        }
        first = last;
    }
    return true;
}

bool DataListModel::Private::moveRows(const Rows &wanted, const std::vector<int> &places)
{
    const Watch watch(this);
    bool hasMoved = true;
    for (std::size_t pass = 0; hasMoved && pass <= wanted.size(); ++pass) {
        hasMoved = false;
        for (std::size_t row = 0; row < wanted.size(); ++row) {
            if (rows[row] != wanted[row]) {
                moveRow(int(row), places[std::size_t(rows[row])], watch);
                if (!watch.isSame()) {
                    return false;
                }
                hasMoved = true;
            }
        }
    }
    return true;
}

} // namespace vo::data
