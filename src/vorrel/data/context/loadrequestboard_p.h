// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <deque>

namespace vo::data {

class LoadRequest;

/// Tells load requests of the documents that they wait for: each of its own ids only, so that many
/// requests do not listen to every document. Child of the Context.
class LoadRequestBoard : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    void add(LoadRequest *request, const QSet<QString> &ids);

    /// Wakes the requests for \p id in a later turn, some milliseconds of them at a time.
    void nodeAdded(const QString &id);

    /// Tells the requests for \p id at once.
    void notFound(const QString &id);

private:
    using Answer = void (LoadRequest::*)(const QString &);

    void schedule();
    void runSlice();
    void tell(const QString &id, Answer answer);

    QMultiHash<QString, QPointer<LoadRequest>> m_waiting;
    std::deque<QString> m_added;
    bool m_scheduled = false;
};

} // namespace vo::data
