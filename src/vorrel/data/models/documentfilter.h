// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/models/filters/filtercriterion.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQml/QQmlListProperty>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

/// Splits a list of documents by criteria, and does it again when the documents or the criteria
/// change:
///
///     TypeListing { id: products; context: shop; type: "product" }
///     DocumentFilter {
///         id: found
///         documents: products.documents
///         StringFilterCriterion { property: "label"; contains: searchField.text }
///     }
///     Repeater { model: found.result; Text { text: modelData.label } }
///
/// A burst of changes is gathered: the lists follow when nothing has changed for `delay`. A
/// document that is destroyed leaves all lists at once; the signals follow in a later turn of the
/// event loop. A criterion whose function throws an exception lets no document pass, with a
/// critical line in "vorrel.data".
///
/// Belongs to whoever makes it and owns neither documents nor criteria. The documents belong to one
/// Context, that of the first of them.
class VORREL_DATACORE_EXPORT DocumentFilter : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DocumentFilter)
    Q_CLASSINFO("DefaultProperty", "criteria")
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> documents READ documents NOTIFY documentsChanged)
    Q_PROPERTY(QQmlListProperty<vo::data::Document> result READ result NOTIFY resultChanged)
    Q_PROPERTY(QQmlListProperty<vo::data::Document> filtered READ filtered NOTIFY filteredChanged)
    Q_PROPERTY(
        QQmlListProperty<vo::data::FilterCriterion> criteria READ criteria NOTIFY criteriaChanged)
    Q_PROPERTY(int delay READ delay WRITE setDelay)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)

public:
    explicit DocumentFilter(QObject *parent = nullptr);
    ~DocumentFilter() override;

    /// What is to be split. QML may append and clear; nulls are ignored, and a document that stands
    /// in it twice is filtered twice.
    [[nodiscard]] QQmlListProperty<Document> documents();

    /// The documents that pass every criterion, in their order.
    [[nodiscard]] QQmlListProperty<Document> result();
    [[nodiscard]] QList<Document *> resultList() const;

    /// The documents that fail one, in their order.
    [[nodiscard]] QQmlListProperty<Document> filtered();
    [[nodiscard]] QList<Document *> filteredList() const;

    /// Each criterion stands in it once. They are asked in order, so the cheap and strict ones
    /// belong to the front.
    [[nodiscard]] QQmlListProperty<FilterCriterion> criteria();

    /// In milliseconds; 100 at first. Below 1, each change is followed at once.
    [[nodiscard]] int delay() const;

    /// Applies from the next change on.
    void setDelay(int milliseconds);

    /// Whether changes wait for the delay to be over.
    [[nodiscard]] bool busy() const;

Q_SIGNALS:
    void documentsChanged();
    void resultChanged();
    void filteredChanged();
    void criteriaChanged();
    void busyChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private Q_SLOTS:
    void scheduleUpdate();
    void handleDocumentChanged(vo::data::Document *doc);
    void applyFilter();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
