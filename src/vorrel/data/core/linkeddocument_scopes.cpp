// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: the scopes of its free-form data. The key "s:a:b" stands in the scopes "a" and
// "b": in all that its segments name, apart from the first.

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/linkeddocument_p.h>

#include <QtCore/QJsonArray>
#include <QtCore/QPointer>

namespace vo::data {

namespace {

constexpr QLatin1Char separator(':');

/// The keys of each scope.
class ScopeIndex
{
public:
    explicit ScopeIndex(const QStringList &keys)
    {
        for (const QString &key : keys) {
            const QStringList segments = key.split(separator);
            for (int i = 1; i < int(segments.size()); ++i) {
                // Where the first segment has the name of a scope, the key is not in that scope.
                if (segments.indexOf(segments.at(i)) == i) {
                    m_keys[segments.at(i)].append(key);
                }
            }
        }
    }

    [[nodiscard]] QStringList keysOf(const QString &scope) const
    {
        return scope.isEmpty() ? QStringList() : m_keys.value(scope);
    }

private:
    QHash<QString, QStringList> m_keys;
};

/// Calls \p function for each key of the scopes, and of those of the items in their lists. No scope
/// is visited twice.
template <typename Value, typename Function>
void forEachInScopes(const QStringList &scopes, const QStringList &keys, Value valueOf,
                     Function function)
{
    const ScopeIndex index(keys);
    QStringList open = scopes;
    QSet<QString> seen;
    while (!open.isEmpty()) {
        const QString scope = open.takeLast();
        QStringList keysInScope = seen.contains(scope) ? QStringList() : index.keysOf(scope);
        keysInScope.sort();
        seen.insert(scope);
        for (const QString &key : std::as_const(keysInScope)) {
            const QJsonValue value = valueOf(key);
            if (isListKey(key)) {
                open += itemIds(value.toArray());
            }
            function(key, value);
        }
    }
}

/// Works out what a copied scope becomes under another name.
class ScopeCopy
{
public:
    ScopeCopy(LinkedDocument *document, const QJsonObject &data)
        : m_document(document)
        , m_data(data)
        , m_index(data.keys())
    { }

    /// False if it would grow too large.
    [[nodiscard]] bool make(const QString &source, const QString &target)
    {
        m_open.append({ source, target, false });
        while (!m_open.isEmpty() && m_size <= tuning::pastedEntriesLimit) {
            const Scope scope = m_open.takeLast();
            if (scope.isDone) {
                m_path.remove(scope.source);
            } else if (!m_path.contains(scope.source)) {
                m_path.insert(scope.source);
                m_open.append({ scope.source, scope.target, true });
                copyEntries(scope);
            }
        }
        return m_open.isEmpty();
    }

    /// By their new keys.
    [[nodiscard]] const QVector<QPair<QString, QJsonValue>> &entries() const { return m_entries; }

private:
    struct Scope
    {
        QString source;
        QString target;
        bool isDone; // with all that is in it
    };

    void copyEntries(const Scope &scope)
    {
        const QStringList keys = m_index.keysOf(scope.source);
        for (const QString &key : keys) {
            QStringList segments = key.split(separator);
            segments[segments.indexOf(scope.source)] = scope.target;
            const QString newKey = segments.join(separator);
            const QJsonValue value = m_data.value(key);
            if (isStructKey(key)) {
                m_entries.append({ newKey, value.toObject() });
            } else if (isListKey(key)) {
                m_entries.append({ newKey, copyItems(itemIds(value.toArray())) });
            }
            ++m_size;
        }
    }

    QJsonArray copyItems(const QStringList &ids)
    {
        QJsonArray newIds;
        for (const QString &id : ids) {
            const QString newId = m_document->newListItemId();
            newIds.append(newId);
            m_open.append({ id, newId, false });
            ++m_size;
        }
        return newIds;
    }

