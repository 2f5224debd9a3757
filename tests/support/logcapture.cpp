// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/logcapture.h"

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

namespace vo::test {

namespace {

QMutex lock;
QStringList captured;
QtMessageHandler previous = nullptr;

const char *levelName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "debug";
    case QtInfoMsg:
        return "info";
    case QtWarningMsg:
        return "warning";
    case QtCriticalMsg:
        return "critical";
    case QtFatalMsg:
        break;
    }
    return "fatal";
}

void capture(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtFatalMsg) {
        previous(type, context, text);
        return;
    }
    const QMutexLocker locker(&lock);
    captured.append(QLatin1String(context.category ? context.category : "default")
                    + QLatin1Char('|') + QLatin1String(levelName(type)) + QLatin1Char('|') + text);
}

} // namespace

LogCapture::LogCapture()
{
    clear();
    previous = qInstallMessageHandler(capture);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(previous);
}

QStringList LogCapture::lines() const
{
    const QMutexLocker locker(&lock);
    return captured;
}

int LogCapture::count(const QString &text) const
{
    return int(lines().filter(text).size());
}

void LogCapture::clear()
{
    const QMutexLocker locker(&lock);
    captured.clear();
}

} // namespace vo::test
