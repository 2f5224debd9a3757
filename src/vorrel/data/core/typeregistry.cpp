// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/typeregistry_p.h>

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertyinfo.h>

#include <QtCore/QRegularExpression>

namespace vo::data {

namespace {

QString classInfo(const QMetaObject &metaObject, const char *key)
{
    const int index = metaObject.indexOfClassInfo(key);
    return index < 0 ? QString() : QString::fromUtf8(metaObject.classInfo(index).value());
}

/// Whether \p tail is a well-formed custom type. Type strings come from the database, so this is
/// anchored at both ends and bounded.
bool isCustomType(const QString &tail)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A[a-z][a-z0-9]+(?:\\:[a-z][a-z0-9]+)*\\z"));
    return tail.size() <= tuning::maximumTypeLength && pattern.match(tail).hasMatch();
}

} // namespace

TypeRegistry &TypeRegistry::instance()
{
    static TypeRegistry registry;
    return registry;
}

LinkedDocument *TypeRegistry::create(const QString &type, Context *context) const
{
    if (const LinkedCreator creator = m_linkedDocumentCreators.value(type)) {
        return creator(context);
    }
    if (!m_fallbackCreator || !Document::isBaseType(m_fallbackType, type)) {
        return nullptr;
    }
    const QString tail = type.mid(m_fallbackType.size() + 1);
    return isCustomType(tail) ? m_fallbackCreator(tail, context) : nullptr;
}

const QMetaObject *TypeRegistry::documentType(const QString &type) const
{
    return m_documentTypes.value(type);
}

void TypeRegistry::addLinked(const QMetaObject &metaObject, LinkedCreator creator)
{
    PropertyInfo::insert(&metaObject);
    const QString type = Document::typeOf(metaObject);
    if (type.isEmpty()) {
        return;
    }
    m_documentTypes.insert(type, &metaObject);
    m_linkedDocumentCreators.insert(type, std::move(creator));
    const QString autoInstance = classInfo(metaObject, "AutoInstance");
    if (!autoInstance.isEmpty()) {
        m_autoInstances.insert(autoInstance, type);
    }
}

void TypeRegistry::setFallback(const QMetaObject &metaObject, FallbackCreator creator)
{
    PropertyInfo::insert(&metaObject);
    m_fallbackType = Document::typeOf(metaObject);
    m_documentTypes.insert(m_fallbackType, &metaObject);
    m_fallbackCreator = std::move(creator);
}

} // namespace vo::data
