// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/sorters/propertysortcriterion.h>

namespace vo::data {

/// Sorts by a text as the default locale does, with numbers in it by their value: "a10" comes
/// behind "a9".
///
///     StringSortCriterion { property: "label" }
class VORREL_DATACORE_EXPORT StringSortCriterion : public vo::data::PropertySortCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(StringSortCriterion)

public:
    using PropertySortCriterion::PropertySortCriterion;
    ~StringSortCriterion() override;

    [[nodiscard]] CompareFunction createCompareFunction() const override;
};

} // namespace vo::data
