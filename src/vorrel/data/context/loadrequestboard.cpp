// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/loadrequestboard_p.h>

#include <vorrel/data/base/timeslice_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/loadrequest.h>

namespace vo::data {

void LoadRequestBoard::add(LoadRequest *request, const QSet<QString> &ids)
{
    m_waiting.reserve(m_waiting.size() + ids.size());
    for (const QString &id : ids) {
        m_waiting.insert(id, request);
    }
}

void LoadRequestBoard::nodeAdded(const QString &id)
{
    if (m_waiting.contains(id)) {
        m_added.push_back(id);
        schedule();
    }
}

void LoadRequestBoard::notFound(const QString &id)
{
    tell(id, &LoadRequest::skipDocument);
}

void LoadRequestBoard::schedule()
{
    if (!m_scheduled) {
        m_scheduled = true;
        QMetaObject::invokeMethod(this, &LoadRequestBoard::runSlice, Qt::QueuedConnection);
    }
}

void LoadRequestBoard::runSlice()
{
    m_scheduled = false;
    const QPointer<LoadRequestBoard> self(this);
    const TimeSlice slice(tuning::batchSlice);
    while (!m_added.empty() && !slice.isOver()) {
        const QString id = std::move(m_added.front());
        m_added.pop_front();
        tell(id, &LoadRequest::newDocumentNode);
        if (!self) {
            return;
        }
    }
    if (!m_added.empty()) {
        schedule();
    }
}

void LoadRequestBoard::tell(const QString &id, Answer answer)
{
    const QList<QPointer<LoadRequest>> requests = m_waiting.values(id);
    m_waiting.remove(id);
    for (const QPointer<LoadRequest> &request : requests) {
        if (request) {
            (request->*answer)(id);
        }
    }
}

} // namespace vo::data

#include "moc_loadrequestboard_p.cpp"
