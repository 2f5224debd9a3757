// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/documentincubator.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/iincubatable.h>

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

DocumentIncubator::~DocumentIncubator() = default;

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
    m_queue.push_back(object);
    if (!m_incubating) {
        QCoreApplication::postEvent(this, new DocumentIncubationEvent);
        setIncubating(true);
    }
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
    while (!m_queue.empty() && !slice.isOver()) {
        IIncubatable *object = m_queue.front();
        const bool again = object->incubate(context());
        ++count;
        if (!self) {
            return;
        }
        // A synchronous round inside incubate() may have taken the object already.
        if (!again && !m_queue.empty() && m_queue.front() == object) {
            m_queue.pop_front();
            object->finishIncubation();
            if (!self) {
                return;
            }
        }
    }
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
    while (!m_queue.empty()) {
        IIncubatable *object = m_queue.front();
        const bool again = object->incubate(context());
        if (!self) {
            return;
        }
        if (!again && !m_queue.empty() && m_queue.front() == object) {
            m_queue.pop_front();
        }
    }
    setIncubating(false);
}

} // namespace vo::data

#include "moc_documentincubator.cpp"
