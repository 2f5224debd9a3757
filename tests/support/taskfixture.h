// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/contextfixture.h"

#include <vorrel/data/core/documenttask.h>

namespace vo::test {

/// A Context with what its graph tasks did, and how many of them there are.
struct TaskFixture : ContextFixture
{
    class Task : public data::DocumentTask
    {
    public:
        Task(int *living, std::function<void()> function)
            : m_living(living)
            , m_function(std::move(function))
        {
            ++*m_living;
        }
        ~Task() override { --*m_living; }
        void run() override { m_function(); }

    private:
        int *const m_living;
        const std::function<void()> m_function;
    };

    /// A task that notes its name and calls \p function.
    void add(
        const char *name, const std::function<void()> &function = [] {})
    {
        context()->addDocumentGraphTask(std::make_unique<Task>(&living, [=] {
            log << QString::fromLatin1(name);
            function();
        }));
    }

    /// An event that notes that it came.
    void postEvent()
    {
        QMetaObject::invokeMethod(
            context(), [this] { log << QStringLiteral("event"); }, Qt::QueuedConnection);
    }

    QStringList log;
    int living = 0;
};

} // namespace vo::test
