// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/filters/filtercriterion.h>

namespace vo::data {

/// Passes documents that the user may edit:
///
///     DocumentFilter { documents: products.documents; AccessLevelFilterCriterion {} }
class VORREL_DATACORE_EXPORT AccessLevelFilterCriterion : public vo::data::FilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(AccessLevelFilterCriterion)

public:
    using FilterCriterion::FilterCriterion;
    ~AccessLevelFilterCriterion() override;

    [[nodiscard]] FilterFunction createFilterFunction() const override;

Q_SIGNALS:
    /// Never emitted.
    void typesChanged();
};

} // namespace vo::data
