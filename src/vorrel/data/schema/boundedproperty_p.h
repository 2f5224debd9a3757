// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/property.h>

#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

/// A stored number and its stored bounds, which each setter keeps in their order. Setters give
/// whether the named value has changed.
template <typename T>
struct BoundedProperty
{
    Property<T> value;
    Property<T> minimum;
    Property<T> maximum;

    BoundedProperty(const char *name, T lowest, T highest, Document *document)
        : value(name, document)
        , minimum("minimum", lowest, document)
        , maximum("maximum", highest, document)
    { }

    bool setValue(T number)
    {
        return isNumber(number) && !valuesEqual(number, value.get()) && value.set(bounded(number));
    }

    bool setMinimum(T bound)
    {
        return setBound(minimum, maximum, bound, [](T a, T b) { return a < b; });
    }

    bool setMaximum(T bound)
    {
        return setBound(maximum, minimum, bound, [](T a, T b) { return a > b; });
    }

    /// Stored bounds may stand in the wrong order: the upper one decides then.
    [[nodiscard]] T bounded(T number) const
    {
        return std::min(std::max(number, minimum.stored()), maximum.stored());
    }

private:
    static bool isNumber(T number) { return number == number; } // NaN is not

    template <typename Beyond>
    bool setBound(Property<T> &bound, Property<T> &opposite, T number, Beyond beyond)
    {
        const QPointer<Document> guard(bound.d_());
        if (!isNumber(number) || !bound.set(number)) {
            return false;
        }
        for (Property<T> *other : { &opposite, &value }) {
            if (guard && beyond(other->get(), number)) {
                other->set(number);
            }
        }
        return true;
    }
};

} // namespace vo::data
