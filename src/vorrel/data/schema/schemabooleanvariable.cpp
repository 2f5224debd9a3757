// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemabooleanvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/schema/schemavalueform_p.h>

namespace vo::data {

namespace {

const SchemaValueForm<bool> &form()
{
    static const SchemaValueForm<bool> form(QLatin1String("schemavalue:boolean"),
                                            jsonkeys::boolean);
    return form;
}

} // namespace

struct SchemaBooleanVariable::Private
{
    SchemaBooleanVariable *const q;
    Property<bool> boolean { "boolean", q };
};

SchemaBooleanVariable::SchemaBooleanVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaBooleanVariable::booleanChanged, this,
            &SchemaVariable::defaultValueChanged);
}

SchemaBooleanVariable::~SchemaBooleanVariable() = default;

VO_DEFINE_PROPERTY(SchemaBooleanVariable, bool, boolean, setBoolean)

QVariant SchemaBooleanVariable::defaultValue() const
{
    return boolean();
}

QVariant SchemaBooleanVariable::fromJson(const QJsonObject &object) const
{
    return form().fromJson(*this, object);
}

QJsonObject SchemaBooleanVariable::toJson(const QVariant &value) const
{
    return form().toJson(value);
}

bool SchemaBooleanVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return form().equal(a, b);
}

QVariant SchemaBooleanVariable::sanitize(const QVariant &value) const
{
    return form().typed(value);
}

} // namespace vo::data

#include "moc_schemabooleanvariable.cpp"
