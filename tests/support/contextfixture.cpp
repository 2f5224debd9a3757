// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"

#include "support/literals.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/loadqueue.h>
#include <vorrel/data/context/savefailure.h>
#include <vorrel/data/transfer/savequeue.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QJsonArray>
#include <QtCore/QTimerEvent>
#include <QtCore/QUuid>

#include <algorithm>

namespace vo::test {

namespace {

constexpr int madeByTick = 0; // no timer has this id

struct TickFilter : QObject
{
    TickFilter() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        return event->type() == QEvent::Timer
            && static_cast<QTimerEvent *>(event)->timerId() != madeByTick
            && qobject_cast<data::LoadQueue *>(receiver);
    }
};

} // namespace

QList<data::Document *> ownDocuments(QList<data::Document *> documents)
{
    const auto internal =
        std::remove_if(documents.begin(), documents.end(), [](data::Document *document) {
            return document->storageFlags().testFlag(data::Document::CreatedInternally);
        });
    documents.erase(internal, documents.end());
    return documents;
}

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
    m_context->setServiceUrl(QUrl("http://couch.test:5984"_s));
    m_context->setNetworkAccessManager(&m_couch);
    m_context->setChangeFeedMonitorType(data::Context::NullMonitor);
    m_context->setDatabase("test-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces));
}

ContextFixture::~ContextFixture()
{
    m_context.reset();
    Locations::setCacheLocation({});
}

void ContextFixture::store(const QString &id, const QStringList &references)
{
    m_couch.store({ { "_id"_s, id },
                    { "type"_s, "tag"_s },
                    { "references"_s, QJsonArray::fromStringList(references) } });
}

void ContextFixture::tick()
{
    if (m_context) {
        QTimerEvent event(madeByTick);
        QCoreApplication::sendEvent(m_context->loadQueue(), &event);
    }
    processEvents();
}

bool ContextFixture::finishLoading(int ticks)
{
    processEvents();
    while (m_context && m_context->loadQueue()->isLoading() && ticks-- > 0) {
        tick();
    }
    return !m_context || !m_context->loadQueue()->isLoading();
}

data::LinkedDocument *ContextFixture::load(const QString &id)
{
    m_context->loadDocument(id);
    return finishLoading() ? qobject_cast<data::LinkedDocument *>(m_context->loadedDocument(id))
                           : nullptr;
}

data::SaveQueue *ContextFixture::startSaving()
{
    m_couch.hold();
    m_context->createDocument("tag"_s);
    if (m_context) {
        m_context->saveLocalChanges();
    }
    return m_context ? m_context->saveQueue() : nullptr;
}

bool ContextFixture::finishSaving()
{
    const QPointer<data::SaveQueue> queue(m_context->saveQueue());
    m_couch.release();
    const QDeadlineTimer patience(30000);
    while (queue && m_context && m_context->saveQueue() == queue && !patience.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return m_context && m_context->saveFailures().isEmpty();
}

bool ContextFixture::save()
{
    m_context->saveLocalChanges();
    return finishSaving();
}

data::LinkedDocument *ContextFixture::create(const QString &id, const QString &revision)
{
    auto *document =
        qobject_cast<data::LinkedDocument *>(m_context->createDocumentWithId("tag"_s, id));
    if (document && !revision.isEmpty()) {
        document->markClean(revision, document->changeSequenceNumber(), {});
    }
    return document;
}

} // namespace vo::test
