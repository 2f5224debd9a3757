// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/propertyinfo.h>

#include <vorrel/data/core/document.h>

#include <QtCore/QHash>

#include <cstring>

namespace vo::data {

namespace {

constexpr std::size_t maximumNameLength = 255;

/// All objects of a class construct their properties in the same order. So the records of a class
/// in that order answer nearly every look-up without hashing a name.
using Sequence = std::vector<PropertyInfo *>;

Sequence &sequenceOf(const QMetaObject *metaObject)
{
    static std::unordered_map<const QMetaObject *, Sequence> sequences;
    return sequences[metaObject];
}

} // namespace

std::unordered_map<PropertyInfo::Key, PropertyInfo, PropertyInfo::KeyHash> PropertyInfo::InfoCache;

std::size_t PropertyInfo::KeyHash::operator()(const Key &key) const
{
    return qHash(std::get<1>(key)) ^ std::hash<const QMetaObject *>()(std::get<0>(key));
}

PropertyInfo::PropertyInfo(const QByteArray &name, const QMetaProperty &property)
    : m_name(name)
    , m_property(property)
    , m_signal(property.notifySignal())
    , m_stored(property.isStored())
{ }

PropertyInfo &PropertyInfo::get(const char *name, Document *document)
{
    const QMetaObject *metaObject = document->metaObject();
    Sequence &sequence = sequenceOf(metaObject);
    const std::size_t position = document->properties().size();
    if (position < sequence.size() && sequence[position]
        && std::strcmp(sequence[position]->m_name.constData(), name) == 0) {
        return *sequence[position];
    }
    const std::size_t length = strnlen(name, maximumNameLength);
    PropertyInfo &info = find(QByteArray(name, int(length)), metaObject);
    if (position >= sequence.size()) {
        sequence.resize(position + 1);
    }
    sequence[position] = &info;
    return info;
}

PropertyInfo &PropertyInfo::find(const QByteArray &name, const QMetaObject *metaObject)
{
    const Key key { metaObject, name };
    auto entry = InfoCache.find(key);
    if (entry == InfoCache.end()) {
        // A class that nobody registered, or a name without a Qt property.
        insert(metaObject);
        entry = InfoCache.try_emplace(key, name, QMetaProperty()).first;
    }
    return entry->second;
}

void PropertyInfo::insert(const QMetaObject *metaObject)
{
    for (const QMetaObject *meta = metaObject; meta && meta != &QObject::staticMetaObject;
         meta = meta->superClass()) {
        // From the end, so that a class may declare a property of its base class anew.
        for (int index = meta->propertyCount() - 1; index >= 0; --index) {
            const QMetaProperty property = meta->property(index);
            const QByteArray name(property.name());
            InfoCache.try_emplace(Key { meta, name }, name, property);
        }
    }
}

void PropertyInfo::emitChangeSignal(Document *document) const
{
    if (m_signal.isValid()) {
        m_signal.invoke(document, Qt::DirectConnection);
    }
}

} // namespace vo::data
