// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// DataListModel: its document, its fields and the values in its rows.

#include <vorrel/data/core/freeformdata_p.h>
#include <vorrel/data/custom/commitstate_p.h>
#include <vorrel/data/custom/datalistmodel_p.h>

#include <QtCore/QJsonArray>
#include <QtQml/QJSValue>

#include <algorithm>

namespace vo::data {

DataListModel::Private::Private(DataListModel *owner)
    : q(owner)
    , fields(owner,
             { [owner] { owner->processFieldChange(); },
               [owner](DataField *field, const QString &oldName) {
                   owner->processFieldNameChange(field, oldName);
               },
               [owner](DataField *field, const QString &oldAlias) {
                   owner->processFieldAliasChange(field, oldAlias);
               },
               [this](DataField *field) { reevaluate(field); },
               [this](const QStringList & /*keys*/) {
                   const QPointer<DataListModel> self(q);
                   cachedColumns.clear();
                   Q_EMIT q->fieldsChanged();
                   if (self) {
                       refresh();
                   }
               } })
{ }

DataListModel::DataListModel(QObject *parent)
    : QAbstractListModel(parent)
    , d(new Private(this))
{ }

DataListModel::~DataListModel() = default;

void DataListModel::classBegin() { }

void DataListModel::componentComplete()
{
    processFieldChange();
}

// Configuration

QString DataListModel::key() const
{
    return d->key;
}

void DataListModel::setKey(const QString &key)
{
    if (key == d->key) {
        return;
    }
    const QPointer<DataListModel> self(this);
    d->key = key;
    Q_EMIT keyChanged();
    if (self) {
        d->refresh();
    }
}

LinkedDocument *DataListModel::document() const
{
    return d->document;
}

void DataListModel::setDocument(LinkedDocument *document)
{
    if (document == d->document) {
        return;
    }
    if (d->document) {
        d->document->disconnect(this);
    }
    d->document = document;
    if (document) {
        connect(document, &LinkedDocument::structValueChanged, this,
                &DataListModel::processValueChange);
        connect(document, &LinkedDocument::listChanged, this, &DataListModel::processListChange);
        const auto announceLoss = [this] {
            if (!d->document) {
                d->announceDocument();
            }
        };
        connect(document, &QObject::destroyed, this, announceLoss, Qt::QueuedConnection);
    }
    d->announceDocument();
}

void DataListModel::Private::announceDocument()
{
    const QPointer<DataListModel> self(q);
    Q_EMIT q->documentChanged();
    if (self) {
        refresh();
    }
}

void DataListModel::Private::refresh()
{
    const QPointer<DataListModel> self(q);
    const auto formerCount = rows.size();
    reset([this] {
        values.clear();
        log.clear();
        rows = numbered(storedIds());
    });
    if (self && rows.size() != formerCount) {
        Q_EMIT q->countChanged();
    }
}

QStringList DataListModel::Private::storedIds() const
{
    return document && !key.isEmpty() ? itemIds(document->getList(key)) : QStringList();
}

DataListModel::Private::Rows DataListModel::Private::numbered(const QStringList &ids)
{
    Rows numbers;
    numbers.reserve(std::size_t(ids.size()));
    for (const QString &id : ids) {
        numbers.push_back(values.addId(id));
    }
    return numbers;
}

int DataListModel::Private::rowOf(const QString &id) const
{
    return rowOf(values.findId(id));
}

int DataListModel::Private::rowOf(int number) const
{
    const auto found = std::find(rows.begin(), rows.end(), number);
    return found == rows.end() ? -1 : int(found - rows.begin());
}

// Reading

int DataListModel::count() const
{
    return int(d->rows.size());
}

int DataListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QHash<int, QByteArray> DataListModel::roleNames() const
{
    QHash<int, QByteArray> names { { IdRole, QByteArrayLiteral("id") } };
    int role = IdRole;
    for (const Private::Column &column : d->columns()) {
        names.insert(++role, column.role.toLatin1());
    }
    return names;
}

QVariant DataListModel::data(const QModelIndex &index, int role) const
{
    if (!d->isRow(index.row())) {
        return {};
    }
    const int number = d->rows[std::size_t(index.row())];
    if (role == IdRole) {
        return d->values.id(number);
    }
    const Private::Column *column = d->column(role);
    return column ? d->read(number, *column) : QVariant();
}

QMap<int, QVariant> DataListModel::itemData(const QModelIndex &index) const
{
    QMap<int, QVariant> all;
    if (d->document && d->isRow(index.row())) {
        const int lastRole = IdRole + int(d->columns().size());
        for (int role = IdRole; role <= lastRole; ++role) {
            all.insert(role, data(index, role));
        }
    }
    return all;
}

QVariant DataListModel::data(int row, const QString &field) const
{
    return d->isRow(row) ? data(d->values.id(d->rows[std::size_t(row)]), field) : QVariant();
}

QVariant DataListModel::data(const QString &id, const QString &field) const
{
    DataField *found = d->findField(field);
    const int number = d->values.findId(id);
    if (!found || number < 0) {
        return found ? found->read(d->document, id) : QVariant();
    }
    return d->read(number, { field, d->values.addName(found->name()), found });
}

QVariant DataListModel::Private::read(int number, const Column &column) const
{
    const int name = column.name;
    if (const QVariant *known = values.find(number, name)) {
        return *known;
    }
    // Reading a reference may build a document, and slots that hear of it may do anything.
    const QPointer<DataListModel> self(q);
    const int generation = values.generation();
    const QVariant value = column.field->read(document, values.id(number));
    if (self && value.isValid() && values.generation() == generation) {
        values.set(number, name, value);
    }
    return value;
}

// Editing values

bool DataListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const Private::Column *column = d->column(role);
    if (!column || !d->isRow(index.row())) {
        return false;
    }
    const QString name = column->role;
    const int number = d->rows[std::size_t(index.row())];
    const QPointer<DataListModel> self(this);
    if (!d->edit(d->values.id(number), name, value)) {
        return false;
    }
    for (int row = 0; self && row < count(); ++row) { // more than one if others stored it twice
        if (d->rows[std::size_t(row)] == number) {
            Q_EMIT dataChanged(this->index(row), this->index(row), { role });
        }
    }
    return true;
}

