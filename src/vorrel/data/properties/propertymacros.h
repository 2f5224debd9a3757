// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

#include <type_traits>

/// \file
/// A property of a document class takes one line in each of three places: VO_PROPERTY inside the
/// class, a member of its Private record, and VO_DEFINE_PROPERTY in its source.
///
///     class Tag : public vo::data::LinkedDocument        // tag.h
///     {
///         Q_OBJECT
///         VO_PROPERTY(QString, name, setName)
///     public:
///         ...
///     private:
///         struct Private;
///         const std::unique_ptr<Private> d;
///     };
///
///     struct Tag::Private { Tag *const q; Property<QString> name { "name", q }; };   // tag.cpp
///     VO_DEFINE_PROPERTY(Tag, QString, name, setName)
///
/// The text given to the member is the name of the property in QML and its key in the stored JSON.
/// Write the label "public:" or "private:" after the last of these lines in a class: they leave it
/// in "public:". A type with a comma needs a "using" name. Pointer types are written with their
/// namespace.

/// A read-write Qt property: its declaration, the getter name(), the setter and nameChanged().
#define VO_PROPERTY(Type, name, setter)                                                            \
    Q_PROPERTY(Type name READ name WRITE setter NOTIFY name##Changed)                              \
public:                                                                                            \
    [[nodiscard]] Type name() const;                                                               \
    bool setter(const std::remove_const_t<Type> &value);                                           \
    Q_SIGNAL void name##Changed();

/// A property that only this class itself changes.
#define VO_READONLY_PROPERTY(Type, name)                                                           \
    Q_PROPERTY(Type name READ name NOTIFY name##Changed)                                           \
public:                                                                                            \
    [[nodiscard]] Type name() const;                                                               \
    Q_SIGNAL void name##Changed();

/// The getter and the setter of a VO_PROPERTY, through the member of the same name in Private.
#define VO_DEFINE_PROPERTY(Class, Type, name, setter)                                              \
    Type Class::name() const                                                                       \
    {                                                                                              \
        return d->name.get();                                                                      \
    }                                                                                              \
    bool Class::setter(const std::remove_const_t<Type> &value)                                     \
    {                                                                                              \
        return d->name.set(value);                                                                 \
    }

/// The getter of a VO_READONLY_PROPERTY.
#define VO_DEFINE_READONLY_PROPERTY(Class, Type, name)                                             \
    Type Class::name() const                                                                       \
    {                                                                                              \
        return d->name.get();                                                                      \
    }
