// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

namespace vo::data {

class LinkedDocument;

/// Decides what happens when the database holds a newer revision of a document that is open.
/// Context::setUpdateHandler() takes it over.
class VORREL_DATACORE_EXPORT IUpdateHandler
{
public:
    virtual ~IUpdateHandler() = default;
    virtual void update(LinkedDocument *document) = 0;
};

} // namespace vo::data
