// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/iincubatable.h>

namespace vo::data {

IIncubatable::IIncubatable() = default;

IIncubatable::~IIncubatable()
{
    leave();
}

void IIncubatable::finishIncubation() { }

void IIncubatable::enter(IncubationQueue &queue)
{
    if (!m_queue) {
        m_place = queue.insert(queue.end(), this);
        m_queue = &queue;
    }
}

void IIncubatable::enterFirst(IncubationQueue &queue)
{
    if (!m_queue) {
        m_place = queue.insert(queue.begin(), this);
        m_queue = &queue;
    }
}

void IIncubatable::leave()
{
    if (m_queue) {
        m_queue->erase(m_place);
        m_queue = nullptr;
    }
}

} // namespace vo::data
