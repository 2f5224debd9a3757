// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/device.h>

#include <vorrel/data/properties/linkeddocumentproperty.h>
#include <vorrel/data/properties/property.h>

#include <QtCore/QPointer>

namespace vo::data {

struct Device::Private
{
    Device *const q;
    Property<QString> serialNumber { "serialNumber", q };
    LinkedDocumentProperty<Location> location { "location", q };
};

Device::Device(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{
    connect(this, &Device::locationChanged, this, &Device::locationNameChanged);
}

Device::~Device() = default;

VO_DEFINE_READONLY_PROPERTY(Device, QString, serialNumber)
VO_DEFINE_PROPERTY(Device, vo::data::Location *, location, setLocation)

QString Device::locationName() const
{
    const Location *place = location();
    return place ? place->label() : QString();
}

// The name follows the location's label for as long as the device points there.

void Device::attachDocument(Document *document)
{
    connect(document, &Document::labelChanged, this, &Device::locationNameChanged,
            Qt::UniqueConnection);
    LinkedDocument::attachDocument(document);
}

void Device::detachDocument(Document *document)
{
    const QPointer<Device> self(this);
    const QPointer<Document> target(document);
    LinkedDocument::detachDocument(document);
    if (self && target && !attached().contains(document)) {
        disconnect(target, &Document::labelChanged, this, &Device::locationNameChanged);
    }
}

} // namespace vo::data

#include "moc_device.cpp"
