// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/price.h>

#include <vorrel/data/properties/property.h>

namespace vo::data {

struct Price::Private
{
    Price *const q;
    Property<double> quantity { "quantity", q };
    Property<double> value { "value", q };
};

Price::Price(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{ }

Price::~Price() = default;

VO_DEFINE_PROPERTY(Price, double, quantity, setQuantity)
VO_DEFINE_PROPERTY(Price, double, value, setValue)

} // namespace vo::data

#include "moc_price.cpp"
