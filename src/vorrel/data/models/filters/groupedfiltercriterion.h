// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/filters/filtercriterion.h>

#include <QtQml/QQmlListProperty>

#include <memory>

namespace vo::data {

/// Sums up what several criteria answer:
///
///     GroupedFilterCriterion {
///         matchRequirement: GroupedFilterCriterion.MatchAny
///         StringFilterCriterion { property: "label"; contains: searchField.text }
///         StringFilterCriterion { property: "notes"; contains: searchField.text }
///     }
///
/// Criteria that are disabled or left out do not count; without any that count, the group is left
/// out, too. `inverted` of a criterion in a group means nothing, at any depth: invert the group.
///
/// A group that would come to lie in itself is refused with a warning in "vorrel.data".
class VORREL_DATACORE_EXPORT GroupedFilterCriterion : public vo::data::FilterCriterion
{
    Q_OBJECT
    QML_NAMED_ELEMENT(GroupedFilterCriterion)
    Q_CLASSINFO("DefaultProperty", "criteria")
    Q_PROPERTY(vo::data::GroupedFilterCriterion::MatchRequirement matchRequirement READ
                   matchRequirement WRITE setMatchRequirement NOTIFY matchRequirementChanged)
    Q_PROPERTY(
        QQmlListProperty<vo::data::FilterCriterion> criteria READ criteria NOTIFY criteriaChanged)

public:
    /// How many of the criteria have to pass a document.
    enum MatchRequirement : int {
        MatchAny = 0,
        MatchAll = 1,
        MatchOne = 2, ///< no more and no less
    };
    Q_ENUM(MatchRequirement)

    explicit GroupedFilterCriterion(QObject *parent = nullptr);
    ~GroupedFilterCriterion() override;

    [[nodiscard]] bool skip() const override;
    [[nodiscard]] FilterFunction createFilterFunction() const override;

    /// MatchAny at first.
    [[nodiscard]] MatchRequirement matchRequirement() const;
    void setMatchRequirement(MatchRequirement requirement);

    /// Not owned. Each criterion stands in it once; one that is destroyed leaves it.
    [[nodiscard]] QQmlListProperty<FilterCriterion> criteria();

Q_SIGNALS:
    void matchRequirementChanged();
    void criteriaChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
