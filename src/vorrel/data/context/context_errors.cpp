// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: its errors, the countdown to the next attempt to fix them, and their report.

#include <vorrel/data/base/clock_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/qmlobjectlist_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context_p.h>
#include <vorrel/data/context/contexterror.h>

#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

namespace {

using namespace std::chrono_literals;
using std::chrono::seconds;

qint64 secondsSinceEpoch()
{
    constexpr qint64 millisecondsPerSecond = 1000;
    return Clock::instance().currentMSecsSinceEpoch() / millisecondsPerSecond;
}

} // namespace

QList<ContextError *> Context::errors() const
{
    return d->errors;
}

QQmlListProperty<ContextError> Context::errorList()
{
    return ReadOnlyObjectList<ContextError>::property(
        this, [](QObject *owner) { return static_cast<Context *>(owner)->d->errors; });
}

ContextError *Context::primaryError() const
{
    return d->errors.value(0);
}

int Context::tryFixRemainingTime() const
{
    return int(d->tryFixRemainingTime.count());
}

void Context::addError(ContextError *error)
{
    if (!error || d->errors.contains(error)) {
        qCWarning(lcContext, "There is no error to add, or it was added before");
        return;
    }
    error->setParent(this);
    if (!d->closing) {
        connect(error, &ContextError::fixed, this, &Context::errorFixed, Qt::QueuedConnection);
        // Ours as it is, it may still be destroyed by others. Told later: a slot might end this
        // object, and with it the half destroyed error once more.
        connect(error, &QObject::destroyed, this, [this, error] {
            const bool wasPrimary = d->removeError(error);
            QMetaObject::invokeMethod(
                this, [this, wasPrimary] { d->announceErrors(wasPrimary); }, Qt::QueuedConnection);
        });
        d->insertError(error);
    }
}

void Context::Private::insertError(ContextError *error)
{
    // Behind all that are as bad: the older one comes first.
    const auto place =
        std::upper_bound(errors.begin(), errors.end(), error, [](const auto *a, const auto *b) {
            return a->severity() < b->severity();
        });
    const bool isPrimary = place == errors.begin();
    errors.insert(place, error);
    qCDebug(lcContext) << "Adding error" << error->errorCode() << "-" << error->errorString()
                       << errors.size() << "pending";
    if (errors.size() == 1) {
        errorsSince = QDateTime::fromMSecsSinceEpoch(Clock::instance().currentMSecsSinceEpoch());
    }
    delayErrorReport(tuning::errorReportDelay);
    if (retryTimerId == 0) {
        retryTimerId = q->startTimer(tuning::errorRetryTick, Qt::CoarseTimer);
        tryFixRemainingTime = tuning::errorRetryPeriod;
        lastRetryTick = Clock::instance().currentMSecsSinceEpoch();
    }
    announceErrors(isPrimary);
}

void Context::errorFixed()
{
    // Nobody if this is the second time: sender() knows connected objects only.
    const QPointer<ContextError> error(qobject_cast<ContextError *>(sender()));
    if (error) {
        error->disconnect(this);
        error->deleteLater();
        d->announceErrors(d->removeError(error));
    }
}

bool Context::Private::removeError(ContextError *error)
{
    const auto index = errors.indexOf(error);
    errors.removeAt(index);
    if (errors.isEmpty()) {
        q->killTimer(std::exchange(retryTimerId, 0));
    }
    delayErrorReport(tuning::errorReportDelayAfterFix);
    return index == 0;
}

void Context::Private::announceErrors(bool primaryChanged)
{
    const QPointer<Context> self(q);
    Q_EMIT q->errorsChanged();
    if (self && primaryChanged) {
        Q_EMIT q->primaryErrorChanged();
    }
}

void Context::tryFixErrors()
{
    const QPointer<Context> self(this);
    // An attempt may add errors, and end them.
    const QVector<QPointer<ContextError>> all(d->errors.cbegin(), d->errors.cend());
    for (const QPointer<ContextError> &error : all) {
        if (error) {
            error->tryFix();
        }
    }
    if (self) {
        Q_EMIT tryFixTriggered();
    }
}

void Context::Private::setTryFixRemainingTime(std::chrono::milliseconds time)
{
    tryFixRemainingTime = time;
    Q_EMIT q->tryFixRemainingTimeChanged(int(time.count()));
}

void Context::Private::retryErrors()
{
    const QPointer<Context> self(q);
    // By the wall clock, since ticks come late in a busy program. It may be set back.
    const qint64 now = Clock::instance().currentMSecsSinceEpoch();
    const qint64 elapsed = std::max<qint64>(now - std::exchange(lastRetryTick, now), 0);
    setTryFixRemainingTime(std::max(tryFixRemainingTime - std::chrono::milliseconds(elapsed), 0ms));
    if (self && tryFixRemainingTime == 0ms) {
        q->tryFixErrors();
        if (self) {
            setTryFixRemainingTime(tuning::errorRetryPeriod);
        }
    }
    if (self) {
        reportErrors();
    }
}

void Context::Private::delayErrorReport(seconds delay)
{
    nextErrorReport = secondsSinceEpoch() + delay.count();
    errorReportCount = 0;
}

void Context::Private::reportErrors()
{
    if (errors.isEmpty() || nextErrorReport > secondsSinceEpoch()) {
        return;
    }
    qCCritical(lcContext).noquote() << "Context is blocked by" << errors.size()
                                    << "pending errors since" << errorsSince.toString(Qt::ISODate);
    for (const ContextError *error : std::as_const(errors)) {
        qCCritical(lcContext).noquote() << error->errorString();
    }
    ++errorReportCount;
    nextErrorReport = secondsSinceEpoch()
        + std::min(errorReportCount * tuning::errorReportStep, tuning::errorReportLimit).count();
}

} // namespace vo::data
