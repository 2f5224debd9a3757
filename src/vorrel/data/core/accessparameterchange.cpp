// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/accessparameterchange.h>

#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

AccessParameterChange::AccessParameterChange(AccessController *controller,
                                             const QJsonValue &oldParameters,
                                             const QJsonValue &newParameters)
    : Change(controller->document())
    , m_controller(controller)
    , m_oldParameters(oldParameters)
    , m_newParameters(newParameters)
{ }

AccessParameterChange::~AccessParameterChange() = default;

void AccessParameterChange::apply()
{
    assign(m_newParameters);
}

void AccessParameterChange::unapply()
{
    assign(m_oldParameters);
}

void AccessParameterChange::assign(const QJsonValue &parameters)
{
    if (document()) {
        m_controller->assign(parameters);
    }
}

int AccessParameterChange::type() const
{
    static const int number = createType();
    return number;
}

// An address may be used again after its document has gone, and keys may be equal by chance.
bool AccessParameterChange::canMergeWith(const Change *other) const
{
    if (!Change::canMergeWith(other) || other->type() != type()) {
        return false;
    }
    const auto *change = static_cast<const AccessParameterChange *>(other);
    return document() && change->document() == document();
}

void AccessParameterChange::mergeWith(const Change *other)
{
    m_newParameters = static_cast<const AccessParameterChange *>(other)->m_newParameters;
}

bool AccessParameterChange::isValid() const
{
    return document() != nullptr;
}

quint64 AccessParameterChange::uniqueKey() const
{
    return (quint64(quint32(type())) << 32) | foldedAddress(m_controller);
}

} // namespace vo::data
