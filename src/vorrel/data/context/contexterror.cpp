// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/context/contexterror.h>

namespace vo::data {

ContextError::ContextError(Severity severity, QObject *parent)
    : QObject(parent)
    , m_severity(severity)
{ }

ContextError::~ContextError() = default;

ContextError::Severity ContextError::severity() const
{
    return m_severity;
}

int ContextError::errorCode() const
{
    return 0;
}

QString ContextError::errorString() const
{
    return {};
}

} // namespace vo::data

#include "moc_contexterror.cpp"
