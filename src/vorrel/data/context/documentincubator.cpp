// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/documentincubator.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/documentreferenceincubator_p.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>
#include <QtCore/QPointer>

namespace vo::data {

namespace {

constexpr int belowNormalEvents = -1;

/// Wakes the incubator for its next slice.
class DocumentIncubationEvent : public QEvent
{
public:
    DocumentIncubationEvent()
        : QEvent(number())
    { }

    static Type number()
    {
        static const auto registered = Type(registerEventType());
        return registered;
    }
};

} // namespace

DocumentIncubator::DocumentIncubator(Context *context)
    : QObject(context)
{ }

DocumentIncubator::~DocumentIncubator()
{
    while (!m_queue.empty()) {
        IIncubatable *object = m_queue.front();
        object->leave();
        if (auto *reference = dynamic_cast<DocumentReferenceIncubator *>(object)) {
            delete reference; // it belongs to nobody else
        }
    }
}

Context *DocumentIncubator::context() const
{
    return static_cast<Context *>(parent());
}

void DocumentIncubator::setIncubating(bool incubating)
{
    m_incubating = incubating;
    Q_EMIT incubatingChanged();
}

void DocumentIncubator::incubate(IIncubatable *object)
{
    object->enter(m_queue);
    if (!m_incubating) {
        QCoreApplication::postEvent(this, new DocumentIncubationEvent);
        setIncubating(true);
    }
}

// Gives the first object one turn. Returns it if it is done, and null if it wants more or has gone.
// While it is served it stands in a queue of its own, so that a synchronous round that it causes
// passes it over.
IIncubatable *DocumentIncubator::serveNext()
{
    const QPointer<DocumentIncubator> self(this);
    IncubationQueue served;
    IIncubatable *object = m_queue.front();
    object->leave();
    object->enter(served);
    const bool again = object->incubate(context());
    if (served.empty()) {
        return nullptr;
    }
    object->leave();
    if (!self) {
        return nullptr;
    }
    if (again) {
        object->enterFirst(m_queue);
        return nullptr;
    }
    return object;
}

void DocumentIncubator::customEvent(QEvent *event)
{
    if (event->type() != DocumentIncubationEvent::number()) {
        return;
    }
    const QPointer<DocumentIncubator> self(this);
    const TimeSlice slice(tuning::incubatorSlice);
    QElapsedTimer elapsed;
    elapsed.start();
    int count = 0;
    while (self && !m_queue.empty() && !slice.isOver()) {
        ++count;
        if (IIncubatable *done = serveNext()) {
            done->finishIncubation();
        }
    }
    if (!self) {
        return;
    }
    m_drained.clear();
    if (m_queue.empty()) {
        setIncubating(false);
    } else {
        QCoreApplication::postEvent(this, new DocumentIncubationEvent, belowNormalEvents);
    }
    qCDebug(lcIncubator) << "Incubated" << count << "documents in" << elapsed.elapsed() << "msecs";
}

void DocumentIncubator::finishIncubation()
{
    if (!m_incubating) {
        return;
    }
    const QPointer<DocumentIncubator> self(this);
    const IIncubatable *last = nullptr;
    int turns = 0;
    while (self && !m_queue.empty()) {
        turns = m_queue.front() == last ? turns + 1 : 0;
        last = m_queue.front();
        Q_ASSERT_X(turns < tuning::incubationTurnLimit, "finishIncubation", "there is no progress");
        if (auto *done = dynamic_cast<DocumentReferenceIncubator *>(serveNext())) {
            m_drained.emplace_back(done);
        }
    }
    if (self) {
        setIncubating(false);
    }
}

} // namespace vo::data

#include "moc_documentincubator.cpp"
