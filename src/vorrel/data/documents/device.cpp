// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/device.h>

#include <vorrel/data/properties/property.h>
#include <vorrel/data/properties/propertymacros.h>

namespace vo::data {

struct Device::Private
{
    Device *const q;
    Property<QString> serialNumber { "serialNumber", q };
};

Device::Device(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{
}

Device::~Device() = default;

VO_DEFINE_READONLY_PROPERTY(Device, QString, serialNumber)

} // namespace vo::data

#include "moc_device.cpp"
