// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/loadqueue.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtCore/QTimerEvent>
#include <QtCore/QUuid>

namespace vo::test {

namespace {

class TickFilter : public QObject
{
public:
    TickFilter() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        return event->type() == QEvent::Timer
            && static_cast<QTimerEvent *>(event)->timerId() != madeByTick
            && qobject_cast<data::LoadQueue *>(receiver);
    }

    static constexpr int madeByTick = 0; // no timer has this id
};

} // namespace

void processEvents()
{
    // An event that is posted while events are handled comes in the next turn.
    constexpr int turns = 20;
    for (int turn = 0; turn < turns; ++turn) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool tickTimer(QObject *receiver, std::chrono::milliseconds period)
{
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(receiver);
    for (const QAbstractEventDispatcher::TimerInfo &timer : timers) {
        if (timer.interval == period.count()) {
            QTimerEvent event(timer.timerId);
            QCoreApplication::sendEvent(receiver, &event);
            return true;
        }
    }
    return false;
}

void useUpTheSlice()
{
    const data::TimeSlice longest(data::tuning::graphTaskSlice + std::chrono::milliseconds(1));
    while (!longest.isOver()) { }
}

ContextFixture::ContextFixture(data::Context *context)
    : m_ticks(new TickFilter)
    , m_context(context ? context : new data::Context)
{
    Locations::setCacheLocation(m_cache.path());
    m_context->setServiceUrl(QUrl(QStringLiteral("http://couch.test:5984")));
    m_context->setNetworkAccessManager(&m_couch);
    m_context->setChangeFeedMonitorType(data::Context::NullMonitor);
    m_context->setDatabase(QStringLiteral("test-")
                           + QUuid::createUuid().toString(QUuid::WithoutBraces));
}

ContextFixture::~ContextFixture()
{
    m_context.reset();
    Locations::setCacheLocation(QString());
}

void ContextFixture::store(const QString &id, const QStringList &references)
{
    m_couch.store({ { QStringLiteral("_id"), id },
                    { QStringLiteral("type"), QStringLiteral("tag") },
                    { QStringLiteral("references"), QJsonArray::fromStringList(references) } });
}

void ContextFixture::tick()
{
    if (m_context) {
        QTimerEvent event(TickFilter::madeByTick);
        QCoreApplication::sendEvent(m_context->loadQueue(), &event);
    }
    processEvents();
}

bool ContextFixture::finishLoading(int ticks)
{
    processEvents();
    for (; m_context && m_context->loadQueue()->isLoading(); --ticks) {
        if (ticks == 0) {
            return false;
        }
        tick();
    }
    return true;
}

data::LinkedDocument *ContextFixture::load(const QString &id)
{
    m_context->loadDocument(id);
    return finishLoading() ? qobject_cast<data::LinkedDocument *>(m_context->loadedDocument(id))
                           : nullptr;
}

data::LinkedDocument *ContextFixture::create(const QString &id, const QString &revision)
{
    auto *document = qobject_cast<data::LinkedDocument *>(
        m_context->createDocumentWithId(QStringLiteral("tag"), id));
    if (document && !revision.isEmpty()) {
        document->markClean(revision, document->changeSequenceNumber(), {});
    }
    return document;
}

} // namespace vo::test
