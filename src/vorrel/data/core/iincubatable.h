// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QtGlobal>

#include <list>

namespace vo::data {

class Context;
class IIncubatable;

/// Where objects wait for their turns. An object that goes leaves it by itself.
using IncubationQueue = std::list<IIncubatable *>;

/// Work that finishes later, in slices between events: handed to Context::incubate(). Waits at one
/// place at most, and leaves it when it is destroyed.
class VORREL_DATACORE_EXPORT IIncubatable
{
public:
    IIncubatable();
    virtual ~IIncubatable();
    Q_DISABLE_COPY_MOVE(IIncubatable)

    /// Does one step. True asks for another call, false says that the work is done.
    virtual bool incubate(Context *context) = 0;

    /// Called once after the last incubate() of the sliced way, where an object may delete
    /// itself. A synchronous Context::finishIncubation() does not call it.
    virtual void finishIncubation();

    /// Whether the object waits for its turn.
    [[nodiscard]] bool isWaiting() const { return m_queue != nullptr; }

private:
    friend class DocumentIncubator;

    // Both do nothing while the object waits somewhere.
    void enter(IncubationQueue &queue);
    void enterFirst(IncubationQueue &queue);
    void leave();

    IncubationQueue *m_queue = nullptr;
    IncubationQueue::iterator m_place;
};

} // namespace vo::data