    LinkedDocument *const m_document;
    const QJsonObject m_data;
    const ScopeIndex m_index;
    QVector<Scope> m_open;
    QSet<QString> m_path; // from the root to the scope that is being copied
    QVector<QPair<QString, QJsonValue>> m_entries;
    int m_size = 0;
};

} // namespace

QStringList LinkedDocument::scopeStructs(const QString &scope) const
{
    return d->namesInScope(jsonkeys::structPrefix, scope);
}

QStringList LinkedDocument::scopeLists(const QString &scope) const
{
    return d->namesInScope(jsonkeys::listPrefix, scope);
}

QStringList LinkedDocument::Private::namesInScope(QLatin1String prefix, const QString &scope) const
{
    QStringList names;
    if (scope.isEmpty() || q->accessLevel() < ReadAccess) {
        return names;
    }
    const QString beginning = prefix + scope + separator;
    const QStringList keys = content().entries.keys();
    for (const QString &key : keys) {
        if (key.startsWith(beginning)) {
            names.append(entryName(key));
        }
    }
    names.sort();
    return names;
}

void LinkedDocument::deleteScope(const QString &scope)
{
    if (accessLevel() < WriteAccess) {
        return;
    }
    FreeFormEdit edit(d->content().entries);
    Private::deleteScopes(edit, QStringList(scope));
    if (!edit.changed().isEmpty()) {
        d->apply(edit);
    }
}

void LinkedDocument::Private::deleteScopes(FreeFormEdit &edit, const QStringList &scopes)
{
    if (scopes.isEmpty()) {
        return;
    }
    const auto value = [&edit](const QString &key) { return edit.value(key); };
    forEachInScopes(scopes, edit.keys(), value, [&](const QString &key, const QJsonValue &former) {
        if (!former.isUndefined() && (isStructKey(key) || isListKey(key))) {
            edit.set(key, QJsonValue::Undefined);
        }
    });
}

QJsonObject LinkedDocument::copyScope(const QString &scope) const
{
    if (scope.isEmpty() || accessLevel() < ReadAccess) {
        return {};
    }
    QJsonObject copy { { jsonkeys::scope, scope } };
    const FreeFormEntries &entries = d->content().entries;
    const auto value = [&entries](const QString &key) { return entries.value(key); };
    forEachInScopes(QStringList(scope), entries.keys(), value,
                    [&](const QString &key, const QJsonValue &entry) { copy.insert(key, entry); });
    return copy;
}

void LinkedDocument::pasteScopeAs(const QJsonObject &scopeData, const QString &source,
                                  const QString &target)
{
    if (source.isEmpty() || target.isEmpty() || accessLevel() < WriteAccess) {
        return;
    }
    ScopeCopy copy(this, scopeData);
    if (!copy.make(source, target)) {
        qCWarning(lcData, "Refusing to paste the scope %s: more than %d entries",
                  qPrintable(source), tuning::pastedEntriesLimit);
        return;
    }
    // Asked before the edit begins, since it may build documents.
    const QPointer<LinkedDocument> self(this);
    QVector<QPair<QString, QJsonValue>> entries = copy.entries();
    for (auto &[key, value] : entries) {
        if (self && isStructKey(key)) {
            const QJsonObject fields = acceptedFields(value.toObject());
            value = fields.isEmpty() ? QJsonValue(QJsonValue::Undefined) : QJsonValue(fields);
        }
    }
    if (self) {
        d->paste(entries);
    }
}

void LinkedDocument::Private::paste(const QVector<QPair<QString, QJsonValue>> &entries)
{
    FreeFormEdit edit(content().entries);
    QStringList dropped;
    for (const auto &[key, value] : entries) {
        const QJsonValue former = edit.value(key);
        if (former.isUndefined() && value.isUndefined()) {
            continue;
        }
        if (isListKey(key)) {
            dropped += itemIds(former.toArray());
        }
        edit.set(key, value);
    }
    // The items that stood in lists which are replaced
    deleteScopes(edit, dropped);
    if (!edit.changed().isEmpty()) {
        apply(edit);
    }
}

} // namespace vo::data
