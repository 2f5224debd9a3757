// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/filters/propertyfiltercriterion.h>

namespace vo::data {

/// Compares a whole number with that of the document:
///
///     IntegerFilterCriterion {
///         property: "width"
///         matchMode: IntegerFilterCriterion.GreaterEqual
///         value: 1920
///     }
class VORREL_DATACORE_EXPORT IntegerFilterCriterion : public vo::data::PropertyFilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(IntegerFilterCriterion)
    Q_PROPERTY(vo::data::IntegerFilterCriterion::MatchMode matchMode READ matchMode WRITE
                   setMatchMode NOTIFY matchModeChanged)
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)

public:
    /// What the number of the document has to be.
    enum MatchMode : int {
        Equal = 0,
        NotEqual = 1,
        Greater = 2,
        Lesser = 3,
        GreaterEqual = 4,
        LesserEqual = 5,
    };
    Q_ENUM(MatchMode)

    using PropertyFilterCriterion::PropertyFilterCriterion;
    ~IntegerFilterCriterion() override;

    /// With a mode that does not exist, the function throws.
    [[nodiscard]] FilterFunction createFilterFunction() const override;

    /// Equal at first.
    [[nodiscard]] MatchMode matchMode() const;
    void setMatchMode(MatchMode mode);

    /// 0 at first.
    [[nodiscard]] int value() const;
    void setValue(int value);

Q_SIGNALS:
    void matchModeChanged();
    void valueChanged();

private:
    MatchMode m_matchMode = Equal;
    int m_value = 0;
};

} // namespace vo::data
