// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/plaindata.h"

#include "support/literals.h"

namespace vo::test {

PlainData::PlainData(const QJsonObject &object)
{
    for (auto it = object.begin(); it != object.end(); ++it) {
        insert(it.key(), it.value());
    }
}

PlainData::PlainData(const Station *station)
    : PlainData(station->serialize()[":data"_s].toObject())
{ }

QStringList PlainData::items(const QString &list) const
{
    return value("l:"_s + list).toVariant().toStringList();
}

QStringList PlainData::allItems() const
{
    return parents().keys();
}

QMap<QString, QString> PlainData::parents() const
{
    QMap<QString, QString> lists;
    for (auto it = begin(); it != end(); ++it) {
        for (const QString &item : items(it.key().mid(2))) {
            lists[item] = it.key().mid(2);
        }
    }
    return lists;
}

QStringList PlainData::texts() const
{
    QStringList all;
    for (const QJsonValue &entry : *this) {
        for (const QJsonValue field : entry.toObject()) {
            all << field.toString();
        }
    }
    return all;
}

PlainData PlainData::withoutEmpty() const
{
    PlainData full = *this;
    for (const QString &key : full.keys()) {
        if (full[key] == QJsonObject() || full[key] == QJsonArray()) {
            full.remove(key);
        }
    }
    return full;
}

QString PlainData::shape(const QString &scope) const
{
    QStringList parts;
    for (const QString &key : keys()) {
        QStringList segments = key.split(":"_s);
        const int place = int(segments.indexOf(scope));
        if (place > 0) {
            segments[place] = "*"_s;
            const QByteArray fields = QJsonDocument(value(key).toObject()).toJson();
            parts << segments.join(":"_s) + QString::fromUtf8(fields);
            for (const QString &item : items(key.mid(2))) {
                parts.last() += "("_s + shape(item) + ")"_s;
            }
        }
    }
    parts.sort();
    return parts.join(" "_s);
}

void PlainData::setField(const QString &name, const QString &field, const QJsonValue &value)
{
    QJsonObject fields = this->value("s:"_s + name).toObject();
    fields.insert(field, value); // undefined removes
    insert("s:"_s + name, fields);
}

void PlainData::setList(const QString &name, const QStringList &items, const QString &moved)
{
    const QStringList former = this->items(name);
    insert("l:"_s + name, QJsonArray::fromStringList(items));
    for (const QString &item : former) {
        if (item != moved && !items.contains(item)) {
            deleteScope(item);
        }
    }
}

void PlainData::deleteScope(const QString &scope)
{
    for (const QString &key : keys()) {
        if (key.split(":"_s).indexOf(scope) > 0 && contains(key)) {
            const QStringList held = items(key.mid(2) + QString());
            const bool isList = key.startsWith("l:"_s);
            remove(key);
            for (const QString &item : isList ? held : QStringList()) {
                deleteScope(item);
            }
        }
    }
}

// Edits

QString PlainHistory::oneOf(const QStringList &texts)
{
    return texts.isEmpty() ? QString() : texts.at(m_random.bounded(int(texts.size())));
}

void PlainHistory::step(data::EditContext *context, Station *station)
{
    const int what = m_random.bounded(20);
    if (what < 6) {
        move(context, station, what < 4 ? -1 : 1);
    } else if (what == 6) {
        changeFromElsewhere(station);
    } else {
        const PlainData before = now;
        context->beginRecordChanges();
        now.setField("step"_s, "count"_s, ++m_count); // so that there is something to undo
        station->setStructValue("step"_s, "count"_s, m_count);
        for (int edits = m_random.bounded(4); edits > 0; --edits) {
            edit(station);
        }
        if (chance(10)) {
            context->rollbackChanges();
            now = before;
        } else {
            m_stack = m_stack.mid(0, m_position + 1) << Step { before, now, true };
            m_position = std::min(m_position + 1, 69);
            m_stack = m_stack.mid(m_stack.size() - m_position - 1);
        }
        context->endRecordChanges();
    }
}

void PlainHistory::move(data::EditContext *context, Station *station, int distance)
{
    const int place = distance < 0 ? m_position : m_position + 1;
    if (place < 0 || place >= m_stack.size()) {
        return;
    }
    distance < 0 ? context->undo() : context->redo();
    m_position += distance;
    const Step moved = m_stack.at(place);
    now = distance < 0 ? moved.before : moved.after;
    if (!moved.isSure) { // and neither are the others, from here
        now = PlainData(station);
        for (Step &step : m_stack) {
            step.isSure = false;
        }
    }
}

void PlainHistory::changeFromElsewhere(Station *station)
{
    now.remove(oneOf(now.keys()));
    now.setField(oneOf("a b"_l + now.allItems()), "f"_s, oneOf("w $ref(0,t0)"_l));
    const QString list = oneOf("a b"_l);
    QStringList items = now.items(list) << "r%1"_s.arg(++m_count);
    items.move(m_random.bounded(int(items.size())), m_random.bounded(int(items.size())));
    now["l:"_s + list] = QJsonArray::fromStringList(items);
    QJsonObject data;
    for (auto it = now.begin(); it != now.end(); ++it) {
        data[it.key()] = it.value();
    }
    reload(station, { { ":data"_s, data } });
    for (Step &step : m_stack) {
        step.isSure = false;
    }
}

void PlainHistory::edit(Station *station)
{
    const QString name = oneOf("a b c c:d"_l + now.allItems());
    if (chance(2)) {
        editStruct(station, chance(4) ? name + ":sub"_s : name);
    } else if (chance(12)) {
        station->deleteScope(name);
        now.deleteScope(name);
    } else if (now.size() < 24 && !name.contains(":"_s)) {
        chance(2) ? editList(station, name) : moveItems(station, name);
    }
}

void PlainHistory::editStruct(Station *station, const QString &name)
{
    const QString key = "s:"_s + name;
    const QString other = oneOf("a b c"_l);
    const QString value = oneOf("u v $ref(0,t0) $ref(0,t1) $ref(0,t2) $ref(0,own) $ref(0,x"_l);
    const bool isRefused = value == "$ref(0,own)"_s; // a cycle
    switch (m_random.bounded(8)) {
    case 0: {
        QJsonObject fields { { "f"_s, value }, { "g"_s, "w"_s } };
        station->setStruct(name, fields);
        isRefused ? fields.remove("f"_s) : void();
        now[key] = fields;
        break;
    }
    case 1:
        station->deleteStruct(name);
        now.remove(key);
        break;
    case 2:
    case 3:
        if (now.contains(key) && name != other) {
            now["s:"_s + other] = now[key];
        }
        if (chance(2)) {
            station->duplicateStruct(name, other);
        } else if (station->moveStruct(name, other)) {
            now.remove(key);
        }
        break;
    default: {
        const QString field = oneOf("f g h"_l);
        const QJsonValue json = chance(5) ? QJsonValue(QJsonValue::Undefined) : QJsonValue(value);
        station->setStructValue(name, field, json);
        if (json.isUndefined() || !isRefused) {
            now.setField(name, field, json);
        }
    }
    }
}

void PlainHistory::editList(Station *station, const QString &name)
{
    QStringList items = now.items(name);
    const QString item = oneOf(items);
    const int place = int(items.indexOf(item));
    switch (m_random.bounded(5)) {
    case 0:
    case 1: {
        const int index = m_random.bounded(6) - 1;
        const QStringList made = station->newListItems(name, index, 1 + m_random.bounded(2));
        const int start = index < 0 || index > items.size() ? int(items.size()) : index;
        now.setList(name, items.mid(0, start) + made + items.mid(start));
        break;
    }
    case 2:
        items.removeAll(item);
        if (chance(2) ? station->removeListItem(name, place)
                      : station->removeListItems(name, QStringList(item)) == 1) {
            now.setList(name, items);
        }
        break;
    case 3: {
        const QString other = oneOf("a b c"_l);
        if (station->moveList(name, other)) {
            now["l:"_s + other] = now.take("l:"_s + name);
        }
        break;
    }
    default:
        if (chance(4) && station->deleteList(name)) {
            now.setList(name, {});
            now.remove("l:"_s + name);
        }
    }
}

void PlainHistory::moveItems(Station *station, const QString &name)
{
    QStringList items = now.items(name);
    const QString item = oneOf(items);
    const QString other = oneOf(items);
    const QString target = oneOf("a b"_l + now.allItems());
    items.removeAll(item);
    if (item.isEmpty() || station->copyScope(item).contains("l:"_s + target) || item == target) {
        return; // it would hold itself
    }
    if (chance(2)) {
        const bool isMoved = station->insertListItemAfter(name, item, other);
        items.insert(items.indexOf(other) + 1, item);
        isMoved ? now.setList(name, items) : void();
        return;
    }
    const int index = m_random.bounded(4) - 1;
    station->moveListItem(item, target, index);
    QStringList there = target == name ? items : now.items(target);
    there.insert(index < 0 || index > there.size() ? there.size() : index, item);
    now.setList(target, there);
    target == name ? void() : now.setList(name, items, item);
}

} // namespace vo::test
