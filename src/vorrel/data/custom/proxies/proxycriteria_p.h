// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/models/criterionlist_p.h>

#include <QtCore/QObject>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace vo::data {

/// The criteria of a proxy model, and the functions that they have made for its rows.
template <typename Criterion, typename Function>
class ProxyCriteria
{
public:
    using Functions = std::vector<Function>;

    /// \p changed is called when the list is another one, and \p update then and when one of the
    /// criteria has changed, but not from within a function.
    ProxyCriteria(QObject *owner, const std::function<void()> &changed,
                  std::function<void()> update)
        : m_owner(owner)
        , m_update(std::move(update))
        , m_criteria(
              owner,
              [this, changed] {
                  forget();
                  const QPointer<QObject> guard(m_owner);
                  changed();
                  if (guard) {
                      requestUpdate();
                  }
              },
              [this] {
                  forget();
                  requestUpdate();
              })
    { }

    QQmlListProperty<Criterion> property() { return m_criteria.property(m_owner); }

    /// Makes them anew when they are asked next.
    void forget() { m_functions.reset(); }

    /// What \p ask gives for the functions of those that count, each of which \p make makes. It may
    /// not destroy the model; whatever else happens meanwhile does not matter.
    template <typename Make, typename Ask>
    auto ask(Make make, Ask ask)
    {
        if (!m_functions) {
            auto functions = std::make_shared<Functions>();
            for (const Criterion *criterion : m_criteria.objects()) {
                if (criterion->enabled() && !criterion->skip()) {
                    functions->push_back(make(*criterion));
                }
            }
            m_functions = functions;
        }
        const std::shared_ptr<const Functions> functions = m_functions;
        const bool wasAsking = std::exchange(m_isAsking, true);
        const auto answer = ask(*functions);
        m_isAsking = wasAsking;
        return answer;
    }

private:
    void requestUpdate()
    {
        const auto update = m_update;
        if (m_isAsking) {
            QMetaObject::invokeMethod(m_owner, update, Qt::QueuedConnection);
        } else {
            update();
        }
    }

    QObject *const m_owner;
    const std::function<void()> m_update;
    CriterionList<Criterion> m_criteria;
    std::shared_ptr<const Functions> m_functions;
    bool m_isAsking = false;
};

} // namespace vo::data
