// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/loader.h>

#include <vorrel/data/context/context.h>

namespace vo::data {

Loader::Loader(int priority, Context *context)
    : QObject(context)
    , m_priority(priority)
{ }

Loader::~Loader() = default;

Context *Loader::context() const
{
    return static_cast<Context *>(parent());
}

} // namespace vo::data

#include "moc_loader.cpp"
