// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: the lists of its free-form data. A list "rows" is the array under "l:rows".

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/linkeddocument_p.h>

#include <QtCore/QJsonArray>
#include <QtCore/QRandomGenerator>
#include <QtCore/QtEndian>

#include <algorithm>

namespace vo::data {

namespace {

/// The bytes of a number from the lowest on, without the zeros at the end.
template <typename T>
QByteArray significantBytes(T number)
{
    QByteArray bytes(int(sizeof(T)), '\0');
    qToLittleEndian(number, bytes.data());
    while (bytes.size() > 1 && bytes.endsWith('\0')) {
        bytes.chop(1);
    }
    return bytes;
}

/// A list while items are moved into it.
struct Target
{
    QStringList ids;
    QSet<QString> held;

    explicit Target(const QStringList &items = {})
        : ids(items)
        , held(items.begin(), items.end())
    { }

    void place(const QString &id, int index)
    {
        if (held.contains(id)) {
            ids.removeAll(id);
        }
        held.insert(id);
        const int size = int(ids.size());
        ids.insert(index < 0 ? size : std::min(index, size), id);
    }
};

} // namespace

QJsonArray LinkedDocument::getList(const QString &key) const
{
    return d->read(listKey(key)).toArray();
}

// Writing

void LinkedDocument::setListRaw(const QString &key, const QJsonArray &items)
{
    if (key.isEmpty() || accessLevel() < WriteAccess) {
        return;
    }
    FreeFormData &data = d->content();
    data.entries.set(listKey(key), items);
    data.listParents.reset();
    markDirty();
}

void LinkedDocument::setList(const QString &key, const QJsonArray &items)
{
    setList(key, items, {});
}

void LinkedDocument::setList(const QString &key, const QJsonArray &items,
                             const QVector<ListMove> &moves)
{
    if (key.isEmpty() || accessLevel() < WriteAccess) {
        return;
    }
    QHash<QString, Target> lists { { key, Target(itemIds(items)) } };
    QStringList order;
    QSet<QString> moved;
    for (const auto &[item, target, index] : moves) {
        moved.insert(item);
        if (item.isEmpty() || target.isEmpty()) {
            continue; // it keeps its scope, in no list
        }
        if (!lists.contains(target)) {
            lists.insert(target, Target(d->items(target)));
            order.append(target);
        }
        lists[target].place(item, index);
    }
    order.append(key);
    QStringList dropped;
    const QStringList former = d->items(key);
    for (const QString &item : former) {
        if (!moved.contains(item) && !lists[key].held.contains(item)) {
            dropped.append(item);
        }
    }
    FreeFormEdit edit(d->content().entries);
    for (const QString &name : std::as_const(order)) {
        edit.set(listKey(name), QJsonArray::fromStringList(lists[name].ids));
    }
    Private::deleteScopes(edit, dropped);
    d->apply(edit);
}

bool LinkedDocument::moveList(const QString &sourceKey, const QString &targetKey)
{
    return !targetKey.isEmpty()
        && d->moveEntry(listKey(sourceKey), listKey(targetKey), Private::Move);
}

bool LinkedDocument::deleteList(const QString &key)
{
    const QString entry = listKey(key);
    if (accessLevel() < WriteAccess || !d->content().entries.contains(entry)) {
        return false;
    }
    FreeFormEdit edit(d->content().entries);
    edit.set(entry, QJsonValue::Undefined);
    Private::deleteScopes(edit, d->items(key));
    d->apply(edit);
    return true;
}

// Parents

QString LinkedDocument::listParent(const QString &id) const
{
    if (accessLevel() < ReadAccess) {
        return {};
    }
    FreeFormData &data = d->content();
    data.buildListParents();
    return data.listParents->value(id);
}

void LinkedDocument::Private::noteParentChanges(const QHash<QString, QString> &former)
{
    const QHash<QString, QString> &now = *content().listParents;
    QSet<QString> &changed = content().pendingParentChanges;
    for (auto it = now.begin(); it != now.end(); ++it) {
        if (former.value(it.key()) != it.value()) {
            changed.insert(it.key());
        }
    }
    for (auto it = former.begin(); it != former.end(); ++it) {
        if (!now.contains(it.key())) {
            changed.insert(it.key());
        }
    }
    scheduleParentNotification();
}

void LinkedDocument::Private::scheduleParentNotification()
{
    FreeFormData &data = content();
    if (!data.notifyPending && !data.pendingParentChanges.isEmpty()) {
        data.notifyPending = true;
        QMetaObject::invokeMethod(q, &LinkedDocument::delayedNotify, Qt::QueuedConnection);
    }
}

void LinkedDocument::delayedNotify()
{
    FreeFormData &data = d->content();
    data.notifyPending = false;
    const QSet<QString> changed = std::exchange(data.pendingParentChanges, {});
    if (!changed.isEmpty()) {
        Q_EMIT listParentChanged(changed);
    }
}

// Items

bool LinkedDocument::moveListItem(const QString &id, const QString &key, int index)
{
    const QString parent = listParent(id);
    if (parent.isEmpty() || key.isEmpty() || accessLevel() < WriteAccess) {
        return false;
    }
    QStringList ids = d->items(parent);
    ids.removeAll(id);
    setList(parent, QJsonArray::fromStringList(ids), { { id, key, index } });
    return true;
}

bool LinkedDocument::insertListItemBefore(const QString &key, const QString &item,
                                          const QString &before)
{
    return insertListItemsBefore(key, QStringList(item), before);
}

bool LinkedDocument::insertListItemAfter(const QString &key, const QString &item,
                                         const QString &after)
{
    return insertListItemsAfter(key, QStringList(item), after);
}

bool LinkedDocument::insertListItemsBefore(const QString &key, const QStringList &items,
                                           const QString &before)
{
    return d->insertBeside(key, items, before, 0);
}

bool LinkedDocument::insertListItemsAfter(const QString &key, const QStringList &items,
                                          const QString &after)
{
    return d->insertBeside(key, items, after, 1);
}

bool LinkedDocument::Private::insertBeside(const QString &key, const QStringList &items,
                                           const QString &other, int distance)
{
    if (q->accessLevel() < WriteAccess) {
        return false;
    }
    const QSet<QString> moving(items.begin(), items.end());
    QSet<QString> missing = moving;
    QStringList ids;
    const QStringList former = this->items(key);
    for (const QString &item : former) {
        missing.remove(item);
        if (!moving.contains(item)) {
            ids.append(item);
        }
    }
    int place = int(ids.indexOf(other));
    if (place < 0 || !missing.isEmpty()) {
        return false;
    }
    QStringList inserted = items;
    inserted.removeDuplicates();
    for (const QString &item : std::as_const(inserted)) {
        ids.insert(distance + place++, item);
    }
    q->setList(key, QJsonArray::fromStringList(ids));
    return true;
}

bool LinkedDocument::removeListItem(const QString &key, const QString &item)
{
    const QJsonArray items = getList(key);
    const auto place = std::find(items.begin(), items.end(), QJsonValue(item));
    return !item.isEmpty() && place != items.end()
        && removeListItem(key, int(place - items.begin()));
}

bool LinkedDocument::removeListItem(const QString &key, int index)
{
    QJsonArray items = getList(key);
    if (accessLevel() < WriteAccess || index < 0 || index >= int(items.size())) {
        return false;
    }
    items.removeAt(index);
    setList(key, items);
    return true;
}

int LinkedDocument::removeListItems(const QString &key, const QSet<QString> &items)
{
    const QStringList former = d->items(key);
    QStringList kept;
    for (const QString &id : former) {
        if (!items.contains(id)) {
            kept.append(id);
        }
    }
    if (accessLevel() < WriteAccess || kept.size() == former.size()) {
        return 0;
    }
    setList(key, QJsonArray::fromStringList(kept));
    return int(former.size() - kept.size());
}

int LinkedDocument::removeListItems(const QString &key, const QStringList &items)
{
    return removeListItems(key, QSet<QString>(items.begin(), items.end()));
}

QString LinkedDocument::newListItem(const QString &key, int index)
{
    return newListItems(key, index, 1).value(0);
}

QStringList LinkedDocument::newListItems(const QString &key, int index, int count)
{
    if (key.isEmpty() || accessLevel() < WriteAccess || count <= 0) {
        return {};
    }
    if (count > tuning::newItemsLimit) {
        qCWarning(lcData, "Refusing to make %d list items at a time", count);
        return {};
    }
    QStringList made;
    made.reserve(count);
    for (int i = 0; i < count; ++i) {
        made.append(newListItemId());
    }
    const QStringList former = d->items(key);
    const int place = index >= 0 && index < int(former.size()) ? index : int(former.size());
    setList(key, QJsonArray::fromStringList(former.mid(0, place) + made + former.mid(place)));
    return made;
}

// Short, and unique by a count within this process, and by time and chance among processes.
QString LinkedDocument::newListItemId()
{
    static QRandomGenerator random = QRandomGenerator::securelySeeded();
    constexpr qint64 minute = 60000;
    constexpr int shortest = 6;
    const qint64 age = Clock::instance().currentMSecsSinceEpoch() - creationTimestamp();
    QByteArray bytes = significantBytes(qint32(d->content().listItemCounter++))
        + significantBytes(quint16(random.bounded(quint32(0xFFFF))))
        + significantBytes(age / minute);
    while (bytes.size() < shortest) {
        bytes.append(char(random.bounded(quint32(0xFF))));
    }
    return QString::fromLatin1(
        bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

QStringList LinkedDocument::Private::items(const QString &key) const
{
    return itemIds(read(listKey(key)).toArray());
}

} // namespace vo::data
