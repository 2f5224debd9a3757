// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// LinkedDocument: its files, as QML sees them.

#include <vorrel/data/core/linkeddocument.h>

#include <vorrel/data/properties/attachmentproperty.h>

namespace vo::data {

Attachment *LinkedDocument::attachment(const QString &property) const
{
    PropertyBase *value = propertyValue(property);
    return value && value->type() == PropertyBase::AttachmentFile
        ? static_cast<AttachmentProperty *>(value)->attachment()
        : nullptr;
}

QList<Attachment *> LinkedDocument::attachments() const
{
    QList<Attachment *> all;
    for (AttachmentProperty *property : attachmentProperties()) {
        all.append(property->attachment());
    }
    return all;
}

} // namespace vo::data
