// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

namespace vo::test {

/// Collects every log line between construction and destruction instead of printing it, so that
/// a test can say which lines came and how often. One at a time.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    Q_DISABLE_COPY_MOVE(LogCapture)

    /// All lines as "category|level|text", level one of debug, info, warning, critical.
    [[nodiscard]] QStringList lines() const;

    /// How many lines contain \p text.
    [[nodiscard]] int count(const QString &text) const;
    [[nodiscard]] bool contains(const QString &text) const { return count(text) > 0; }
    void clear();
};

} // namespace vo::test
