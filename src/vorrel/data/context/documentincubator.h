// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <vorrel/data/core/iincubatable.h>

#include <QtCore/QObject>

#include <memory>
#include <vector>

namespace vo::data {

class Context;

/// Gives objects that finish later their turns: 4 ms at a time, behind input and painting. Child of
/// the Context. Objects dispose of themselves, and may go while they wait.
class VORREL_DATACORE_EXPORT DocumentIncubator : public QObject
{
    Q_OBJECT
public:
    explicit DocumentIncubator(Context *context);
    ~DocumentIncubator() override;

    void incubate(IIncubatable *object);

    /// Finishes all that waits, now. Does not call IIncubatable::finishIncubation().
    void finishIncubation();

    [[nodiscard]] bool isIncubating() const { return m_incubating; }

    /// How many objects wait.
    [[nodiscard]] int waitingCount() const { return int(m_queue.size()); }

Q_SIGNALS:
    void incubatingChanged();

protected:
    void customEvent(QEvent *event) override;

private:
    [[nodiscard]] Context *context() const;
    void setIncubating(bool incubating);
    [[nodiscard]] IIncubatable *serveNext();

    IncubationQueue m_queue;

    // Reference incubators that a synchronous round has served: nothing tells them to go.
    std::vector<std::unique_ptr<IIncubatable>> m_drained;
    bool m_incubating = false;
};

} // namespace vo::data
