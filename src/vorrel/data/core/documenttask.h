// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

namespace vo::data {

/// A piece of deferred work on documents. Context::addDocumentGraphTask() takes it over, runs it
/// in a later turn of the event loop and deletes it.
class VORREL_DATACORE_EXPORT DocumentTask
{
public:
    virtual ~DocumentTask() = default;
    virtual void run() = 0;
};

} // namespace vo::data
