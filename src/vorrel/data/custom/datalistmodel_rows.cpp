// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// DataListModel: edits of its rows, and how all edits are written or dropped.

#include <vorrel/data/custom/datalistmodel_p.h>
#include <vorrel/data/custom/recordedstep_p.h>

#include <QtCore/QJsonArray>

#include <algorithm>
#include <utility>

namespace vo::data {

bool DataListModel::Private::mayEdit() const
{
    return document && document->accessLevel() >= Document::WriteAccess && !isFollowing;
}

// Taking a step back tells the same as making the opposite one.

void DataListModel::Private::make(Step step)
{
    log.push_back(std::move(step));
    const Step made = log.back(); // what it tells may empty the log
    made(true);
}

void DataListModel::Private::insertRow(int row, int number)
{
    const Watch watch(this);
    q->beginInsertRows({}, row, row);
    if (watch.isSame()) {
        rows.insert(rows.begin() + row, number);
    }
    if (watch.isAlive()) {
        q->endInsertRows();
    }
    if (watch.isAlive()) {
        Q_EMIT q->countChanged();
    }
}

void DataListModel::Private::takeRow(int row)
{
    const Watch watch(this);
    q->beginRemoveRows({}, row, row);
    if (watch.isSame()) {
        rows.erase(rows.begin() + row);
    }
    if (watch.isAlive()) {
        q->endRemoveRows();
    }
    if (watch.isAlive()) {
        Q_EMIT q->countChanged();
    }
}

void DataListModel::Private::moveRow(int from, int to, const Watch &watch)
{
    q->beginMoveRows({}, from, from, {}, to > from ? to + 1 : to);
    if (watch.isSame()) {
        const auto first = rows.begin();
        if (from < to) {
            std::rotate(first + from, first + from + 1, first + to + 1);
        } else {
            std::rotate(first + to, first + from, first + from + 1);
        }
    }
    if (watch.isAlive()) {
        q->endMoveRows();
    }
}

QString DataListModel::append(const QVariantMap &data)
{
    return insert(count(), data);
}

QString DataListModel::prepend(const QVariantMap &data)
{
    return insert(0, data);
}

QString DataListModel::insert(int index, const QVariantMap &data)
{
    if (!d->mayEdit()) {
        return {};
    }
    const bool couldCommit = canCommit();
    const QString id = d->document->newListItemId();
    const int number = d->values.addId(id);
    const int row = std::clamp(index, 0, count());
    const Private::Step step = [this, row, number](bool forward) {
        forward ? d->insertRow(row, number) : d->takeRow(row);
    };
    d->log.push_back(step);
    const QPointer<DataListModel> self(this);
    // First, so that the row has its values when views look at it.
    for (auto it = data.begin(); self && it != data.end(); ++it) {
        d->edit(id, it.key(), it.value());
    }
    if (!self || d->log.empty()) {
        return {}; // a slot has dropped all edits
    }
    step(true);
    if (self && !couldCommit) {
        Q_EMIT canCommitChanged();
    }
    return id;
}

bool DataListModel::remove(int index)
{
    if (!d->mayEdit() || !d->isRow(index)) {
        return false;
    }
    const int number = d->rows[std::size_t(index)];
    d->make([this, index, number](bool forward) {
        forward ? d->takeRow(index) : d->insertRow(index, number);
    });
    return true;
}

bool DataListModel::remove(const QString &id)
{
    return remove(d->rowOf(id));
}

bool DataListModel::move(int indexFrom, int indexTo)
{
    if (!d->mayEdit() || !d->isRow(indexFrom)) {
        return false;
    }
    const int to = std::clamp(indexTo, 0, count() - 1);
    if (to == indexFrom) {
        return false;
    }
    d->make([this, indexFrom, to](bool forward) {
        const Private::Watch watch(d.get());
        forward ? d->moveRow(indexFrom, to, watch) : d->moveRow(to, indexFrom, watch);
    });
    return true;
}

bool DataListModel::move(const QString &id, int indexTo)
{
    return move(d->rowOf(id), indexTo);
}

bool DataListModel::moveBefore(const QString &id, const QString &before)
{
    const int from = d->rowOf(id);
    const int other = d->rowOf(before);
    return from >= 0 && other >= 0 && move(from, other > from ? other - 1 : other);
}

bool DataListModel::moveAfter(const QString &id, const QString &after)
{
    const int from = d->rowOf(id);
    const int other = d->rowOf(after);
    return from >= 0 && other >= 0 && move(from, other < from ? other + 1 : other);
}

bool DataListModel::moveRelative(int index, int offset)
{
    const qint64 to = qint64(index) + offset;
    return move(index, int(std::clamp<qint64>(to, -1, count())));
}

bool DataListModel::moveRelative(const QString &id, int offset)
{
    return moveRelative(d->rowOf(id), offset);
}

bool DataListModel::migrate(const QString &key, int index, int targetIndex)
{
    if (!d->mayEdit() || !d->isRow(index)) {
        return false;
    }
    const int number = d->rows[std::size_t(index)];
    d->make([this, key, index, number, targetIndex](bool forward) {
        if (forward) {
            d->migrations.append({ d->values.id(number), key, targetIndex });
            d->takeRow(index);
        } else {
            d->migrations.removeLast();
            d->insertRow(index, number);
        }
    });
    return false; // callers do not learn whether a row was taken out
}

bool DataListModel::migrate(const QString &key, const QString &id, int targetIndex)
{
    return migrate(key, d->rowOf(id), targetIndex);
}

// Writing

bool DataListModel::canCommit() const
{
    return !d->log.empty() || !d->values.edits.empty();
}

void DataListModel::commit()
{
    commit(true);
}

bool DataListModel::submit()
{
    commit(true);
    return true;
}

void DataListModel::commit(bool record)
{
    if (!d->document || !canCommit() || d->isCommitting) {
        return;
    }
    const QPointer<DataListModel> self(this);
    const RecordedStep step(record ? d->document.data() : nullptr);
    if (!self) {
        return;
    }
    d->isCommitting = true;
    d->writeValues();
    const bool hasRows = self && !d->log.empty();
    if (hasRows) {
        d->writeRows();
    }
    if (self) {
        d->isCommitting = false;
    }
    if (self && hasRows) {
        d->follow(); // nothing, unless a slot has changed the list as well
    }
}

void DataListModel::Private::writeValues()
{
    const QPointer<DataListModel> self(q);
    const QPointer<LinkedDocument> target(document);
    // Edits that slots make meanwhile are further ones, which wait for the next commit.
    const auto edits = std::exchange(values.edits, {});
    struct Write
    {
        QPointer<DataField> field;
        QString id;
        QVariant value;
    };
    std::vector<Write> writes;
    for (const auto &[number, name] : edits) {
        const QVariant *value = values.find(number, name);
        DataField *field = fields.findByName(values.name(name));
        if (value && value->isValid() && field) {
            writes.push_back({ field, values.id(number), *value });
        }
    }
    for (const Write &write : writes) {
        if (self && target && document == target && write.field) {
            write.field->write(target, write.id, write.value);
        }
    }
}

void DataListModel::Private::writeRows()
{
    if (!document) {
        return;
    }
    QJsonArray ids;
    for (const int number : rows) {
        ids.append(values.id(number));
    }
    // One that was taken out before the document won is in this list again, or elsewhere.
    QVector<LinkedDocument::ListMove> moves;
    for (const LinkedDocument::ListMove &move : std::as_const(migrations)) {
        const QString &id = std::get<0>(move);
        if (rowOf(id) < 0 && document->listParent(id) == key) {
            moves.append(move);
        }
    }
    log.clear();
    migrations.clear();
    document->setList(key, ids, moves);
}

QVector<int> DataListModel::Private::editedRoles(int number) const
{
    QVector<int> roles;
    const auto end = values.edits.lower_bound({ number + 1, 0 });
    for (auto edit = values.edits.lower_bound({ number, 0 }); edit != end; ++edit) {
        if (const DataField *field = fields.findByName(values.name(edit->second))) {
            roles += rolesOf(field);
        }
    }
    return roles;
}

void DataListModel::revert()
{
    std::vector<std::pair<int, QVector<int>>> changed; // rows and roles
    for (int row = 0; row < count(); ++row) {
        const QVector<int> roles = d->editedRoles(d->rows[std::size_t(row)]);
        if (!roles.isEmpty()) {
            changed.push_back({ row, roles });
        }
    }
    d->values.dropAll();
    const QPointer<DataListModel> self(this);
    for (const auto &[row, roles] : changed) {
        if (self && d->isRow(row)) {
            Q_EMIT dataChanged(index(row), index(row), roles);
        }
    }
    const std::vector<Private::Step> log = self ? std::exchange(d->log, {}) : decltype(d->log)();
    for (auto step = log.rbegin(); self && step != log.rend(); ++step) {
        (*step)(false);
    }
}

} // namespace vo::data
