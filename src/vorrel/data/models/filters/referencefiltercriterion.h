// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/models/filters/propertyfiltercriterion.h>

#include <QtQml/QQmlListProperty>

#include <memory>

namespace vo::data {

/// Passes documents that refer to one of some documents, by a property that holds a document or a
/// list of objects:
///
///     ReferenceFilterCriterion { property: "productGroup"; document: groupBox.currentGroup }
///
/// Without documents it passes everything. A document that is destroyed leaves a null behind, and
/// documentsChanged() follows; a null stands for documents that refer to nothing.
class VORREL_DATACORE_EXPORT ReferenceFilterCriterion : public vo::data::PropertyFilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ReferenceFilterCriterion)
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> documents READ documents NOTIFY documentsChanged)
    Q_PROPERTY(QQmlListProperty<vo::data::Document> document READ documents NOTIFY documentsChanged)

public:
    explicit ReferenceFilterCriterion(QObject *parent = nullptr);
    ~ReferenceFilterCriterion() override;

    [[nodiscard]] FilterFunction createFilterFunction() const override;

    /// Not owned. The property `document` is the same list, for a binding to a single one.
    [[nodiscard]] QQmlListProperty<Document> documents();

Q_SIGNALS:
    void documentsChanged();

private:
    const std::unique_ptr<class DocumentList> m_documents;
};

} // namespace vo::data
