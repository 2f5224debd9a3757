// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/custom/datalistmodel.h>
#include <vorrel/data/custom/fieldset_p.h>
#include <vorrel/data/custom/rowvalues_p.h>

#include <QtCore/QPointer>

#include <functional>
#include <vector>

namespace vo::data {

struct DataListModel::Private
{
    /// Applies an edit of the rows, or takes it back.
    using Step = std::function<void(bool forward)>;

    /// Rows by the numbers of their ids.
    using Rows = std::vector<int>;

    struct Column
    {
        QString role;     // the name of the field, or its alias
        int name;         // the number of the name in both cases
        DataField *field; // the one that counts, if several have the name
    };

    /// Knows whether the rows are still those that an edit of them began with. Slots may destroy
    /// the model, or make it show another list.
    class Watch
    {
    public:
        explicit Watch(const Private *record)
            : m_owner(record->q)
            , m_values(record->values)
            , m_generation(record->values.generation())
        { }

        [[nodiscard]] bool isAlive() const { return m_owner; }
        [[nodiscard]] bool isSame() const
        {
            return m_owner && m_values.generation() == m_generation;
        }

    private:
        const QPointer<DataListModel> m_owner;
        const RowValues &m_values;
        const int m_generation;
    };

    explicit Private(DataListModel *owner);

    void refresh();
    void announceDocument();
    [[nodiscard]] QStringList storedIds() const;
    [[nodiscard]] Rows numbered(const QStringList &ids);
    [[nodiscard]] int rowOf(const QString &id) const;
    [[nodiscard]] int rowOf(int number) const;
    [[nodiscard]] bool isRow(int row) const { return row >= 0 && row < int(rows.size()); }

    // Fields
    const std::vector<Column> &columns() const;
    [[nodiscard]] const Column *column(int role) const;
    [[nodiscard]] int roleOf(const QString &name) const;
    [[nodiscard]] QVector<int> allRoles() const;
    [[nodiscard]] QVector<int> rolesOf(const DataField *field) const;
    [[nodiscard]] DataField *findField(const QString &nameOrAlias) const;
    void reset(const std::function<void()> &action);
    void reevaluate(DataField *field);

    // Values
    [[nodiscard]] QVariant read(int number, const Column &column) const;
    bool edit(const QString &id, const QString &name, QVariant value);

    // Edits of rows
    [[nodiscard]] bool mayEdit() const;
    void make(Step step);
    void insertRow(int row, int number);
    void takeRow(int row);

    void moveRow(int from, int to, const Watch &watch);
    [[nodiscard]] QVector<int> editedRoles(int number) const;
    void writeValues();
    void writeRows();

    // Following the document
    std::vector<int> dropChangedValues(const QString &id, const QVector<int> &roles);
    void follow();
    void takeRowsOver();
    bool removeRows(const std::vector<int> &places);
    bool insertRows(const Rows &wanted, const std::vector<int> &counts);
    bool moveRows(const Rows &wanted, const std::vector<int> &places);

    DataListModel *const q;
    QString key;
    QPointer<LinkedDocument> document;
    bool isCommitting = false;
    bool isFollowing = false;
    bool hasToFollow = false; // once more
    FieldSet fields;
    Rows rows;
    std::vector<Step> log;
    QVector<LinkedDocument::ListMove> migrations;
    mutable RowValues values;
    mutable std::vector<Column> cachedColumns; // empty if they are to be made
};

} // namespace vo::data
