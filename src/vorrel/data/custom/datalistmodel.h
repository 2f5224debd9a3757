// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QVariantMap>
#include <QtQml/QQmlListProperty>
#include <QtQml/QQmlParserStatus>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class DataField;
class LinkedDocument;

/// One list in the free-form data of a document as an item model. Its rows are the items of the
/// list, its roles are "id" and the names and aliases of the fields:
///
///     DataListModel {
///         id: blocks
///         document: page
///         key: "blocks"
///         StringField { name: "text" }
///         BooleanField { name: "wide" }
///     }
///     ListView {
///         model: blocks
///         delegate: TextField { text: model.text; onEditingFinished: model.text = text }
///     }
///     Button { text: "Add"; onClicked: blocks.append({ "text": "New" }) }
///     Button { text: "Save"; onClicked: blocks.commit() }
///
/// Edits of values show at once, and so do rows that are inserted, removed, moved or sent to
/// another list; the document learns of them when commit() writes them, in one step. revert() drops
/// them. When somebody else changes the list, the model follows with the removals, insertions and
/// moves that lead there, so that views keep their state; inserts, removals and moves that were not
/// committed are gone then. Values stay, but for those that were changed in the document.
///
/// A list that has an item twice, which only others can store, is shown with a reset of the model.
///
/// Belongs to whoever makes it and owns neither document nor fields. A document that is destroyed
/// counts as none, with the signals in a later turn of the event loop. Rows cannot be edited from
/// slots that hear of a change which the model follows.
class VORREL_DATACORE_EXPORT DataListModel : public QAbstractListModel, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_NAMED_ELEMENT(DataListModel)
    Q_CLASSINFO("DefaultProperty", "fields")
    Q_MOC_INCLUDE("vorrel/data/core/linkeddocument.h")
    Q_MOC_INCLUDE("vorrel/data/custom/datafield.h")
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY keyChanged)
    Q_PROPERTY(
        vo::data::LinkedDocument *document READ document WRITE setDocument NOTIFY documentChanged)
    Q_PROPERTY(QQmlListProperty<vo::data::DataField> fields READ fields NOTIFY fieldsChanged)
    Q_PROPERTY(bool canCommit READ canCommit NOTIFY canCommitChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        IdRole = Qt::UserRole, ///< "id"; the fields follow, in order, each with name and alias
    };
    Q_ENUM(Role)

    explicit DataListModel(QObject *parent = nullptr);
    ~DataListModel() override;

    void classBegin() override;
    void componentComplete() override;

    /// The name of the list. Another one drops all edits.
    [[nodiscard]] QString key() const;
    void setKey(const QString &key);

    /// Null at first. Another one drops all edits.
    [[nodiscard]] LinkedDocument *document() const;
    void setDocument(LinkedDocument *document);

    /// The columns. Of two with one name the first one is used, with a warning in
    /// "vorrel.data.custom". What QML appends counts from the next turn of the event loop on, and
    /// drops all edits.
    [[nodiscard]] QQmlListProperty<DataField> fields();

    /// Whether there is anything that commit() would write. canCommitChanged() tells of inserted
    /// rows and edited values, and of changes from elsewhere; it does not come for a first
    /// remove(), move() or migrate(), nor from commit() and revert().
    [[nodiscard]] bool canCommit() const;
    [[nodiscard]] int count() const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QMap<int, QVariant> itemData(const QModelIndex &index) const override;

    /// An edit of a field; ids cannot be edited.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

    /// The value of a field in a row; invalid without such a row or field.
    Q_INVOKABLE [[nodiscard]] QVariant data(int row, const QString &field) const;

    /// The same for an item, which does not have to be in the list.
    Q_INVOKABLE [[nodiscard]] QVariant data(const QString &id, const QString &field) const;
    Q_INVOKABLE bool setData(int row, const QString &field, const QVariant &value);
    Q_INVOKABLE bool setData(const QString &id, const QString &field, const QVariant &value);

    /// \name Rows
    /// All do nothing and give false, or an empty id, without a document or below WriteAccess, and
    /// for rows that are not there.
    /// @{

    /// Make an item with values for its fields, and give its id. An index out of range is the next
    /// in range.
    Q_INVOKABLE QString append(const QVariantMap &data = {});
    Q_INVOKABLE QString prepend(const QVariantMap &data = {});
    Q_INVOKABLE QString insert(int index, const QVariantMap &data = {});

    /// commit() deletes all that belongs to the item.
    Q_INVOKABLE bool remove(int index);
    Q_INVOKABLE bool remove(const QString &id);

    /// An \p indexTo out of range is the next in range. False for the row where it stands.
    Q_INVOKABLE bool move(int indexFrom, int indexTo);
    Q_INVOKABLE bool move(const QString &id, int indexTo);
    Q_INVOKABLE bool moveBefore(const QString &id, const QString &before);
    Q_INVOKABLE bool moveAfter(const QString &id, const QString &after);
    Q_INVOKABLE bool moveRelative(int index, int offset);
    Q_INVOKABLE bool moveRelative(const QString &id, int offset);

    /// Takes a row out. commit() sends its item, with all that belongs to it, to the list \p key;
    /// \p targetIndex -1 is its end. False in any case: do not rely on it.
    Q_INVOKABLE bool migrate(const QString &key, int index, int targetIndex = -1);
    Q_INVOKABLE bool migrate(const QString &key, const QString &id, int targetIndex = -1);
    /// @}

public Q_SLOTS:
    /// Writes edited values and the list to the document. With \p record, undo takes all of it back
    /// in one step.
    void commit(bool record);
    void commit();

    /// The same as commit(), for views. Always true.
    bool submit() override;

    /// Drops all edits.
    void revert() override;

Q_SIGNALS:
    void keyChanged();
    void documentChanged();
    void fieldsChanged();
    void canCommitChanged();
    void countChanged();

private Q_SLOTS:
    void processFieldChange();
    void processFieldNameChange(vo::data::DataField *field, const QString &oldName);
    void processFieldAliasChange(vo::data::DataField *field, const QString &oldAlias);
    void processValueChange(const QString &id, const QString &field);
    void processListChange(const QString &key);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
