// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/location.h>

#include <vorrel/data/properties/property.h>

namespace vo::data {

struct Location::Private
{
    Location *const q;
    Property<QString> address { "address", q };
    Property<QString> city { "city", q };
    Property<QString> zipCode { "zipCode", q };
    Property<QString> country { "country", q };
    Property<QString> notes { "notes", q };
    Property<QGeoCoordinate> position { "position", q };
};

Location::Location(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Location::~Location() = default;

VO_DEFINE_PROPERTY(Location, QString, address, setAddress)
VO_DEFINE_PROPERTY(Location, QString, city, setCity)
VO_DEFINE_PROPERTY(Location, QString, zipCode, setZipCode)
VO_DEFINE_PROPERTY(Location, QString, country, setCountry)
VO_DEFINE_PROPERTY(Location, QString, notes, setNotes)
VO_DEFINE_PROPERTY(Location, QGeoCoordinate, position, setPosition)

QString Location::sanitizeLabel(const QString &label, bool &accepted) const
{
    const QString trimmed = label.trimmed();
    accepted = !trimmed.isEmpty();
    return trimmed;
}

} // namespace vo::data

#include "moc_location.cpp"
