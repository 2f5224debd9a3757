// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QHash>
#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

namespace vo::data {

class Context;
class Document;
class InlineDocument;
class LinkedDocument;

/// Which class makes the documents of which type string. Filled once at registration, before the
/// first Context, on the main thread; process-wide.
class VORREL_DATACORE_EXPORT TypeRegistry
{
public:
    using LinkedCreator = std::function<LinkedDocument *(Context *)>;
    using InlineCreator = std::function<InlineDocument *(Document *parent)>;
    using FallbackCreator = std::function<LinkedDocument *(const QString &tail, Context *)>;

    static TypeRegistry &instance();

    /// Registers the class \a T under its type string; a class without one is left out. A later
    /// class replaces an earlier one of the same type string.
    template <typename T>
    void addLinked()
    {
        // Qt 5 cannot read a property of a pointer type that nobody registered.
        qRegisterMetaType<T *>();
        addLinked(T::staticMetaObject, [](Context *context) { return new T(context); });
    }

    /// The same for an inline class.
    template <typename T>
    void addInline()
    {
        qRegisterMetaType<T *>();
        addInline(T::staticMetaObject, [](Document *parent) { return new T(parent); });
    }

    /// Sets what makes documents of an unknown type below the type of \a T: a function that gets
    /// the rest of the type string behind it.
    template <typename T>
    void setFallback()
    {
        qRegisterMetaType<T *>();
        setFallback(T::staticMetaObject,
                    [](const QString &tail, Context *context) { return new T(tail, context); });
    }

    /// A new document of the class for \p type: the registered one, else the fallback if the rest
    /// of \p type is well-formed, else null. The document is not initialised yet.
    [[nodiscard]] LinkedDocument *create(const QString &type, Context *context) const;

    /// A new inline document of \p type, or null. It is not initialised yet.
    [[nodiscard]] InlineDocument *createInline(const QString &type, Document *parent) const;

    /// Id to type of the documents that every Context has from its start.
    [[nodiscard]] const QHash<QString, QString> &autoInstances() const { return m_autoInstances; }

    /// The class registered under \p type, or null.
    [[nodiscard]] const QMetaObject *documentType(const QString &type) const;

    /// All registered classes by their types; that of the fallback is one of them.
    [[nodiscard]] const QHash<QString, const QMetaObject *> &documentTypes() const
    {
        return m_documentTypes;
    }
    void addLinked(const QMetaObject &metaObject, const LinkedCreator &creator);
    void addInline(const QMetaObject &metaObject, const InlineCreator &creator);

private:
    TypeRegistry() = default;

    bool addType(const QString &type, const QMetaObject &metaObject);
    void setFallback(const QMetaObject &metaObject, const FallbackCreator &creator);

    QHash<QString, const QMetaObject *> m_documentTypes;
    QHash<QString, LinkedCreator> m_linkedDocumentCreators;
    QHash<QString, InlineCreator> m_inlineDocumentCreators;
    QHash<QString, QString> m_autoInstances;
    QString m_fallbackType;
    FallbackCreator m_fallbackCreator;
};

} // namespace vo::data
