// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/datastruct.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/custom/commitstate_p.h>
#include <vorrel/data/custom/customdata.h>
#include <vorrel/data/custom/fieldset_p.h>
#include <vorrel/data/custom/recordedstep_p.h>

#include <QtCore/QPointer>
#include <QtQml/QJSEngine>

#include <utility>

namespace vo::data {

struct DataStruct::Private
{
    explicit Private(DataStruct *owner);

    void refresh();
    void updateField(const DataField *field);
    void writeEdits(const QSet<QString> &names);
    void warnOfAlias(const DataField *field);
    void dropEdit(const QString &name);
    void fieldsAreGone(const QStringList &keys);
    [[nodiscard]] LinkedDocument *shownDocument() const;

    DataStruct *const q;
    QString key;
    QPointer<LinkedDocument> document;
    bool isCommitting = false;
    FieldSet fields;
    QSet<QString> uncommitted; // names of fields
    int moveIndex = 0;
    QString moveTarget; // empty if no move is to be made
    QSet<QString> warnedAliases;
    CustomData *const data;
};

DataStruct::Private::Private(DataStruct *owner)
    : q(owner)
    , fields(owner,
             { [owner] { owner->processFieldChange(); },
               [owner](DataField *field, const QString &oldName) {
                   owner->processFieldNameChange(field, oldName);
               },
               [owner](DataField *field, const QString &oldAlias) {
                   owner->processFieldAliasChange(field, oldAlias);
               },
               [owner](DataField *field) { owner->reevaluateField(field); },
               [this](const QStringList &keys) { fieldsAreGone(keys); } })
    , data(new CustomData(owner))
{ }

LinkedDocument *DataStruct::Private::shownDocument() const
{
    return key.isEmpty() ? nullptr : document.data();
}

void DataStruct::Private::updateField(const DataField *field)
{
    data->updateField(shownDocument(), key, field);
}

void DataStruct::Private::refresh()
{
    const QPointer<DataStruct> self(q);
    if (shownDocument()) {
        data->update(document, key, fields.objects());
    } else {
        data->clear();
    }
    if (self && !uncommitted.isEmpty()) {
        uncommitted.clear();
        Q_EMIT q->canCommitChanged();
    }
    if (self) {
        Q_EMIT q->listParentChanged();
    }
}

void DataStruct::Private::dropEdit(const QString &name)
{
    tellOfCommitAfter(q, [&] { uncommitted.remove(name); });
}

void DataStruct::Private::fieldsAreGone(const QStringList &keys)
{
    const QPointer<DataStruct> self(q);
    Q_EMIT q->fieldsChanged();
    if (self) {
        data->clearKeys(keys);
    }
}

DataStruct::DataStruct(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{ }

DataStruct::~DataStruct() = default;

void DataStruct::classBegin() { }

void DataStruct::componentComplete()
{
    processFieldChange();
}

// Configuration

QString DataStruct::key() const
{
    return d->key;
}

void DataStruct::setKey(const QString &key)
{
    if (key == d->key) {
        return;
    }
    const QPointer<DataStruct> self(this);
    d->key = key;
    Q_EMIT keyChanged();
    if (self) {
        d->refresh();
    }
}

LinkedDocument *DataStruct::document() const
{
    return d->document;
}

void DataStruct::setDocument(LinkedDocument *document)
{
    if (document == d->document) {
        return;
    }
    if (d->document) {
        d->document->disconnect(this);
    }
    d->document = document;
    const QPointer<DataStruct> self(this);
    const auto announce = [this, self] {
        Q_EMIT documentChanged();
        if (self) {
            d->refresh();
        }
    };
    if (document) {
        connect(document, &LinkedDocument::structValueChanged, this,
                &DataStruct::processValueChange);
        connect(document, &LinkedDocument::listParentChanged, this,
                &DataStruct::processListParentChange);
        const auto announceLoss = [this, announce] {
            if (!d->document) {
                announce();
            }
        };
        connect(document, &QObject::destroyed, this, announceLoss, Qt::QueuedConnection);
    }
    announce();
}

QString DataStruct::listParent() const
{
    const LinkedDocument *document = d->shownDocument();
    return document ? document->listParent(d->key) : QString();
}

CustomData *DataStruct::data() const
{
    return d->data;
}

// Edits

bool DataStruct::canCommit() const
{
    return !d->uncommitted.isEmpty() || !d->moveTarget.isEmpty();
}

// What QML wrote. A field may ask the whole graph whether it accepts that, and slots may destroy
// anything.
QVariant DataStruct::edit(const QString &key, QVariant input)
{
    if (input.userType() == qMetaTypeId<QJSValue>()) {
        input = input.value<QJSValue>().toVariant();
    }
    const QPointer<DataStruct> self(this);
    const QPointer<DataField> field(d->fields.find(key));
    if (!d->document || !field || !field->acceptsValue(d->document, input) || !self || !field) {
        return {};
    }
    const auto edits = d->uncommitted.size();
    d->uncommitted.insert(field->name());
    if (edits == 0) {
        Q_EMIT canCommitChanged();
    }
    return field ? field->convert(input) : QVariant();
}

void DataStruct::commit()
{
    commit(true);
}

void DataStruct::commit(bool record)
{
    if (!d->document || !canCommit()) {
        return;
    }
    const QPointer<DataStruct> self(this);
    const QPointer<LinkedDocument> document(d->document);
    const QString key = d->key;
    const RecordedStep step(record ? d->document.data() : nullptr);
    if (!self) {
        return;
    }
    // Edits that slots make meanwhile are further ones, which wait for the next commit.
    const bool wasCommitting = std::exchange(d->isCommitting, true);
    d->writeEdits(std::exchange(d->uncommitted, {}));
    if (!self) {
        return;
    }
    const QString target = std::exchange(d->moveTarget, {});
    const int index = std::exchange(d->moveIndex, 0);
    if (document && document == d->document && key == d->key && !target.isEmpty()) {
        document->moveListItem(key, target, index);
    }
    if (self) {
        Q_EMIT canCommitChanged();
    }
    if (self) {
        d->isCommitting = wasCommitting;
    }
}

// Reads under the name also what stands under an alias: then the member is removed.
void DataStruct::Private::writeEdits(const QSet<QString> &names)
{
    const QPointer<DataStruct> self(q);
    const QPointer<LinkedDocument> target(document);
    const QString structId = key;
    const QList<QPointer<DataField>> guarded(fields.objects().begin(), fields.objects().end());
    for (const QPointer<DataField> &field : guarded) {
        if (!field || !names.contains(field->name())) {
            continue;
        }
        warnOfAlias(field);
        field->write(target, structId, data->value(field->name()));
        if (!self || !target || document != target || key != structId) {
            return; // the edits were of another struct
        }
    }
}

void DataStruct::Private::warnOfAlias(const DataField *field)
{
    const QString name = field->name();
    if (field->hasAlias() && !warnedAliases.contains(name)) {
        warnedAliases.insert(name);
        qCDebug(lcCustom, "An edit of \"%s\" removes it, since it has the alias \"%s\"",
                qUtf8Printable(name), qUtf8Printable(field->alias()));
    }
}

void DataStruct::revert()
{
    if (!d->document || !canCommit()) {
        return;
    }
    const QPointer<DataStruct> self(this);
    const QSet<QString> names = std::exchange(d->uncommitted, {});
    const QList<DataField *> &all = d->fields.objects();
    const QList<QPointer<DataField>> guarded(all.begin(), all.end());
    for (const QPointer<DataField> &field : guarded) {
        if (self && field && names.contains(field->name())) {
            d->updateField(field);
        }
    }
    if (self) {
        Q_EMIT canCommitChanged();
    }
}

bool DataStruct::transaction(const QJSValue &function)
{
    return transaction(function, {});
}

// The result says nothing: callers learn of a failure by the callback.
bool DataStruct::transaction(const QJSValue &function, const QJSValue &errorCallback)
{
    QJSEngine *engine = qjsEngine(this);
    if (!engine || !function.isCallable()) {
        return false;
    }
    const QPointer<DataStruct> self(this);
    const QJSValue result = QJSValue(function).call({ engine->newQObject(d->data) });
    if (!self) {
        return false;
    }
    if (!result.isError()) {
        commit(true);
        return false;
    }
    revert();
    if (errorCallback.isCallable()) {
        QJSValue(errorCallback).call({ result });
    }
    return false;
}

bool DataStruct::moveToList(const QString &key)
{
    return moveToList(key, -1);
}

bool DataStruct::moveToList(const QString &key, int index)
{
    const QString parent = listParent();
    if (parent.isEmpty() || parent == key) {
        return false;
    }
    tellOfCommitAfter(this, [&] {
        d->moveTarget = key;
        d->moveIndex = index;
    });
    return true;
}

// What happens to the document

void DataStruct::processValueChange(const QString &key, const QString &fieldByName)
{
    if (d->isCommitting || d->key.isEmpty() || (!key.isEmpty() && key != d->key)) {
        return;
    }
    const QPointer<DataStruct> self(this);
    tellOfCommitAfter(this, [&] {
        if (!fieldByName.isEmpty()) {
            d->uncommitted.remove(fieldByName);
            if (const DataField *field = d->fields.findByName(fieldByName)) {
                d->updateField(field);
            }
            return;
        }
        d->uncommitted.clear();
        const QList<DataField *> &all = d->fields.objects();
        const QList<QPointer<DataField>> guarded(all.begin(), all.end());
        for (const QPointer<DataField> &field : guarded) {
            if (self && field) {
                d->updateField(field);
            }
        }
    });
}

void DataStruct::processListParentChange(const QSet<QString> &ids)
{
    if (ids.contains(d->key)) {
        Q_EMIT listParentChanged();
    }
}

// Fields

QQmlListProperty<DataField> DataStruct::fields()
{
    return d->fields.property(this);
}

void DataStruct::addField(DataField *field)
{
    if (!d->fields.add(field)) {
        return;
    }
    const QPointer<DataStruct> self(this);
    const QPointer<DataField> added(field);
    Q_EMIT fieldsChanged();
    if (self && added) {
        d->updateField(added);
    }
}

void DataStruct::removeField(DataField *field)
{
    QStringList keys;
    if (d->fields.remove(field, &keys)) {
        d->fieldsAreGone(keys);
    }
}

void DataStruct::processFieldChange()
{
    if (!d->fields.rebuild()) {
        return;
    }
    const QPointer<DataStruct> self(this);
    Q_EMIT fieldsChanged();
    if (self) {
        d->refresh();
    }
}

void DataStruct::processFieldNameChange(DataField *field, const QString &oldName)
{
    const QPointer<DataStruct> self(this);
    const QPointer<DataField> renamed(field);
    d->updateField(field);
    if (self && renamed && !renamed->hasAlias()) {
        const bool hadName = d->fields.leave(oldName, renamed);
        d->fields.enter(renamed->name(), renamed);
        if (hadName) {
            d->data->clearKeys({ oldName });
        }
    }
    if (self) {
        d->dropEdit(oldName);
    }
}

void DataStruct::processFieldAliasChange(DataField *field, const QString &oldAlias)
{
    const QPointer<DataStruct> self(this);
    const QPointer<DataField> renamed(field);
    const bool hadAlias = d->fields.leave(oldAlias, field);
    d->fields.enter(FieldSet::keyOf(field), field);
    if (hadAlias) {
        d->data->clearKeys({ oldAlias });
    }
    if (self && renamed) {
        d->updateField(renamed);
    }
    if (self && renamed) {
        d->dropEdit(renamed->name());
    }
}

void DataStruct::reevaluateField(DataField *field)
{
    const QString key = FieldSet::keyOf(field);
    d->data->store(key, field->convert(d->data->value(key)));
}

} // namespace vo::data

#include "moc_datastruct.cpp"
