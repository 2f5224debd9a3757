// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemadatevariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/schema/schemavalueform_p.h>

namespace vo::data {

namespace {

const SchemaValueForm<QDate> &form()
{
    static const SchemaValueForm<QDate> form(QLatin1String("schemavalue:date"), jsonkeys::date);
    return form;
}

} // namespace

struct SchemaDateVariable::Private
{
    SchemaDateVariable *const q;
    Property<QDate> date { "date", q };
};

SchemaDateVariable::SchemaDateVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaDateVariable::dateChanged, this, &SchemaVariable::defaultValueChanged);
}

SchemaDateVariable::~SchemaDateVariable() = default;

VO_DEFINE_PROPERTY(SchemaDateVariable, QDate, date, setDate)

QVariant SchemaDateVariable::defaultValue() const
{
    return date();
}

QVariant SchemaDateVariable::fromJson(const QJsonObject &object) const
{
    return form().fromJson(*this, object);
}

QJsonObject SchemaDateVariable::toJson(const QVariant &value) const
{
    return form().toJson(value);
}

bool SchemaDateVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return form().equal(a, b);
}

QVariant SchemaDateVariable::sanitize(const QVariant &value) const
{
    return form().typed(value);
}

} // namespace vo::data

#include "moc_schemadatevariable.cpp"
