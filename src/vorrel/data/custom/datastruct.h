// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtQml/QJSValue>
#include <QtQml/QQmlListProperty>
#include <QtQml/QQmlParserStatus>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class CustomData;
class DataField;
class LinkedDocument;

/// One struct in the free-form data of a document, as live values that QML reads and writes:
///
///     DataStruct {
///         id: hours
///         document: shop
///         key: "hours"
///         StringField { name: "note"; defaultValue: "Always open" }
///         IntegerField { name: "opens"; minimum: 0; maximum: 24; defaultValue: 9 }
///     }
///     TextField { text: hours.$.note; onTextEdited: hours.$.note = text }
///     Button { text: "Save"; enabled: hours.canCommit; onClicked: hours.commit() }
///
/// An edit stays in `$` until commit() writes it to the document or revert() drops it. What reaches
/// the document from elsewhere shows at once, and wins over an edit of the same member; edits of
/// others stay. A value that its field refuses reads as undefined until the member is read again.
///
/// Give fields that are edited no alias: commit() writes what stands under the name, and so removes
/// the member of an aliased field that was edited.
///
/// Belongs to whoever makes it and owns neither document nor fields. A document that is destroyed
/// counts as none, with the signals in a later turn of the event loop. Slots that hear of an edit
/// that QML makes may not delete the struct at once.
class VORREL_DATACORE_EXPORT DataStruct : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_NAMED_ELEMENT(DataStruct)
    Q_CLASSINFO("DefaultProperty", "fields")
    Q_MOC_INCLUDE("vorrel/data/core/linkeddocument.h")
    Q_MOC_INCLUDE("vorrel/data/custom/customdata.h")
    Q_MOC_INCLUDE("vorrel/data/custom/datafield.h")
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY keyChanged)
    Q_PROPERTY(QString listParent READ listParent NOTIFY listParentChanged)
    Q_PROPERTY(
        vo::data::LinkedDocument *document READ document WRITE setDocument NOTIFY documentChanged)
    Q_PROPERTY(QQmlListProperty<vo::data::DataField> fields READ fields NOTIFY fieldsChanged)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic" // Clang calls that name an extension
    Q_PROPERTY(vo::data::CustomData *$ READ data CONSTANT)
#pragma GCC diagnostic pop
    Q_PROPERTY(vo::data::CustomData *data READ data CONSTANT)
    Q_PROPERTY(bool canCommit READ canCommit NOTIFY canCommitChanged)

public:
    explicit DataStruct(QObject *parent = nullptr);
    ~DataStruct() override;

    void classBegin() override;
    void componentComplete() override;

    /// The name of the struct. Another one drops all edits.
    [[nodiscard]] QString key() const;
    void setKey(const QString &key);

    /// The list that has the struct as an item; empty if none has.
    [[nodiscard]] QString listParent() const;

    /// Null at first. Another one drops all edits.
    [[nodiscard]] LinkedDocument *document() const;
    void setDocument(LinkedDocument *document);

    /// The members. Of two that would show under one name the first one does, with a warning in
    /// "vorrel.data.custom". What QML appends shows in the next turn of the event loop.
    [[nodiscard]] QQmlListProperty<DataField> fields();

    /// The values, under the aliases or names of the fields; "$" in QML is the same. Never null.
    [[nodiscard]] CustomData *data() const;

    /// Whether there are edits, or a move, that commit() would make.
    [[nodiscard]] bool canCommit() const;

    /// Writes the edited members to the document, and moves the struct. With \p record, undo takes
    /// all of it back in one step.
    Q_INVOKABLE void commit(bool record);
    Q_INVOKABLE void commit();

    /// Reads the edited members from the document again. A move is still to be made.
    Q_INVOKABLE void revert();

    /// Calls \p function with data() and then commits, with recording. If it throws an error,
    /// reverts instead and calls \p errorCallback with that. False in any case: do not rely on it.
    Q_INVOKABLE bool transaction(const QJSValue &function, const QJSValue &errorCallback);
    Q_INVOKABLE bool transaction(const QJSValue &function);

    /// The forms for run time, which show at once. A field that is there already, or whose name is
    /// taken, is not added, the latter with a warning.
    Q_INVOKABLE void addField(vo::data::DataField *field);
    Q_INVOKABLE void removeField(vo::data::DataField *field);

    /// Lets commit() move the struct, with all that belongs to it, to another list of the document;
    /// \p index -1 is its end. False if it stands in no list, or in that one.
    Q_INVOKABLE bool moveToList(const QString &key, int index);
    Q_INVOKABLE bool moveToList(const QString &key);

Q_SIGNALS:
    void keyChanged();
    void listParentChanged();
    void documentChanged();
    void fieldsChanged();
    void canCommitChanged();

private Q_SLOTS:
    void processFieldChange();
    void processFieldNameChange(vo::data::DataField *field, const QString &oldName);
    void processFieldAliasChange(vo::data::DataField *field, const QString &oldAlias);
    void processListParentChange(const QSet<QString> &ids);
    void reevaluateField(vo::data::DataField *field);
    void processValueChange(const QString &key, const QString &fieldByName);

private:
    friend class CustomData;

    QVariant edit(const QString &key, QVariant input);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
