// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertymacros.h>

#include <QtPositioning/QGeoCoordinate>

namespace vo::data {

/// A place where devices stand: an address and a position on the map.
class VORREL_DATACORE_EXPORT Location : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Location)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "location")
    VO_PROPERTY(QString, address, setAddress)
    VO_PROPERTY(QString, city, setCity)
    VO_PROPERTY(QString, zipCode, setZipCode)
    VO_PROPERTY(QString, country, setCountry)
    VO_PROPERTY(QString, notes, setNotes)
    VO_PROPERTY(QGeoCoordinate, position, setPosition)

public:
    explicit Location(Context *context);
    ~Location() override;

    /// Trims the label and refuses an empty one.
    [[nodiscard]] QString sanitizeLabel(const QString &label, bool &accepted) const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
