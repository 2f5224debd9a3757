// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemarealvariable.h>

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/schema/boundedproperty_p.h>
#include <vorrel/data/schema/schemavalueform_p.h>

#include <cmath>
#include <limits>

namespace vo::data {

namespace {

const SchemaValueForm<double> &form()
{
    static const SchemaValueForm<double> form(QLatin1String("schemavalue:real"), jsonkeys::real);
    return form;
}

constexpr double lowest = std::numeric_limits<double>::lowest();
constexpr double highest = std::numeric_limits<double>::max();
constexpr int usualDecimals = 2;

double toReal(const QVariant &value)
{
    const double number = value.toDouble(); // 0 if that fails
    return std::isnan(number) ? 0 : number;
}

} // namespace

struct SchemaRealVariable::Private
{
    SchemaRealVariable *const q;
    BoundedProperty<double> number { "real", lowest, highest, q };
    Property<QString> unit { "unit", q };
    Property<int> decimals { "decimals", usualDecimals, q };
};

SchemaRealVariable::SchemaRealVariable(Document *parent)
    : SchemaVariable(parent)
    , d(new Private { this })
{
    connect(this, &SchemaRealVariable::realChanged, this, &SchemaVariable::defaultValueChanged);
}

SchemaRealVariable::~SchemaRealVariable() = default;

VO_DEFINE_PROPERTY(SchemaRealVariable, QString, unit, setUnit)
VO_DEFINE_PROPERTY(SchemaRealVariable, int, decimals, setDecimals)

double SchemaRealVariable::real() const
{
    return d->number.value.get();
}

bool SchemaRealVariable::setReal(const double &value)
{
    return d->number.setValue(value);
}

double SchemaRealVariable::minimum() const
{
    return d->number.minimum.get();
}

bool SchemaRealVariable::setMinimum(const double &value)
{
    return d->number.setMinimum(value);
}

double SchemaRealVariable::maximum() const
{
    return d->number.maximum.get();
}

bool SchemaRealVariable::setMaximum(const double &value)
{
    return d->number.setMaximum(value);
}

void SchemaRealVariable::resetMinimum()
{
    setMinimum(lowest);
}

void SchemaRealVariable::resetMaximum()
{
    setMaximum(highest);
}

bool SchemaRealVariable::isMinimum(double value) const
{
    return vo::data::valuesEqual(value, minimum());
}

bool SchemaRealVariable::isMaximum(double value) const
{
    return vo::data::valuesEqual(value, maximum());
}

QVariant SchemaRealVariable::defaultValue() const
{
    return real();
}

QVariant SchemaRealVariable::fromJson(const QJsonObject &object) const
{
    return form().fromJson(*this, object);
}

QJsonObject SchemaRealVariable::toJson(const QVariant &value) const
{
    return form().toJson(value);
}

bool SchemaRealVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return form().equal(a, b);
}

QVariant SchemaRealVariable::sanitize(const QVariant &value) const
{
    return d->number.bounded(toReal(value));
}

} // namespace vo::data

#include "moc_schemarealvariable.cpp"
