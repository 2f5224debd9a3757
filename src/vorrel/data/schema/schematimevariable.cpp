// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schematimevariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/schema/schemavalueform_p.h>

namespace vo::data {

namespace {

const SchemaValueForm<QTime> &form()
{
    static const SchemaValueForm<QTime> form(QLatin1String("schemavalue:time"), jsonkeys::time);
    return form;
}

} // namespace

struct SchemaTimeVariable::Private
{
    SchemaTimeVariable *const q;
    Property<QTime> time { "time", q };
};

SchemaTimeVariable::SchemaTimeVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaTimeVariable::timeChanged, this, &SchemaVariable::defaultValueChanged);
}

SchemaTimeVariable::~SchemaTimeVariable() = default;

VO_DEFINE_PROPERTY(SchemaTimeVariable, QTime, time, setTime)

QVariant SchemaTimeVariable::defaultValue() const
{
    return time();
}

QVariant SchemaTimeVariable::fromJson(const QJsonObject &object) const
{
    return form().fromJson(*this, object);
}

QJsonObject SchemaTimeVariable::toJson(const QVariant &value) const
{
    return form().toJson(value);
}

bool SchemaTimeVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return form().equal(a, b);
}

QVariant SchemaTimeVariable::sanitize(const QVariant &value) const
{
    return form().typed(value);
}

} // namespace vo::data

#include "moc_schematimevariable.cpp"
