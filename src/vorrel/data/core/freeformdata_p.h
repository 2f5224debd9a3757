// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/jsonkeys_p.h>

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <optional>

namespace vo::data {

inline QString structKey(const QString &name)
{
    return jsonkeys::structPrefix + name;
}

inline QString listKey(const QString &name)
{
    return jsonkeys::listPrefix + name;
}

inline bool isStructKey(const QString &key)
{
    return key.startsWith(jsonkeys::structPrefix);
}

inline bool isListKey(const QString &key)
{
    return key.startsWith(jsonkeys::listPrefix);
}

/// The name behind the prefix of a key.
inline QString entryName(const QString &key)
{
    return key.mid(jsonkeys::structPrefix.size());
}

/// The entries of free-form data: structs and lists by their stored keys. They stay the object that
/// was loaded until the first edit. From then on they are a hash, since a large object moves half
/// of itself for each key that comes or goes.
class FreeFormEntries
{
public:
    FreeFormEntries() = default;
    explicit FreeFormEntries(const QJsonObject &object)
        : m_object(object)
    { }

    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] bool contains(const QString &key) const;

    /// Undefined if there is none.
    [[nodiscard]] QJsonValue value(const QString &key) const;
    [[nodiscard]] QJsonObject toObject() const;

    /// The fields of the struct \p name. Those of the last one are at hand: structs are mostly read
    /// field by field.
    [[nodiscard]] QJsonObject fields(const QString &name) const;

    /// In any order.
    [[nodiscard]] QStringList keys() const;

    /// Undefined removes the entry.
    void set(const QString &key, const QJsonValue &value);

    /// Sets a field of a struct; undefined removes it. \pre the struct is there
    void setField(const QString &key, const QString &field, const QJsonValue &value);

    /// Calls \p function with the container of the entries, whose iterators have key() and value(),
    /// in any order.
    template <typename Function>
    void visit(Function function) const
    {
        if (m_isHash) {
            function(m_hash);
        } else {
            function(m_object);
        }
    }

private:
    void prepareEdit();

    QJsonObject m_object;
    QHash<QString, QJsonValue> m_hash;
    bool m_isHash = false;
    QString m_lastStruct; // that setField() has copied
    int m_edits = 0;      // of that copy
    mutable QString m_readName;
    mutable QJsonObject m_readFields; // empty if there are none at hand
};

/// An edit of some entries, which is collected before it is made: reads see what it will do.
class FreeFormEdit
{
public:
    struct Entry
    {
        QString key;
        QJsonValue before;
        QJsonValue after; // undefined: no such entry
    };

    /// \p entries must outlive this.
    explicit FreeFormEdit(const FreeFormEntries &entries)
        : m_entries(entries)
    { }

    [[nodiscard]] QJsonValue value(const QString &key) const;
    void set(const QString &key, const QJsonValue &value);

    /// The keys that are there, and those that the edit takes, in any order.
    [[nodiscard]] QStringList keys() const;

    /// In the order in which they were first set.
    [[nodiscard]] const QVector<Entry> &changed() const { return m_changed; }

private:
    const FreeFormEntries &m_entries;
    QVector<Entry> m_changed;
    QHash<QString, int> m_indexes;
};

/// The free-form data of a document, and what follows from it.
struct FreeFormData
{
    FreeFormEntries entries;
    QHash<QString, int> referenceCounts; // by reference text

    /// The list of each item. Built on first demand.
    std::optional<QHash<QString, QString>> listParents;
    QSet<QString> pendingParentChanges;
    bool notifyPending = false;
    int listItemCounter = 0;

    /// Which edits of single fields may become one: those in one edition. All other edits begin a
    /// new one, and taking them back leads to the former.
    int edition = 0;
    int lastEdition = 0;

    void buildListParents();

    /// The list \p name holds other items now.
    void updateListParents(const QString &name, const QJsonArray &before, const QJsonArray &after);
};

/// The texts of an array; what is no text, or empty, is left out.
QStringList itemIds(const QJsonArray &items);

/// Calls \p function for each text in the structs of free-form data, with the text and iterators at
/// its struct and its field. Every document is walked when it is built, so that a key is only made
/// into a string if somebody wants it.
template <typename Entries, typename Function>
void forEachStructText(const Entries &entries, Function function)
{
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        if (isStructKey(it.key())) {
            const QJsonObject fields = it.value().toObject();
            for (auto field = fields.begin(); field != fields.end(); ++field) {
                if (field.value().isString()) {
                    function(field.value().toString(), it, field);
                }
            }
        }
    }
}

} // namespace vo::data
