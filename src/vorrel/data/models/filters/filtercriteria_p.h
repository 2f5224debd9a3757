// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/criterionlist_p.h>
#include <vorrel/data/models/filters/filtercriterion.h>

#include <algorithm>
#include <iterator>

namespace vo::data {

using FilterCriteria = CriterionList<FilterCriterion>;

/// Those that count as they are configured, in order.
inline QList<FilterCriterion *> activeOf(const FilterCriteria &criteria)
{
    QList<FilterCriterion *> active;
    const QList<FilterCriterion *> &all = criteria.objects();
    std::copy_if(all.begin(), all.end(), std::back_inserter(active),
                 [](const auto *criterion) { return criterion->enabled() && !criterion->skip(); });
    return active;
}

} // namespace vo::data
