// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/fieldset_p.h>

#include <vorrel/data/base/logging_p.h>

#include <algorithm>
#include <utility>

namespace vo::data {

namespace {

void warnOfDuplicate(const QString &key)
{
    qCWarning(lcCustom, "Duplicate field name \"%s\"", qUtf8Printable(key));
}

} // namespace

FieldSet::FieldSet(QObject *owner, Handlers handlers)
    : m_owner(owner)
    , m_handlers(std::move(handlers))
{ }

QString FieldSet::keyOf(const DataField *field)
{
    return field->hasAlias() ? field->alias() : field->name();
}

void FieldSet::append(DataField *field)
{
    if (field) {
        listen(field);
        schedule();
    }
}

void FieldSet::clear()
{
    if (m_fields.isEmpty()) {
        return;
    }
    const QList<DataField *> former = std::exchange(m_fields, {});
    m_keys.clear(); // the fields may be destroyed before the next run
    for (DataField *field : former) {
        field->disconnect(m_owner);
    }
    schedule();
}

bool FieldSet::rebuild()
{
    if (!std::exchange(m_isScheduled, false)) {
        return false;
    }
    m_keys.clear();
    for (DataField *field : std::as_const(m_fields)) {
        const QString key = keyOf(field);
        if (m_keys.contains(key)) {
            warnOfDuplicate(key);
        } else {
            m_keys.insert(key, field);
        }
    }
    return true;
}

bool FieldSet::add(DataField *field)
{
    if (!field || m_fields.contains(field)) {
        return false;
    }
    const QString key = keyOf(field);
    if (m_keys.contains(key)) {
        warnOfDuplicate(key);
        return false;
    }
    listen(field);
    m_keys.insert(key, field);
    return true;
}

bool FieldSet::remove(DataField *field, QStringList *keys)
{
    if (!field || m_fields.removeAll(field) == 0) {
        return false;
    }
    *keys = takeKeys(field);
    field->disconnect(m_owner);
    return true;
}

DataField *FieldSet::findByName(const QString &name) const
{
    const auto found = std::find_if(m_fields.begin(), m_fields.end(),
                                    [&](const DataField *field) { return field->name() == name; });
    return found == m_fields.end() ? nullptr : *found;
}

void FieldSet::enter(const QString &key, DataField *field)
{
    if (m_fields.contains(field)) {
        m_keys.insert(key, field);
    }
}

bool FieldSet::leave(const QString &key, const DataField *field)
{
    const auto found = m_keys.find(key);
    if (found == m_keys.end() || *found != field) {
        return false;
    }
    m_keys.erase(found);
    return true;
}

void FieldSet::listen(DataField *field)
{
    m_fields.append(field);
    QObject::connect(field, &DataField::nameChanged, m_owner, m_handlers.nameChanged);
    QObject::connect(field, &DataField::aliasChanged, m_owner, m_handlers.aliasChanged);
    QObject::connect(field, &DataField::reevaluateRequested, m_owner, m_handlers.reevaluate);
    QObject::connect(field, &QObject::destroyed, m_owner, [this, field] { forget(field); });
}

// Only the address of the field is good here.
void FieldSet::forget(DataField *field)
{
    const QStringList keys = takeKeys(field);
    if (m_fields.removeAll(field) > 0) {
        const auto destroyed = m_handlers.destroyed; // which may destroy this
        destroyed(keys);
    }
}

QStringList FieldSet::takeKeys(const DataField *field)
{
    QStringList keys;
    for (auto it = m_keys.begin(); it != m_keys.end();) {
        if (*it == field) {
            keys.append(it.key());
            it = m_keys.erase(it);
        } else {
            ++it;
        }
    }
    return keys;
}

void FieldSet::schedule()
{
    if (!std::exchange(m_isScheduled, true)) {
        QMetaObject::invokeMethod(m_owner, m_handlers.processFields, Qt::QueuedConnection);
    }
}

} // namespace vo::data
