// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/groupedfiltercriterion.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/models/criterion_p.h>
#include <vorrel/data/models/filters/filtercriteria_p.h>

#include <algorithm>
#include <vector>

namespace vo::data {

namespace {

using FilterFunctions = std::vector<FilterFunction>;

bool _vo_matchAny(const FilterFunctions &functions, const Document *document)
{
    return std::any_of(functions.begin(), functions.end(),
                       [document](const auto &function) { return function(document); });
}

bool _vo_matchAll(const FilterFunctions &functions, const Document *document)
{
    return std::all_of(functions.begin(), functions.end(),
                       [document](const auto &function) { return function(document); });
}

bool _vo_matchOne(const FilterFunctions &functions, const Document *document)
{
    return std::count_if(functions.begin(), functions.end(),
                         [document](const auto &function) { return function(document); })
        == 1;
}

template <bool (*match)(const FilterFunctions &, const Document *)>
struct GroupedFilterFunctor
{
    bool operator()(const Document *document) const { return match(functions, document); }

    FilterFunctions functions;
};

} // namespace

struct GroupedFilterCriterion::Private final : FilterCriteria
{
    explicit Private(GroupedFilterCriterion *group)
        : FilterCriteria(
            group,
            [group] {
                emitBoth(group, &GroupedFilterCriterion::criteriaChanged,
                         &GroupedFilterCriterion::updateRequired);
            },
            [group] { Q_EMIT group->updateRequired(); })
        , q(group)
    { }

    void append(FilterCriterion *criterion) override
    {
        if (leadsToGroup(criterion)) {
            qCWarning(lcData) << q << "cannot lie in itself; refused" << criterion;
        } else {
            FilterCriteria::append(criterion);
        }
    }

    [[nodiscard]] bool leadsToGroup(const FilterCriterion *criterion) const
    {
        const auto *group = qobject_cast<const GroupedFilterCriterion *>(criterion);
        return group
            && (group == q
                || std::any_of(group->d->objects().begin(), group->d->objects().end(),
                               [this](const auto *child) { return leadsToGroup(child); }));
    }

    template <bool (*match)(const FilterFunctions &, const Document *)>
    [[nodiscard]] FilterFunction filterFunction() const
    {
        const QList<FilterCriterion *> active = activeOf(*this);
        GroupedFilterFunctor<match> functor;
        for (const FilterCriterion *criterion : active) {
            functor.functions.push_back(criterion->createFilterFunction());
        }
        return functor;
    }

    GroupedFilterCriterion *const q;
    MatchRequirement matchRequirement = MatchAny;
};

GroupedFilterCriterion::GroupedFilterCriterion(QObject *parent)
    : FilterCriterion(parent)
    , d(new Private(this))
{ }

GroupedFilterCriterion::~GroupedFilterCriterion() = default;

bool GroupedFilterCriterion::skip() const
{
    return activeOf(*d).isEmpty();
}

FilterFunction GroupedFilterCriterion::createFilterFunction() const
{
    switch (d->matchRequirement) {
    case MatchAll:
        return d->filterFunction<_vo_matchAll>();
    case MatchOne:
        return d->filterFunction<_vo_matchOne>();
    case MatchAny:
        break;
    }
    return d->filterFunction<_vo_matchAny>(); // also for numbers that QML made up
}

GroupedFilterCriterion::MatchRequirement GroupedFilterCriterion::matchRequirement() const
{
    return d->matchRequirement;
}

void GroupedFilterCriterion::setMatchRequirement(MatchRequirement requirement)
{
    configure(this, d->matchRequirement, requirement,
              &GroupedFilterCriterion::matchRequirementChanged,
              &GroupedFilterCriterion::updateRequired);
}

QQmlListProperty<FilterCriterion> GroupedFilterCriterion::criteria()
{
    return d->property(this);
}

} // namespace vo::data

#include "moc_groupedfiltercriterion.cpp"
