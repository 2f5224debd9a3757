// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/typeregistry_p.h>

#include <vorrel/data/base/logging_p.h>
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

InlineDocument *TypeRegistry::createInline(const QString &type, Document *parent) const
{
    const InlineCreator creator = m_inlineDocumentCreators.value(type);
    return creator ? creator(parent) : nullptr;
}

// False for a class without a type string, which cannot be looked up.
bool TypeRegistry::addType(const QString &type, const QMetaObject &metaObject)
{
    PropertyInfo::insert(&metaObject);
    if (type.isEmpty()) {
        qCWarning(lcData,
                  "The document class %s has no type: it needs Q_CLASSINFO(\"DocumentType\", …)",
                  metaObject.className());
        return false;
    }
    const QMetaObject *former = m_documentTypes.value(type);
    if (former && former != &metaObject) {
        qCWarning(lcData, "The document type \"%s\" of %s now belongs to %s", qPrintable(type),
                  former->className(), metaObject.className());
    }
    m_documentTypes.insert(type, &metaObject);
    return true;
}

void TypeRegistry::addLinked(const QMetaObject &metaObject, const LinkedCreator &creator)
{
    const QString type = Document::typeOf(metaObject);
    if (!addType(type, metaObject)) {
        return;
    }
    m_linkedDocumentCreators.insert(type, creator);
    const QString autoInstance = classInfo(metaObject, "AutoInstance");
    if (!autoInstance.isEmpty()) {
        m_autoInstances.insert(autoInstance, type);
    }
}

void TypeRegistry::addInline(const QMetaObject &metaObject, const InlineCreator &creator)
{
    const QString type = Document::typeOf(metaObject);
    if (addType(type, metaObject)) {
        m_inlineDocumentCreators.insert(type, creator);
    }
}

void TypeRegistry::setFallback(const QMetaObject &metaObject, const FallbackCreator &creator)
{
    m_fallbackType = Document::typeOf(metaObject);
    addType(m_fallbackType, metaObject);
    m_fallbackCreator = creator;
}

} // namespace vo::data
