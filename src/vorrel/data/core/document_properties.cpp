// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Document: its stored properties, and its JSON.

#include <vorrel/data/base/jsonkeys_p.h>
#include <vorrel/data/core/document_p.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/properties/documentlistpropertybase.h>
#include <vorrel/data/properties/langstring.h>
#include <vorrel/data/properties/langstringproperty.h>
#include <vorrel/data/properties/propertybase.h>

#include <QtCore/QPointer>

#include <algorithm>

namespace vo::data {

void Document::addProperty(PropertyBase *property)
{
    if (d->properties.capacity() == 0) {
        d->properties.reserve(16);
    }
    d->properties.push_back(property);
}

const std::vector<PropertyBase *> &Document::properties() const
{
    return d->properties;
}

PropertyBase *Document::propertyValue(const QString &name) const
{
    // Documents have a dozen properties or two: a walk is as fast as a hash, and needs none. From
    // the end, so that a class may take over a name of its base class.
    const QByteArray key = name.toLatin1();
    const auto found = std::find_if(d->properties.rbegin(), d->properties.rend(),
                                    [&](const PropertyBase *p) { return p->name() == key; });
    return found == d->properties.rend() ? nullptr : *found;
}

DocumentListPropertyBase *Document::listProperty(const QString &name) const
{
    PropertyBase *property = propertyValue(name);
    return property && property->type() == PropertyBase::DocumentList
        ? static_cast<DocumentListPropertyBase *>(property)
        : nullptr;
}

LangString *Document::langString(const QString &property) const
{
    const PropertyBase *value = propertyValue(property);
    return value && value->type() == PropertyBase::LanguageString && accessLevel() >= ReadAccess
        ? static_cast<const LangStringProperty *>(value)->langString()
        : nullptr;
}

bool Document::hasProperty(const QString &name) const
{
    return metaObject()->indexOfProperty(name.toLatin1().constData()) >= 0;
}

QList<AttachmentProperty *> Document::attachmentProperties() const
{
    QList<AttachmentProperty *> attachments;
    for (PropertyBase *property : d->properties) {
        if (property->type() == PropertyBase::AttachmentFile) {
            attachments.append(static_cast<AttachmentProperty *>(property));
        }
    }
    return attachments;
}

void Document::copyProperties(Document *source)
{
    lock();
    for (const PropertyBase *property : source->properties()) {
        copyProperty(QString::fromLatin1(property->name()), source);
    }
    unlock();
}

void Document::copyProperty(const QString &name, Document *source)
{
    PropertyBase *property = propertyValue(name);
    if (!property) {
        qFatal("Document has no property named: %s", qPrintable(name));
    }
    PropertyBase *sourceProperty = source->propertyValue(name);
    if (!sourceProperty) {
        qFatal("Error copying property named: %s", qPrintable(name));
    }
    property->copy(sourceProperty);
}

void Document::allPropertiesChanged()
{
    const QPointer<Document> self(this);
    // A copy: a slot may delete this document and its list with it.
    const std::vector<PropertyBase *> properties = d->properties;
    for (const PropertyBase *property : properties) {
        property->notify();
        if (!self) {
            return;
        }
    }
}

QJsonObject Document::serialize() const
{
    QJsonObject object { { jsonkeys::type, type() } };
    for (const PropertyBase *property : d->properties) {
        if (property->isStored()) {
            object.insert(QLatin1String(property->name()), property->toJson());
        }
    }
    return object;
}

void Document::assignData(const QJsonObject &object)
{
    const QPointer<Document> self(this);
    const QJsonObject entries = object.value(jsonkeys::attachments).toObject();
    QSet<QByteArray> attachments;
    const std::vector<PropertyBase *> properties = d->properties;
    for (PropertyBase *property : properties) {
        const QJsonValue value = object.value(QLatin1String(property->name()));
        if (property->type() == PropertyBase::AttachmentFile) {
            attachments.insert(static_cast<AttachmentProperty *>(property)->assign(value, entries));
        } else if (!value.isUndefined()) {
            property->fromJson(value);
        }
        if (!self) {
            return;
        }
    }
    attachments.remove({}); // of those without a file
    setCurrentAttachments(attachments);
}

// List properties by name

bool Document::addListElement(const QString &property, Document *document)
{
    return insertListElement(property, document, -1);
}

bool Document::insertListElement(const QString &property, Document *document, int index)
{
    DocumentListPropertyBase *list = listProperty(property);
    return list && list->insert(document, index);
}

bool Document::removeListElement(const QString &property, Document *document)
{
    DocumentListPropertyBase *list = listProperty(property);
    return list && list->remove(document);
}

bool Document::removeListIndex(const QString &property, int index)
{
    if (DocumentListPropertyBase *list = listProperty(property)) {
        if (Document *element = list->at(index)) {
            list->remove(element);
        }
    }
    return false; // also after a removal: callers must not rely on it
}

bool Document::moveListElement(const QString &property, int from, int to)
{
    DocumentListPropertyBase *list = listProperty(property);
    return list && list->move(from, to);
}

int Document::indexOfListElement(const QString &property, Document *document) const
{
    const DocumentListPropertyBase *list = listProperty(property);
    return list ? list->indexOf(document) : -1;
}

} // namespace vo::data
