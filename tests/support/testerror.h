// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/contexterror.h>

#include <functional>

namespace vo::test {

/// An error whose attempts to be fixed are told to a function.
class TestError : public data::ContextError
{
public:
    explicit TestError(Severity severity = Blocking, const QString &text = {},
                       std::function<void(TestError *)> attempt = {})
        : ContextError(severity)
        , m_text(text)
        , m_attempt(std::move(attempt))
    { }

    [[nodiscard]] QString errorString() const override { return m_text; }
    void tryFix() override
    {
        if (m_attempt) {
            m_attempt(this);
        }
    }

private:
    const QString m_text;
    const std::function<void(TestError *)> m_attempt;
};

} // namespace vo::test
