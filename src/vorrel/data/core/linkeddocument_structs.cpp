// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: the structs of its free-form data, and how any edit of that data is made. A
// struct "hours" is the object under "s:hours".

#include <vorrel/data/core/genericchange.h>
#include <vorrel/data/core/linkeddocument_p.h>
#include <vorrel/data/core/referencetype_p.h>
#include <vorrel/data/core/structvaluechange.h>

#include <QtCore/QPointer>

namespace vo::data {

// The data as a whole

void LinkedDocument::assignCustomData(const QJsonObject &data)
{
    const QPointer<LinkedDocument> self(this);
    d->assign(FreeFormEntries(data));
    if (self) {
        Q_EMIT structValueChanged(QString(), QString());
    }
    if (self) {
        Q_EMIT listChanged(QString());
    }
}

QJsonObject LinkedDocument::customData() const
{
    return std::as_const(*d).content().entries.toObject();
}

void LinkedDocument::Private::assign(FreeFormEntries entries)
{
    if (!freeForm && entries.isEmpty()) {
        return;
    }
    FreeFormData &data = content();
    data.entries = std::move(entries);
    const bool hadParents = data.listParents.has_value();
    const auto formerParents =
        hadParents ? *std::exchange(data.listParents, std::nullopt) : QHash<QString, QString>();
    if (hadParents) { // somebody wants to know
        data.buildListParents();
        noteParentChanges(formerParents);
    }
    recountReferences();
}

const FreeFormData &LinkedDocument::Private::content() const
{
    static const FreeFormData none;
    return freeForm ? *freeForm : none;
}

FreeFormData &LinkedDocument::Private::content()
{
    if (!freeForm) {
        freeForm = std::make_unique<FreeFormData>();
    }
    return *freeForm;
}

QJsonValue LinkedDocument::Private::read(const QString &key) const
{
    return q->accessLevel() < ReadAccess ? QJsonValue(QJsonValue::Undefined)
                                         : content().entries.value(key);
}

// Edits

void LinkedDocument::Private::apply(const FreeFormEdit &edit)
{
    const int former = content().edition;
    const int own = ++content().lastEdition;
    q->applyChange(std::make_unique<GenericChange>(
        q, [this, entries = edit.changed(), former, own](bool forward) {
            content().edition = forward ? own : former;
            write(entries, forward);
        }));
}

// All is stored before anybody hears of it.
void LinkedDocument::Private::write(const QVector<FreeFormEdit::Entry> &entries, bool forward)
{
    FreeFormData &data = content();
    QHash<QString, int> references;
    const auto count = [&references](const QJsonValue &entry, int number) {
        const QJsonObject fields = entry.toObject();
        for (const QJsonValue field : fields) {
            if (isReference(field.toString())) {
                references[field.toString()] += number;
            }
        }
    };
    for (const FreeFormEdit::Entry &entry : entries) {
        // What stands there now: others may have changed it since.
        const QJsonValue before = data.entries.value(entry.key);
        const QJsonValue after = forward ? entry.after : entry.before;
        if (isListKey(entry.key)) {
            data.buildListParents();
            data.updateListParents(entryName(entry.key), before.toArray(), after.toArray());
        } else {
            count(before, -1);
            count(after, 1);
        }
        data.entries.set(entry.key, after);
    }
    scheduleParentNotification();
    const QPointer<LinkedDocument> self(q);
    countReferences(references);
    if (self) {
        q->markDirty();
    }
    for (const FreeFormEdit::Entry &entry : entries) {
        if (self) {
            announce(entry.key);
        }
    }
}

void LinkedDocument::Private::announce(const QString &key)
{
    if (isListKey(key)) {
        Q_EMIT q->listChanged(entryName(key));
    } else {
        Q_EMIT q->structValueChanged(entryName(key), QString());
    }
}

// Structs

QJsonObject LinkedDocument::getStruct(const QString &key) const
{
    return accessLevel() < ReadAccess ? QJsonObject() : d->content().entries.fields(key);
}

QJsonValue LinkedDocument::getStructValue(const QString &key, const QString &field) const
{
    return getStruct(key).value(field);
}

bool LinkedDocument::hasStruct(const QString &key) const
{
    return !d->read(structKey(key)).isUndefined();
}

bool LinkedDocument::hasStructValue(const QString &key, const QString &field) const
{
    return getStruct(key).contains(field);
}

bool LinkedDocument::setStruct(const QString &key, const QJsonObject &object)
{
    if (accessLevel() < WriteAccess) {
        return false;
    }
    const QPointer<LinkedDocument> self(this);
    const QJsonObject accepted = acceptedFields(object);
    if (!self || (accepted.isEmpty() && !hasStruct(key))) {
        return true;
    }
    FreeFormEdit edit(d->content().entries);
    edit.set(structKey(key),
             accepted.isEmpty() ? QJsonValue(QJsonValue::Undefined) : QJsonValue(accepted));
    d->apply(edit);
    return true;
}

// Without the references that may not be stored.
QJsonObject LinkedDocument::acceptedFields(const QJsonObject &object)
{
    const QPointer<LinkedDocument> self(this);
    QJsonObject accepted = object;
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (self && isReference(it.value().toString()) && !acceptsReference(it.value())) {
            accepted.remove(it.key());
        }
    }
    return accepted;
}

