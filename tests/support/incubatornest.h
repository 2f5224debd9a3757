// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/contextfixture.h"

#include <vorrel/data/context/documentincubator.h>
#include <vorrel/data/core/iincubatable.h>

#include <QtTest/QSignalSpy>

#include <list>

namespace vo::test {

/// Something to incubate. It notes its name at each turn, and with a "!" when it is finished, and
/// asks for some more turns.
struct Egg : data::IIncubatable
{
    bool incubate(data::Context *) override
    {
        log->append(name);
        if (action) {
            action();
        }
        return turns-- > 0;
    }

    void finishIncubation() override
    {
        log->append(name + QLatin1Char('!'));
        end();
    }

    QString name;
    QStringList *log = nullptr;
    int turns = 0;
    std::function<void()> action;      // at each turn
    std::function<void()> end = [] {}; // when it is finished
};

/// A Context with what its incubator did.
struct IncubatorNest : ContextFixture
{
    /// Gives the incubator a new egg.
    Egg &lay(const char *name, int turns = 0)
    {
        Egg &egg = eggs.emplace_back();
        egg.name = QString::fromLatin1(name);
        egg.log = &log;
        egg.turns = turns;
        context()->incubate(&egg);
        return egg;
    }

    std::list<Egg> eggs;
    QStringList log;
    data::DocumentIncubator *incubator = context()->findChild<data::DocumentIncubator *>();
    QSignalSpy changes { incubator, &data::DocumentIncubator::incubatingChanged };
};

} // namespace vo::test