bool DataListModel::setData(int row, const QString &field, const QVariant &value)
{
    return setData(index(row), value, d->roleOf(field));
}

bool DataListModel::setData(const QString &id, const QString &field, const QVariant &value)
{
    return setData(d->rowOf(id), field, value);
}

// A field may ask the whole graph whether it accepts a value, and slots may destroy anything.
bool DataListModel::Private::edit(const QString &id, const QString &name, QVariant value)
{
    if (value.userType() == qMetaTypeId<QJSValue>()) {
        value = value.value<QJSValue>().toVariant();
    }
    const QPointer<DataListModel> self(q);
    const QPointer<DataField> field(fields.find(name));
    if (!field || !field->acceptsValue(document, value) || !self || !field) {
        return false;
    }
    const bool couldCommit = q->canCommit();
    const int number = values.addId(id);
    const int column = values.addName(field->name());
    values.edits.insert({ number, column });
    values.set(number, column, field->convert(value));
    if (!couldCommit) {
        Q_EMIT q->canCommitChanged();
    }
    return true;
}

// Fields

QQmlListProperty<DataField> DataListModel::fields()
{
    return d->fields.property(this);
}

const std::vector<DataListModel::Private::Column> &DataListModel::Private::columns() const
{
    if (cachedColumns.empty()) {
        for (DataField *listed : fields.objects()) {
            for (const QString &role : { listed->name(), listed->alias() }) {
                DataField *owner = findField(role);
                DataField *field = owner ? owner : listed;
                if (!role.isEmpty()) {
                    cachedColumns.push_back({ role, values.addName(field->name()), field });
                }
            }
        }
    }
    return cachedColumns;
}

const DataListModel::Private::Column *DataListModel::Private::column(int role) const
{
    const int index = role - IdRole - 1;
    return index >= 0 && index < int(columns().size()) ? &columns()[std::size_t(index)] : nullptr;
}

int DataListModel::Private::roleOf(const QString &name) const
{
    const auto found = std::find_if(columns().begin(), columns().end(),
                                    [&](const Column &column) { return column.role == name; });
    return found == columns().end() ? -1 : IdRole + 1 + int(found - columns().begin());
}

QVector<int> DataListModel::Private::allRoles() const
{
    QVector<int> roles;
    for (int role = IdRole + 1; column(role); ++role) {
        roles.append(role);
    }
    return roles;
}

// The first field of a name, and of an alias, is the one that counts.
QVector<int> DataListModel::Private::rolesOf(const DataField *field) const
{
    QVector<int> roles { roleOf(field->name()) };
    if (field->hasAlias()) {
        roles.append(roleOf(field->alias()));
    }
    return roles;
}

DataField *DataListModel::Private::findField(const QString &nameOrAlias) const
{
    DataField *field = fields.find(nameOrAlias);
    return field ? field : fields.findByName(nameOrAlias);
}

void DataListModel::processFieldChange()
{
    if (!d->fields.rebuild()) {
        return;
    }
    const QPointer<DataListModel> self(this);
    d->cachedColumns.clear();
    Q_EMIT fieldsChanged();
    if (self) {
        d->refresh();
    }
}

// Replaces roles or rows as a whole.
void DataListModel::Private::reset(const std::function<void()> &action)
{
    const QPointer<DataListModel> self(q);
    q->beginResetModel();
    if (!self) {
        return;
    }
    action();
    cachedColumns.clear();
    q->endResetModel();
}

void DataListModel::processFieldAliasChange(DataField *field, const QString &oldAlias)
{
    tellOfCommitAfter(this, [&] {
        d->reset([&] {
            d->fields.leave(oldAlias, field);
            if (field->hasAlias()) {
                d->fields.enter(field->alias(), field);
            }
        });
    });
}

void DataListModel::processFieldNameChange(DataField *field, const QString &oldName)
{
    tellOfCommitAfter(this, [&] {
        d->reset([&] {
            d->fields.leave(oldName, field);
            d->fields.enter(field->name(), field);
            d->values.dropName(d->values.addName(oldName));
        });
    });
}

// Another default, or other bounds: what was read reads anew, and what was edited is converted.
void DataListModel::Private::reevaluate(DataField *field)
{
    const int name = values.addName(field->name());
    for (int id = 0; id < values.idCount(); ++id) {
        const QVariant *known = values.find(id, name);
        if (known && values.isEdited(id, name)) {
            values.set(id, name, field->convert(*known));
        } else {
            values.drop(id, name);
        }
    }
    const QVector<int> roles = rolesOf(field);
    if (!rows.empty() && !field->name().isEmpty()) {
        Q_EMIT q->dataChanged(q->index(0), q->index(q->count() - 1), roles);
    }
}

} // namespace vo::data

#include "moc_datalistmodel.cpp"
