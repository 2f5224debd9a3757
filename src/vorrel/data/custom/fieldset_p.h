// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/custom/datafield.h>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <functional>

namespace vo::data {

/// The `fields` of a DataStruct or a DataListModel, in order, and by their keys. It does not own
/// them: one that is destroyed leaves.
///
/// The list property only appends and clears, and a queued call of Handlers::processFields follows,
/// one for a whole list that is declared in QML. The owner answers it with
///
///     if (fields.rebuild()) {
///         // emit fieldsChanged, refresh
///     }
class FieldSet final : public EditableObjectList<DataField>
{
public:
    /// What the owner does when something happens. Each may end in its destruction.
    struct Handlers
    {
        std::function<void()> processFields;
        std::function<void(DataField *field, const QString &oldName)> nameChanged;
        std::function<void(DataField *field, const QString &oldAlias)> aliasChanged;
        std::function<void(DataField *field)> reevaluate;

        /// A field was destroyed, and has left the list and the keys that it owned.
        std::function<void(const QStringList &keys)> destroyed;
    };

    FieldSet(QObject *owner, Handlers handlers);

    /// The alias, or the name without one.
    [[nodiscard]] static QString keyOf(const DataField *field);

    [[nodiscard]] const QList<DataField *> &objects() const override { return m_fields; }
    void append(DataField *field) override;
    void clear() override;

    /// Enters each field of the list under its key again; of two with one key the first one gets
    /// it, with a warning. False, with nothing done, if nothing was appended or cleared since the
    /// last time.
    bool rebuild();

    /// The forms for run time: the keys follow at once. False, with nothing done, for a field that
    /// is there already, or whose key is taken, which gives a warning.
    bool add(DataField *field);

    /// False if it is not there. Else \p keys are those that it owned.
    bool remove(DataField *field, QStringList *keys);

    /// The owner of \p key, or null.
    [[nodiscard]] DataField *find(const QString &key) const { return m_keys.value(key); }

    /// The first field in the list with that name, whatever its alias; null if there is none.
    [[nodiscard]] DataField *findByName(const QString &name) const;

    /// Makes \p field the owner of \p key, if it is in the list.
    void enter(const QString &key, DataField *field);

    /// Takes \p key away from \p field, if it owns it.
    bool leave(const QString &key, const DataField *field);

private:
    void listen(DataField *field);
    void forget(DataField *field);
    QStringList takeKeys(const DataField *field);
    void schedule();

    QObject *const m_owner;
    const Handlers m_handlers;
    bool m_isScheduled = false;
    QList<DataField *> m_fields;
    QHash<QString, DataField *> m_keys;
};

} // namespace vo::data
