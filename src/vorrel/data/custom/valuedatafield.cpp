// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/valuedatafield.h>

#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

ValueDataField::~ValueDataField() = default;

bool ValueDataField::compare(const QVariant &a, const QVariant &b) const
{
    return a.userType() == b.userType() && a == b;
}

QVariant ValueDataField::read(LinkedDocument *document, const QString &structId) const
{
    return document ? fromJson(document->getStructValue(structId, name())) : QVariant();
}

void ValueDataField::write(LinkedDocument *document, const QString &structId, const QVariant &value)
{
    if (document) {
        document->setStructValue(structId, name(), toJson(value));
    }
}

} // namespace vo::data

#include "moc_valuedatafield.cpp"
