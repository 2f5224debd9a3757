// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/loadqueue.h>

namespace vo::data {

/// The load queue of every Context unless it gets another one: the cache first, then the database.
class VORREL_DATACORE_EXPORT DefaultLoadQueue : public LoadQueue
{
    Q_OBJECT
public:
    explicit DefaultLoadQueue(Context *context);
    ~DefaultLoadQueue() override;
};

} // namespace vo::data
