// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/sorters/sortcriterion.h>

#include <QtCore/QStringList>

namespace vo::data {

/// Sorts by the types of the documents: in a given order, with all others behind, or by their
/// names.
///
///     TypeSortCriterion { typeOrder: ["product", "asset:image"] }
class VORREL_DATACORE_EXPORT TypeSortCriterion : public vo::data::SortCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TypeSortCriterion)
    Q_PROPERTY(QStringList typeOrder READ typeOrder WRITE setTypeOrder NOTIFY typeOrderChanged)

public:
    using SortCriterion::SortCriterion;
    ~TypeSortCriterion() override;

    [[nodiscard]] CompareFunction createCompareFunction() const override;

    /// Whole types, as in "asset:image". Empty at first: by name.
    [[nodiscard]] QStringList typeOrder() const;
    void setTypeOrder(const QStringList &types);

Q_SIGNALS:
    void typeOrderChanged();

private:
    QStringList m_typeOrder;
};

} // namespace vo::data
