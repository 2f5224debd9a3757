// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

namespace vo::data {

class Context;

/// Work that finishes later, in slices between events: handed to Context::incubate().
class VORREL_DATACORE_EXPORT IIncubatable
{
public:
    virtual ~IIncubatable() = default;

    /// Does one step. True asks for another call, false says that the work is done.
    virtual bool incubate(Context *context) = 0;

    /// Called once after the last incubate() of the sliced way, where an object may delete
    /// itself. A synchronous Context::finishIncubation() does not call it.
    virtual void finishIncubation() {}
};

} // namespace vo::data
