// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/document.h>

#include <vector>

namespace vo::data {

struct Document::Private
{
    // In the order of construction. The property objects belong to the concrete class and are
    // gone before this record is.
    std::vector<PropertyBase *> properties;
    QList<Document *> attached; // the same document once for each link
    QSet<Document *> referencing;
    std::unique_ptr<std::vector<std::function<void()>>> postRoutines;
    bool wasCached = false;
    bool locked = false; // a flag against notification, not a counter
    bool useLocale = false;
    mutable bool complete = false; // a latch: never cleared
};

} // namespace vo::data
