// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/qmlobjectlist_p.h>

#include <QtCore/QObject>

#include <functional>
#include <utility>

namespace vo::data {

/// The criteria of a filter, a sorter or a group, each once. It does not own them: one that is
/// destroyed leaves the list.
template <typename Criterion>
class CriterionList : public EditableObjectList<Criterion>
{
public:
    /// \p changed is called when the list is another one, \p updateRequired when one of its
    /// criteria has changed. Both may end in the destruction of \p owner and this list.
    CriterionList(QObject *owner, std::function<void()> changed,
                  std::function<void()> updateRequired)
        : m_owner(owner)
        , m_changed(std::move(changed))
        , m_updateRequired(std::move(updateRequired))
    { }

    [[nodiscard]] const QList<Criterion *> &objects() const override { return m_criteria; }

    void append(Criterion *criterion) override
    {
        if (!criterion || m_criteria.contains(criterion)) {
            return;
        }
        m_criteria.append(criterion);
        QObject::connect(criterion, &Criterion::updateRequired, m_owner, m_updateRequired);
        QObject::connect(criterion, &QObject::destroyed, m_owner, [this, criterion] {
            m_criteria.removeOne(criterion);
            tell();
        });
        tell();
    }

    void clear() override
    {
        if (m_criteria.isEmpty()) {
            return;
        }
        const QList<Criterion *> former = std::exchange(m_criteria, {});
        for (Criterion *criterion : former) {
            criterion->disconnect(m_owner);
        }
        tell();
    }

private:
    void tell()
    {
        const auto changed = m_changed; // which may destroy this
        changed();
    }

    QObject *const m_owner;
    const std::function<void()> m_changed;
    const std::function<void()> m_updateRequired;
    QList<Criterion *> m_criteria;
};

} // namespace vo::data
