// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/change.h>

#include <QtCore/QJsonValue>

namespace vo::data {

class AccessController;

/// The edit of the access parameters of a document. Edits of one document merge.
class VORREL_DATACORE_EXPORT AccessParameterChange : public Change
{
public:
    AccessParameterChange(AccessController *controller, const QJsonValue &oldParameters,
                          const QJsonValue &newParameters);
    ~AccessParameterChange() override;

    void apply() override;
    void unapply() override;
    [[nodiscard]] int type() const override;
    [[nodiscard]] bool canMergeWith(const Change *other) const override;
    void mergeWith(const Change *other) override;
    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] quint64 uniqueKey() const override;

private:
    void assign(const QJsonValue &parameters);

    AccessController *const m_controller; // lives as long as the document
    const QJsonValue m_oldParameters;
    QJsonValue m_newParameters;
};

} // namespace vo::data
