// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/freeformdata_p.h>

#include <QtCore/QJsonArray>

#include <algorithm>

namespace vo::data {

// The entries

bool FreeFormEntries::isEmpty() const
{
    return m_isHash ? m_hash.isEmpty() : m_object.isEmpty();
}

bool FreeFormEntries::contains(const QString &key) const
{
    return m_isHash ? m_hash.contains(key) : m_object.contains(key);
}

QJsonValue FreeFormEntries::value(const QString &key) const
{
    return m_isHash ? m_hash.value(key, QJsonValue::Undefined) : m_object.value(key);
}

QJsonObject FreeFormEntries::fields(const QString &name) const
{
    if (m_readFields.isEmpty() || m_readName != name) {
        m_readName = name;
        m_readFields = value(structKey(name)).toObject();
    }
    return m_readFields;
}

QJsonObject FreeFormEntries::toObject() const
{
    if (!m_isHash) {
        return m_object;
    }
    QStringList sorted = m_hash.keys(); // which appends instead of inserting
    sorted.sort();
    QJsonObject object;
    for (const QString &key : std::as_const(sorted)) {
        object.insert(key, m_hash.value(key));
    }
    return object;
}

QStringList FreeFormEntries::keys() const
{
    return m_isHash ? QStringList(m_hash.keys()) : m_object.keys();
}

void FreeFormEntries::set(const QString &key, const QJsonValue &value)
{
    prepareEdit();
    if (value.isUndefined()) {
        m_hash.remove(key);
    } else {
        m_hash.insert(key, value);
    }
    m_lastStruct.clear();
}

void FreeFormEntries::setField(const QString &key, const QString &field, const QJsonValue &value)
{
    prepareEdit();
    QJsonValue &entry = m_hash[key];
    QJsonObject fields = entry.toObject();
    // One copy serves many edits of a large struct. But an object that is edited in place keeps the
    // texts that it had, until it is copied.
    if (key == m_lastStruct && m_edits < int(fields.size())) {
        entry = QJsonValue(); // nobody else holds it now
        ++m_edits;
    } else {
        m_lastStruct = key;
        m_edits = 0;
    }
    if (value.isUndefined()) {
        fields.remove(field);
    } else {
        fields.insert(field, value);
    }
    entry = fields;
}

void FreeFormEntries::prepareEdit()
{
    m_readFields = QJsonObject();
    if (m_isHash) {
        return;
    }
    m_isHash = true;
    const QJsonObject object = std::exchange(m_object, QJsonObject());
    m_hash.reserve(int(object.size()));
    for (auto it = object.begin(); it != object.end(); ++it) {
        m_hash.insert(it.key(), it.value());
    }
}

// Edits

QJsonValue FreeFormEdit::value(const QString &key) const
{
    const auto index = m_indexes.constFind(key);
    return index == m_indexes.constEnd() ? m_entries.value(key) : m_changed.at(*index).after;
}

void FreeFormEdit::set(const QString &key, const QJsonValue &value)
{
    const auto index = m_indexes.constFind(key);
    if (index != m_indexes.constEnd()) {
        m_changed[*index].after = value;
        return;
    }
    m_indexes.insert(key, int(m_changed.size()));
    m_changed.append({ key, m_entries.value(key), value });
}

QStringList FreeFormEdit::keys() const
{
    QStringList keys = m_entries.keys();
    for (const Entry &entry : m_changed) {
        if (!m_entries.contains(entry.key)) {
            keys.append(entry.key);
        }
    }
    return keys;
}

// Lists

QStringList itemIds(const QJsonArray &items)
{
    QStringList ids;
    ids.reserve(int(items.size()));
    for (const QJsonValue item : items) {
        const QString id = item.toString();
        if (!id.isEmpty()) {
            ids.append(id);
        }
    }
    return ids;
}

void FreeFormData::buildListParents()
{
    if (listParents) {
        return;
    }
    listParents.emplace();
    QStringList lists = entries.keys();
    lists.erase(std::remove_if(lists.begin(), lists.end(),
                               [](const QString &key) { return !isListKey(key); }),
                lists.end());
    lists.sort(); // the last one has the items that stand in several
    for (const QString &key : std::as_const(lists)) {
        const QStringList ids = itemIds(entries.value(key).toArray());
        for (const QString &id : ids) {
            listParents->insert(id, entryName(key));
        }
    }
}

void FreeFormData::updateListParents(const QString &name, const QJsonArray &before,
                                     const QJsonArray &after)
{
    const QStringList ids = itemIds(after);
    for (const QString &id : ids) {
        QString &parent = (*listParents)[id];
        if (parent != name) {
            parent = name;
            pendingParentChanges.insert(id);
        }
    }
    const QSet<QString> held(ids.begin(), ids.end());
    const QStringList former = itemIds(before);
    for (const QString &id : former) {
        // Unless another list of the same edit has taken it.
        if (!held.contains(id) && listParents->value(id) == name) {
            listParents->remove(id);
            pendingParentChanges.insert(id);
        }
    }
}

} // namespace vo::data
