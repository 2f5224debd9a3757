// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QList>
#include <QtQml/QQmlListProperty>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class Document;

/// The rows of a view: a list of documents, of which some are selected.
///
///     DocumentModel { id: rows; documents: sorted.result }
///     ListView {
///         model: rows
///         delegate: CheckBox {
///             text: label
///             checked: selected
///             onToggled: rows.toggleDocumentSelected(document)
///         }
///     }
///
/// A list that is bound to `documents` is cleared and filled again whenever it changes. The model
/// makes one update of that, so that a view keeps its place and its delegates: the row at each
/// place stays and shows another document, and the end grows or shrinks. When a document changes,
/// its rows tell of it in all roles.
///
/// A document that is destroyed leaves at once, and a null is in its place until its row goes, in a
/// later turn of the event loop. Other nulls are rows like any.
///
/// Belongs to whoever makes it and does not own the documents. They belong to one Context, that of
/// the first of them. Slots may edit the lists, except those of rowsAboutToBeInserted() and the
/// like.
class VORREL_DATACORE_EXPORT DocumentModel : public QAbstractListModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DocumentModel)
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> documents READ documents NOTIFY documentsChanged)
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> selection READ selection NOTIFY selectionChanged)

public:
    enum Role {
        DocumentRole = Qt::UserRole + 1, ///< "document": the Document
        LabelRole,                       ///< "label": its label, empty for a null
        SelectedRole,                    ///< "selected": whether it is selected
    };
    Q_ENUM(Role)

    explicit DocumentModel(QObject *parent = nullptr);
    ~DocumentModel() override;

    /// The rows; nulls and duplicates are welcome. QML may append and clear. From a clear on, the
    /// rows stay as they are for 30 ms and then become what was appended meanwhile.
    [[nodiscard]] QQmlListProperty<Document> documents();
    [[nodiscard]] QList<Document *> dataList() const;

    /// In the order of selecting. A document stays selected when its row goes.
    [[nodiscard]] QQmlListProperty<Document> selection();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// The first row of \p document; -1 if there is none, and for null.
    Q_INVOKABLE [[nodiscard]] int indexOf(vo::data::Document *document) const;
    Q_INVOKABLE [[nodiscard]] bool isSelected(vo::data::Document *document) const;

    /// \name Selecting
    /// Each emits selectionChanged() first and then dataChanged() for the rows, or nothing if it
    /// changes nothing.
    /// @{
    Q_INVOKABLE void clearSelection();

    /// Selects the documents of all rows, in the order of the rows, and no others.
    Q_INVOKABLE void selectAll();

    /// \p document need not have a row.
    Q_INVOKABLE void selectDocument(vo::data::Document *document);
    Q_INVOKABLE void deselectDocument(vo::data::Document *document);
    Q_INVOKABLE void toggleDocumentSelected(vo::data::Document *document);
    /// @}

    /// Makes views read all rows again.
    void reloadData();

Q_SIGNALS:
    /// The rows are others.
    void documentsChanged();
    void selectionChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private Q_SLOTS:
    /// Makes what was appended since the clear the rows. Called without one, it only writes a
    /// critical line.
    void performBatchUpdate();
    void handleDocumentChanged(vo::data::Document *document);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