bool LinkedDocument::setStructValue(const QString &key, const QString &field,
                                    const QJsonValue &value)
{
    const QPointer<LinkedDocument> self(this);
    if (accessLevel() < WriteAccess || !acceptsReference(value) || !self) {
        return false;
    }
    if (getStruct(key).isEmpty()) {
        d->makeStruct(structKey(key));
    }
    const QJsonValue old = getStructValue(key, field);
    if (old == value) {
        return false;
    }
    if (changeRecordingActive()) {
        recordChange(new StructValueChange(this, key, field, old, value));
    }
    d->writeField(key, field, old, value);
    return true;
}

void LinkedDocument::Private::makeStruct(const QString &key)
{
    if (content().entries.contains(key)) {
        return;
    }
    content().entries.set(key, QJsonObject());
    if (!q->changeRecordingActive()) {
        return;
    }
    q->recordChange(new GenericChange(q, [this, key](bool forward) {
        // What others have stored there since does not go.
        const QJsonValue now = content().entries.value(key);
        if (now == (forward ? QJsonValue(QJsonValue::Undefined) : QJsonValue(QJsonObject()))) {
            const QJsonValue none(QJsonValue::Undefined);
            write({ { key, none, QJsonObject() } }, forward);
        }
    }));
}

void LinkedDocument::Private::writeField(const QString &key, const QString &field,
                                         const QJsonValue &before, const QJsonValue &after)
{
    QHash<QString, int> references;
    if (isReference(after.toString())) {
        ++references[after.toString()];
    }
    if (isReference(before.toString())) {
        --references[before.toString()];
    }
    content().entries.setField(structKey(key), field, after);
    const QPointer<LinkedDocument> self(q);
    countReferences(references);
    if (self) {
        Q_EMIT q->structValueChanged(key, field);
    }
    if (self) {
        q->markDirty();
    }
}

bool LinkedDocument::clearStructValue(const QString &key, const QString &field)
{
    return setStructValue(key, field, QJsonValue::Undefined);
}

bool LinkedDocument::deleteStruct(const QString &key)
{
    if (accessLevel() < WriteAccess || !hasStruct(key)) {
        return false;
    }
    FreeFormEdit edit(d->content().entries);
    edit.set(structKey(key), QJsonValue::Undefined);
    d->apply(edit);
    return true;
}

bool LinkedDocument::moveStruct(const QString &sourceKey, const QString &targetKey)
{
    return d->moveEntry(structKey(sourceKey), structKey(targetKey), Private::Move);
}

bool LinkedDocument::duplicateStruct(const QString &sourceKey, const QString &targetKey)
{
    return d->moveEntry(structKey(sourceKey), structKey(targetKey), Private::Duplicate);
}

bool LinkedDocument::Private::moveEntry(const QString &source, const QString &target, MoveKind kind)
{
    if (q->accessLevel() < WriteAccess || source == target || !content().entries.contains(source)) {
        return false;
    }
    FreeFormEdit edit(content().entries);
    edit.set(target, content().entries.value(source));
    if (kind == Move) {
        edit.set(source, QJsonValue::Undefined);
    }
    apply(edit);
    return true;
}

void LinkedDocument::clearStructReferences()
{
    const QPointer<LinkedDocument> self(this);
    d->forEachReference([&](const QString & /*text*/, const QString &key, const QString &field) {
        if (self) {
            setStructValue(key, field, QJsonValue::Null);
        }
    });
}

void LinkedDocument::Private::forEachReference(
    const std::function<void(const QString &, const QString &, const QString &)> &function) const
{
    const FreeFormEntries entries = content().entries; // which may change now
    entries.visit([&](const auto &all) {
        forEachStructText(all, [&](const QString &text, auto structure, auto field) {
            if (isReference(text)) {
                function(text, entryName(structure.key()), field.key());
            }
        });
    });
}

void LinkedDocument::aggregateReferences(QSet<QString> &ids) const
{
    Document::aggregateReferences(ids);
    const QHash<QString, int> &counts = d->content().referenceCounts;
    for (auto it = counts.keyBegin(); it != counts.keyEnd(); ++it) {
        const auto [id, number] = referenceData(*it);
        if (referenceType(number)->counted) {
            ids.insert(QString::fromLatin1(id));
        }
    }
}

} // namespace vo::data
