// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/literals.h"

#include <QtCore/QMutex>

#include <mutex>

namespace vo::test {

/// Collects every log line between construction and destruction instead of printing it, so that
/// a test can say which lines came and how often. One at a time.
class LogCapture
{
public:
    LogCapture() { s_previous = qInstallMessageHandler(capture); }
    ~LogCapture()
    {
        qInstallMessageHandler(s_previous);
        clear();
    }
    Q_DISABLE_COPY_MOVE(LogCapture)

    /// All lines as "category|level|text", level one of debug, info, warning, critical.
    [[nodiscard]] QStringList lines() const
    {
        const std::lock_guard<QMutex> locker(s_mutex);
        return s_lines;
    }

    /// How many lines contain \p text.
    [[nodiscard]] int count(const QString &text) const { return int(lines().filter(text).size()); }
    [[nodiscard]] bool contains(const QString &text) const { return count(text) > 0; }
    void clear()
    {
        const std::lock_guard<QMutex> locker(s_mutex);
        s_lines.clear();
    }

private:
    static void capture(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        const QStringList levels = "debug warning critical fatal info"_l;
        if (type == QtFatalMsg) {
            return s_previous(type, context, text);
        }
        const std::lock_guard<QMutex> locker(s_mutex);
        s_lines << "%1|%2|%3"_s.arg(QLatin1String(context.category), levels.at(type), text);
    }

    static inline QMutex s_mutex;
    static inline QStringList s_lines;
    static inline QtMessageHandler s_previous = nullptr;
};

} // namespace vo::test
