// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/models/sorters/sortcriterion.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQml/QQmlListProperty>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

/// Sorts a list of documents by criteria, and does it again when the documents or the criteria
/// change:
///
///     DocumentSorter {
///         id: sorted
///         documents: found.result
///         TypeSortCriterion { typeOrder: ["product"] }
///         StringSortCriterion { property: "label" }
///     }
///     Repeater { model: sorted.result; Text { text: modelData.label } }
///
/// The first criterion that tells two documents apart decides, then their ids. Without criteria the
/// documents stay as they come. A burst of changes is gathered: the list follows when nothing has
/// changed for `delay`. A document that is destroyed leaves it at once; the signals follow in a
/// later turn of the event loop.
///
/// Belongs to whoever makes it and owns neither documents nor criteria. The documents belong to one
/// Context, that of the first of them.
class VORREL_DATACORE_EXPORT DocumentSorter : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DocumentSorter)
    Q_CLASSINFO("DefaultProperty", "criteria")
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> documents READ documents NOTIFY documentsChanged)
    Q_PROPERTY(QQmlListProperty<vo::data::Document> result READ result NOTIFY resultChanged)
    Q_PROPERTY(
        QQmlListProperty<vo::data::SortCriterion> criteria READ criteria NOTIFY criteriaChanged)
    Q_PROPERTY(int delay READ delay WRITE setDelay NOTIFY delayChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)

public:
    explicit DocumentSorter(QObject *parent = nullptr);
    ~DocumentSorter() override;

    /// What is to be sorted. QML may append and clear; nulls are ignored, and a document that
    /// stands in it twice stands in the result twice.
    [[nodiscard]] QQmlListProperty<Document> documents();

    [[nodiscard]] QQmlListProperty<Document> result();
    [[nodiscard]] QList<Document *> resultList() const;

    /// Each criterion stands in it once.
    [[nodiscard]] QQmlListProperty<SortCriterion> criteria();

    /// In milliseconds; 30 at first. Below 1, each change is followed at once.
    [[nodiscard]] int delay() const;

    /// Applies from the next change on.
    void setDelay(int milliseconds);

    /// Whether changes wait for the delay to be over.
    [[nodiscard]] bool busy() const;

Q_SIGNALS:
    void documentsChanged();

    /// After each run, also if the order is the same.
    void resultChanged();
    void criteriaChanged();
    void delayChanged();
    void busyChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private Q_SLOTS:
    void scheduleUpdate();
    void handleDocumentChanged(vo::data::Document *doc);

private:
    void sort();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
