// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/productgroup.h>

namespace vo::data {

ProductGroup::ProductGroup(Context *context)
    : Group(context)
{ }

ProductGroup::~ProductGroup() = default;

} // namespace vo::data

#include "moc_productgroup.cpp"
