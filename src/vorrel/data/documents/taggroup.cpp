// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/taggroup.h>

namespace vo::data {

TagGroup::TagGroup(Context *context)
    : Group(context)
{ }

TagGroup::~TagGroup() = default;

} // namespace vo::data

#include "moc_taggroup.cpp"
