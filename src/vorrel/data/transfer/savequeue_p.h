// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/transfer/savequeue.h>

#include <QtCore/QList>

#include <deque>

namespace vo::data {

class SaveTask;

struct SaveQueue::Private
{
    SaveTask *current = nullptr;    // being transferred; stays when it has failed
    QList<SaveTask *> tasks;        // children, in the order of their transfer
    std::deque<SaveTask *> pending; // not started yet
    bool success = false;
};

} // namespace vo::data
