// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/customer.h>

#include <vorrel/data/properties/property.h>

namespace vo::data {

struct Customer::Private
{
    Customer *const q;
    Property<QString> fbtoken { "fbtoken", q };
};

Customer::Customer(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Customer::~Customer() = default;

VO_DEFINE_PROPERTY(Customer, QString, fbtoken, setFbtoken)

} // namespace vo::data

#include "moc_customer.cpp"
