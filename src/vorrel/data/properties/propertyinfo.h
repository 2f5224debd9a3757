// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>

#include <tuple>
#include <unordered_map>

namespace vo::data {

class Document;

/// The Qt property behind a stored property: one record for each class and name, shared by all
/// documents of the class and kept until the process ends. Main thread only.
class VORREL_DATACORE_EXPORT PropertyInfo
{
public:
    PropertyInfo() = default;
    PropertyInfo(const QByteArray &name, const QMetaProperty &property);

    /// The record for \p name (at most 255 bytes of it) in the class that \p document is at this
    /// stage of its construction. For a name without Qt property it is a record that never
    /// notifies and is not stored. The reference stays valid.
    static PropertyInfo &get(const char *name, Document *document);

    [[nodiscard]] const QByteArray &name() const { return m_name; }

    /// The notify signal, invalid if there is none.
    [[nodiscard]] const QMetaMethod &signal() const { return m_signal; }
    [[nodiscard]] bool isReadOnly() const { return !m_property.isWritable(); }
    [[nodiscard]] bool isConstant() const { return m_property.isConstant(); }
    [[nodiscard]] bool isStored() const { return m_stored; }

    void emitChangeSignal(Document *document) const;

private:
    friend class TypeRegistry;

    using Key = std::tuple<const QMetaObject *, QByteArray>;
    struct KeyHash
    {
        std::size_t operator()(const Key &key) const;
    };

    /// Adds the properties of \p metaObject and of its base classes, as each class sees them: a
    /// constructor of a base class runs while the object is of that class.
    static void insert(const QMetaObject *metaObject);
    static PropertyInfo &find(const QByteArray &name, const QMetaObject *metaObject);

    // Nodes of this map stay where they are when it grows.
    static std::unordered_map<Key, PropertyInfo, KeyHash> InfoCache;

    QByteArray m_name;
    QMetaProperty m_property;
    QMetaMethod m_signal;
    bool m_stored = false;
};

} // namespace vo::data
