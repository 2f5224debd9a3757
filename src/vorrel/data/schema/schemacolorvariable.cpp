// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemacolorvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/schema/schemavalueform_p.h>

namespace vo::data {

namespace {

const SchemaValueForm<QColor> &form()
{
    static const SchemaValueForm<QColor> form(QLatin1String("schemavalue:color"), jsonkeys::color);
    return form;
}

} // namespace

struct SchemaColorVariable::Private
{
    SchemaColorVariable *const q;
    Property<QColor> color { "color", q };
};

SchemaColorVariable::SchemaColorVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaColorVariable::colorChanged, this, &SchemaVariable::defaultValueChanged);
}

SchemaColorVariable::~SchemaColorVariable() = default;

VO_DEFINE_PROPERTY(SchemaColorVariable, QColor, color, setColor)

QVariant SchemaColorVariable::defaultValue() const
{
    return color();
}

QVariant SchemaColorVariable::fromJson(const QJsonObject &object) const
{
    return form().fromJson(*this, object);
}

QJsonObject SchemaColorVariable::toJson(const QVariant &value) const
{
    return form().toJson(value);
}

bool SchemaColorVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return form().equal(a, b);
}

QVariant SchemaColorVariable::sanitize(const QVariant &value) const
{
    return form().typed(value);
}

} // namespace vo::data

#include "moc_schemacolorvariable.cpp"
