// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/langstringproperty.h>

#include <vorrel/data/base/singleline_p.h>
#include <vorrel/data/core/documentstore_p.h>
#include <vorrel/data/properties/langstring.h>

#include <vorrel/core/couchurl.h>
#include <vorrel/core/getrequest.h>

namespace vo::data {

// The change

LangStringChange::LangStringChange(LangStringProperty *property, LangString *former,
                                   LangString *present)
    : Change(property->ownerDocument())
    , m_property(property)
    , m_former(former)
    , m_present(present)
{ }

LangStringChange::~LangStringChange() = default;

void LangStringChange::apply()
{
    assign(m_present);
}

void LangStringChange::unapply()
{
    assign(m_former);
}

bool LangStringChange::isValid() const
{
    return document() != nullptr;
}

void LangStringChange::assign(const InlineDocumentHold &hold)
{
    const QPointer<Document> guard(document());
    if (guard && &hold == &m_present && !hold.document()) {
        m_property->m_fetchedId.clear(); // it is gone for good
    }
    if (guard && m_property->assign(hold.document()) && guard) {
        guard->markDirty();
    }
}

// The property

LangStringProperty::LangStringProperty(const char *name, Document *document, bool multiline)
    : InlineDocumentPropertyBase(name, document)
    , m_multiline(multiline)
{ }

int LangStringProperty::type() const
{
    return LanguageString;
}

LangString *LangStringProperty::langString() const
{
    return static_cast<LangString *>(held());
}

QString LangStringProperty::get() const
{
    const LangString *texts = langString();
    if (!texts || !canRead()) {
        return {};
    }
    return d_()->useLocale() ? texts->localeText() : texts->text(d_()->language());
}

bool LangStringProperty::set(const QString &text)
{
    return set(text, d_()->language());
}

bool LangStringProperty::set(const QString &text, const QString &language)
{
    if (!canWrite()) {
        return false;
    }
    const QString line = m_multiline ? text : singleLine(text);
    const QPointer<Document> guard(d_());
    if (!langString()) {
        setHeld(InlineDocument::create(documentType(), d_()));
    }
    return guard && langString() && langString()->setText(line, language);
}

bool LangStringProperty::setLangString(LangString *langString)
{
    return setHeld(langString);
}

void LangStringProperty::exchanged(InlineDocument *former, InlineDocument *present)
{
    const QMetaMethod items = QMetaMethod::fromSignal(&LangString::itemsChanged);
    if (!signal().isValid()) {
        return;
    }
    if (former) {
        QObject::disconnect(former, items, d_(), signal());
    }
    if (present) {
        QObject::connect(present, items, d_(), signal());
    }
}

bool LangStringProperty::accepts(const InlineDocument *document) const
{
    return qobject_cast<const LangString *>(document) != nullptr;
}

std::unique_ptr<Change> LangStringProperty::makeChange(InlineDocument *former,
                                                       InlineDocument *present)
{
    return std::make_unique<LangStringChange>(this, static_cast<LangString *>(former),
                                              static_cast<LangString *>(present));
}

QString LangStringProperty::documentType() const
{
    return Document::typeOf(LangString::staticMetaObject);
}

QList<Document *> LangStringProperty::referencedDocuments() const
{
    return {};
}

// Stored data

void LangStringProperty::fromJson(const QJsonValue &json)
{
    m_fetchedId.clear();
    if (json.isString() && !json.toString().isEmpty()) {
        fetch(json.toString());
    } else {
        InlineDocumentPropertyBase::fromJson(json);
    }
}

QJsonValue LangStringProperty::toJson() const
{
    return m_fetchedId.isEmpty() || langString() ? InlineDocumentPropertyBase::toJson()
                                                 : QJsonValue(m_fetchedId);
}

// Old documents name a document of its own here instead of holding the texts.
void LangStringProperty::fetch(const QString &id)
{
    m_fetchedId = id;
    DocumentStore &from = store();
    auto *request = new GetRequest(
        QNetworkRequest(CouchUrl::documentUrl(from.serviceUrl(), from.database(), id)),
        from.networkManager(), d_());
    QObject::connect(request, &Request::finished, d_(), [this, request, id] {
        // An edit or other data may have come first.
        if (m_fetchedId != id || langString() || !request->isOk(200)) {
            return;
        }
        const QPointer<Document> guard(d_());
        InlineDocumentPropertyBase::fromJson(request->responseObject(nullptr));
        if (guard && langString()) {
            m_fetchedId.clear();
            guard->markDirty();
        }
    });
}

} // namespace vo::data
