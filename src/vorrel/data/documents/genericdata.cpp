// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/genericdata.h>

namespace vo::data {

GenericData::GenericData(const QString &customType, Context *context)
    : LinkedDocument(context)
    , m_type(typeOf(staticMetaObject) + QLatin1Char(':') + customType)
{ }

GenericData::~GenericData() = default;

QString GenericData::type() const
{
    return m_type;
}

} // namespace vo::data

#include "moc_genericdata.cpp"
