// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/testdocuments.h"

#include <vorrel/data/core/genericchange.h>
#include <vorrel/data/core/typeregistry_p.h>

#include <utility>

namespace vo::test {

using vo::data::Context;
using vo::data::Document;

void registerTestDocuments()
{
    auto &registry = vo::data::TypeRegistry::instance();
    registry.addLinked<ValueDocument>();
    registry.addLinked<LinkDocument>();
    registry.addLinked<PictureDocument>();
    registry.addLinked<PhotoDocument>();
    registry.addLinked<LonePhotoDocument>();
    registry.addLinked<PhotoLinkDocument>();
    registry.addLinked<PlainPhotoDocument>();
    registry.addLinked<RegisteredDataDocument>();
}

ValueDocument::ValueDocument(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

ValueDocument::~ValueDocument() = default;

VO_DEFINE_PROPERTY(ValueDocument, int, integer, setInteger)
VO_DEFINE_PROPERTY(ValueDocument, float, single, setSingle)
VO_DEFINE_PROPERTY(ValueDocument, double, real, setReal)
VO_DEFINE_PROPERTY(ValueDocument, qint64, large, setLarge)
VO_DEFINE_PROPERTY(ValueDocument, bool, flag, setFlag)
VO_DEFINE_PROPERTY(ValueDocument, QString, text, setText)
VO_DEFINE_PROPERTY(ValueDocument, QStringList, texts, setTexts)
VO_DEFINE_PROPERTY(ValueDocument, QUrl, url, setUrl)
VO_DEFINE_PROPERTY(ValueDocument, QColor, color, setColor)
VO_DEFINE_PROPERTY(ValueDocument, QDate, date, setDate)
VO_DEFINE_PROPERTY(ValueDocument, QTime, time, setTime)
VO_DEFINE_PROPERTY(ValueDocument, QDateTime, moment, setMoment)
VO_DEFINE_PROPERTY(ValueDocument, QSize, size, setSize)
VO_DEFINE_PROPERTY(ValueDocument, QJsonObject, object, setObject)
VO_DEFINE_PROPERTY(ValueDocument, QGeoCoordinate, place, setPlace)
VO_DEFINE_READONLY_PROPERTY(ValueDocument, QList<QColor>, palette)
VO_DEFINE_READONLY_PROPERTY(ValueDocument, QString, title)
VO_DEFINE_READONLY_PROPERTY(ValueDocument, QString, session)

QJsonObject ValueDocument::prices() const
{
    return d->prices.object();
}

void LinkProperty::set(Document *target)
{
    if (!canWrite() || target == m_target) {
        return;
    }
    apply(std::make_unique<vo::data::GenericChange>(
        d_(), [this, target = QPointer<Document>(target), old = m_target](bool forward) {
            const QPointer<Document> former = std::exchange(m_target, forward ? target : old);
            if ((!former || detach(former)) && (!m_target || attach(m_target))) {
                notifyAndMarkDirty();
            }
        }));
}

QJsonValue LinkProperty::toJson() const
{
    return m_target ? QJsonValue(m_target->documentId()) : QJsonValue();
}

void LinkProperty::aggregateReferences(QSet<QString> &ids) const
{
    if (m_target) {
        ids.insert(m_target->documentId());
    }
}

void LinkProperty::copy(PropertyBase *source)
{
    set(static_cast<LinkProperty *>(source)->m_target);
}

QList<Document *> LinkProperty::referencedDocuments() const
{
    return m_target ? QList<Document *> { m_target } : QList<Document *>();
}

void LinkProperty::removeDocument(Document *document)
{
    if (document == m_target) {
        set(nullptr);
    }
}

bool LinkProperty::canDelete() const
{
    return allowsDelete && DocumentPropertyBase::canDelete();
}

void LinkListProperty::clear()
{
    while (!m_elements.isEmpty() && detach(m_elements.takeFirst())) { }
}

QList<Document *> LinkListProperty::referencedDocuments() const
{
    return m_elements;
}

Document *LinkListProperty::at(int index) const
{
    return m_elements.value(index);
}

int LinkListProperty::indexOf(Document *document) const
{
    return int(m_elements.indexOf(document));
}

bool LinkListProperty::insert(Document *document, int index)
{
    m_elements.insert(index < 0 ? int(m_elements.size()) : index, document);
    return attach(document);
}

bool LinkListProperty::remove(Document *document)
{
    return m_elements.removeOne(document) && detach(document);
}

bool LinkListProperty::move(int from, int to)
{
    m_elements.move(from, to);
    return true;
}

LinkDocument::LinkDocument(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

LinkDocument::~LinkDocument() = default;

} // namespace vo::test
