// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/documentpropertybase.h>

#include <vorrel/data/core/document.h>

namespace vo::data {

bool DocumentPropertyBase::canDelete() const
{
    return d_()->accessLevel() == Document::WriteAccess;
}

} // namespace vo::data
