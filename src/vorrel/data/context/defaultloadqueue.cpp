// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/defaultloadqueue.h>

#include <vorrel/data/context/cacheloader.h>
#include <vorrel/data/context/couchdbloader.h>

namespace vo::data {

DefaultLoadQueue::DefaultLoadQueue(Context *context)
    : LoadQueue(context)
{
    addLoader(new CacheLoader(context));
    addLoader(new CouchDBLoader(context));
}

DefaultLoadQueue::~DefaultLoadQueue() = default;

} // namespace vo::data

#include "moc_defaultloadqueue.cpp"
