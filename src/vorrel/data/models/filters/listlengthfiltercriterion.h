// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/filters/propertyfiltercriterion.h>

namespace vo::data {

/// Passes documents with a list of so many objects. A property that is no list of objects has 0:
///
///     ListLengthFilterCriterion { property: "childGroups"; length: 0 }
class VORREL_DATACORE_EXPORT ListLengthFilterCriterion : public vo::data::PropertyFilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ListLengthFilterCriterion)
    Q_PROPERTY(int length READ length WRITE setLength NOTIFY lengthChanged)

public:
    using PropertyFilterCriterion::PropertyFilterCriterion;
    ~ListLengthFilterCriterion() override;

    [[nodiscard]] FilterFunction createFilterFunction() const override;

    /// 0 at first.
    [[nodiscard]] int length() const;
    void setLength(int length);

Q_SIGNALS:
    void lengthChanged();

private:
    int m_length = 0;
};

} // namespace vo::data
