// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/filters/propertyfiltercriterion.h>

namespace vo::data {

/// Passes documents with a property that is true, or false:
///
///     BooleanFilterCriterion { property: "deleted"; value: false }
class VORREL_DATACORE_EXPORT BooleanFilterCriterion : public vo::data::PropertyFilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(BooleanFilterCriterion)
    Q_PROPERTY(bool value READ value WRITE setValue NOTIFY valueChanged)

public:
    using PropertyFilterCriterion::PropertyFilterCriterion;
    ~BooleanFilterCriterion() override;

    [[nodiscard]] FilterFunction createFilterFunction() const override;

    /// True at first.
    [[nodiscard]] bool value() const;
    void setValue(bool value);

Q_SIGNALS:
    void valueChanged();

private:
    bool m_value = true;
};

} // namespace vo::data
