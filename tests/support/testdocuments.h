// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/documentlistpropertybase.h>
#include <vorrel/data/properties/listproperty.h>
#include <vorrel/data/properties/mapproperty.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/properties/propertymacros.h>
#include <vorrel/data/properties/uistringproperty.h>

namespace vo::test {

/// Registers the classes of this header. Before the first Context, as an application does it.
void registerTestDocuments();

/// A property of each plain kind, as an application would declare them. Its private record is
/// open, so that tests reach the properties themselves.
class ValueDocument : public vo::data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "values")
    VO_PROPERTY(int, integer, setInteger)
    VO_PROPERTY(float, single, setSingle)
    VO_PROPERTY(double, real, setReal)
    VO_PROPERTY(qint64, large, setLarge)
    VO_PROPERTY(bool, flag, setFlag)
    VO_PROPERTY(QString, text, setText)
    VO_PROPERTY(QStringList, texts, setTexts)
    VO_PROPERTY(QUrl, url, setUrl)
    VO_PROPERTY(QColor, color, setColor)
    VO_PROPERTY(QDate, date, setDate)
    VO_PROPERTY(QTime, time, setTime)
    VO_PROPERTY(QDateTime, moment, setMoment)
    VO_PROPERTY(QSize, size, setSize)
    VO_PROPERTY(QJsonObject, object, setObject)
    VO_PROPERTY(QGeoCoordinate, place, setPlace)
    VO_READONLY_PROPERTY(QList<QColor>, palette)
    VO_READONLY_PROPERTY(QString, title)
    Q_PROPERTY(QJsonObject prices READ prices NOTIFY pricesChanged)
    Q_PROPERTY(QString session READ session NOTIFY textChanged STORED false)

public:
    explicit ValueDocument(vo::data::Context *context);
    ~ValueDocument() override;

    [[nodiscard]] QJsonObject prices() const;
    [[nodiscard]] QString session() const;

    struct Private;
    const std::unique_ptr<Private> d;

Q_SIGNALS:
    void pricesChanged();
};

struct ValueDocument::Private
{
    template <typename T>
    using Property = vo::data::Property<T>;

    ValueDocument *const q;
    Property<int> integer { "integer", 7, q };
    Property<float> single { "single", q };
    Property<double> real { "real", q };
    Property<qint64> large { "large", q };
    Property<bool> flag { "flag", q };
    Property<QString> text { "text", q };
    Property<QStringList> texts { "texts", q };
    Property<QUrl> url { "url", q };
    Property<QColor> color { "color", q };
    Property<QDate> date { "date", q };
    Property<QTime> time { "time", q };
    Property<QDateTime> moment { "moment", q };
    Property<QSize> size { "size", q };
    Property<QJsonObject> object { "object", q };
    Property<QGeoCoordinate> place { "place", q };
    vo::data::ListProperty<QColor> palette { "palette", q };
    vo::data::MapProperty<double> prices { "prices", q };
    vo::data::UiStringProperty title { "title", q };
    Property<QString> session { "session", q };
    Property<QString> nameless { "nameless", q }; // there is no Qt property of this name
};

/// Points at one document. It does not read JSON: tests set its target.
class LinkProperty : public vo::data::DocumentPropertyBase
{
public:
    using DocumentPropertyBase::DocumentPropertyBase;

    bool complete = true;
    bool allowsDelete = true;

    void set(vo::data::Document *target);

    [[nodiscard]] int type() const override { return SingleDocument; }
    void fromJson(const QJsonValue & /*json*/) override { }
    [[nodiscard]] QJsonValue toJson() const override;
    void aggregateReferences(QSet<QString> &ids) const override;
    void copy(PropertyBase *source) override;
    void clear() override { set(nullptr); }
    [[nodiscard]] QString documentType() const override { return {}; }
    [[nodiscard]] bool isComplete() const override { return complete; }
    [[nodiscard]] QList<vo::data::Document *> referencedDocuments() const override;
    void removeDocument(vo::data::Document *document) override;
    [[nodiscard]] bool canDelete() const override;

private:
    QPointer<vo::data::Document> m_target;
};

/// An ordered list of documents, in memory only.
class LinkListProperty : public vo::data::DocumentListPropertyBase
{
public:
    using DocumentListPropertyBase::DocumentListPropertyBase;

    void fromJson(const QJsonValue & /*json*/) override { }
    [[nodiscard]] QJsonValue toJson() const override { return QJsonValue::Null; }
    void copy(PropertyBase * /*source*/) override { }
    void clear() override;
    [[nodiscard]] QString documentType() const override { return {}; }
    [[nodiscard]] bool isComplete() const override { return true; }
    [[nodiscard]] QList<vo::data::Document *> referencedDocuments() const override;
    void removeDocument(vo::data::Document *document) override { remove(document); }

    [[nodiscard]] vo::data::Document *at(int index) const override;
    [[nodiscard]] int indexOf(vo::data::Document *document) const override;
    bool insert(vo::data::Document *document, int index) override;
    bool remove(vo::data::Document *document) override;
    bool move(int from, int to) override;

private:
    QList<vo::data::Document *> m_elements;
};

/// A document that points at others.
class LinkDocument : public vo::data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "link")
    Q_PROPERTY(QString target READ label NOTIFY targetChanged)
    Q_PROPERTY(QString elements READ label NOTIFY elementsChanged)

public:
    explicit LinkDocument(vo::data::Context *context);
    ~LinkDocument() override;

    struct Private;
    const std::unique_ptr<Private> d;

    using LinkedDocument::copyProperty;

Q_SIGNALS:
    void targetChanged();
    void elementsChanged();
};

struct LinkDocument::Private
{
    LinkDocument *const q;
    LinkProperty target { "target", q };
    LinkListProperty elements { "elements", q };
};

// Classes that have nothing but their type.

class PictureDocument : public vo::data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "picture")
public:
    using LinkedDocument::LinkedDocument;
};

class PhotoDocument : public PictureDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "photo")
public:
    using PictureDocument::PictureDocument;
};

/// Without a segment of its own.
class ScannedPhotoDocument : public PhotoDocument
{
    Q_OBJECT
public:
    using PhotoDocument::PhotoDocument;
};

class LonePhotoDocument : public PhotoDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "alone")
    Q_CLASSINFO("InheritType", "false")
public:
    using PhotoDocument::PhotoDocument;
};

/// The segment "photo" once more, at another place.
class PhotoLinkDocument : public LinkDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "photo")
public:
    using LinkDocument::LinkDocument;
};

class PlainPhotoDocument : public vo::data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "photo")
public:
    using LinkedDocument::LinkedDocument;
};

/// Its type lies below that of generic documents.
class RegisteredDataDocument : public vo::data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "data:registered")
public:
    using LinkedDocument::LinkedDocument;
};

} // namespace vo::test
