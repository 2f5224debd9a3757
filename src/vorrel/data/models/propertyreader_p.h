// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMetaProperty>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <utility>
#include <vector>

namespace vo::data {

/// Something that is found out once for each class of objects. For lists of objects of a few
/// classes, and for no longer than one run over them.
template <typename Fact>
class ClassFacts
{
public:
    /// \p find gives the fact for a class that was not met yet.
    template <typename Find>
    const Fact &of(const QObject *object, Find find)
    {
        const QMetaObject *metaObject = object->metaObject();
        for (const auto &[known, fact] : m_facts) {
            if (known == metaObject) {
                return fact;
            }
        }
        return m_facts.emplace_back(metaObject, find(metaObject)).second;
    }

private:
    std::vector<std::pair<const QMetaObject *, Fact>> m_facts;
};

/// Reads one property of many objects like QObject::property(), but looks for it once in a class.
class PropertyReader
{
public:
    explicit PropertyReader(const QString &name)
        : m_name(name.toLatin1())
    { }

    [[nodiscard]] const QByteArray &name() const { return m_name; }

    QVariant read(const QObject *object)
    {
        const QMetaProperty &property = metaProperty(object).property;
        return property.isValid() ? property.read(object) : object->property(m_name.constData());
    }

    /// The same as read(object).toString(), without a variant if the property is a text.
    QString readText(const QObject *object)
    {
        const Property &property = metaProperty(object);
        if (!property.isText) {
            return read(object).toString();
        }
        QString text;
        void *arguments[] = { &text, nullptr, nullptr };
        QMetaObject::metacall(const_cast<QObject *>(object), QMetaObject::ReadProperty,
                              property.index, arguments);
        return text;
    }

private:
    struct Property
    {
        QMetaProperty property; // invalid if the class has none of this name
        int index = -1;
        bool isText = false;
    };

    const Property &metaProperty(const QObject *object)
    {
        return m_properties.of(object, [this](const QMetaObject *metaObject) {
            const int index = metaObject->indexOfProperty(m_name.constData());
            const QMetaProperty property = metaObject->property(index);
            return Property { property, index,
                              property.isReadable() && property.userType() == QMetaType::QString };
        });
    }

    const QByteArray m_name;
    ClassFacts<Property> m_properties;
};

} // namespace vo::data
