// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemaurlvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/schema/schemavalueform_p.h>

namespace vo::data {

namespace {

const SchemaValueForm<QUrl> &form()
{
    static const SchemaValueForm<QUrl> form(QLatin1String("schemavalue:url"), jsonkeys::url);
    return form;
}

} // namespace

struct SchemaUrlVariable::Private
{
    SchemaUrlVariable *const q;
    Property<QUrl> url { "url", q };
};

SchemaUrlVariable::SchemaUrlVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaUrlVariable::urlChanged, this, &SchemaVariable::defaultValueChanged);
}

SchemaUrlVariable::~SchemaUrlVariable() = default;

VO_DEFINE_PROPERTY(SchemaUrlVariable, QUrl, url, setUrl)

QVariant SchemaUrlVariable::defaultValue() const
{
    return url();
}

QVariant SchemaUrlVariable::fromJson(const QJsonObject &object) const
{
    return form().fromJson(*this, object);
}

QJsonObject SchemaUrlVariable::toJson(const QVariant &value) const
{
    return form().toJson(value);
}

bool SchemaUrlVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    // Loaded values are addresses, edited ones are their texts.
    return a.isValid() == b.isValid() && a.toString() == b.toString();
}

QVariant SchemaUrlVariable::sanitize(const QVariant &value) const
{
    return value.toString();
}

} // namespace vo::data

#include "moc_schemaurlvariable.cpp"
