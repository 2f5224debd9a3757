// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/inlinedocumentproperty.h>

namespace vo::data {

class LangString;
class LangStringProperty;

/// The edit that puts another language text into a property.
class VORREL_DATACORE_EXPORT LangStringChange : public Change
{
public:
    LangStringChange(LangStringProperty *property, LangString *former, LangString *present);
    ~LangStringChange() override;

    void apply() override;
    void unapply() override;
    [[nodiscard]] bool isValid() const override;

private:
    void assign(const InlineDocumentHold &hold);

    LangStringProperty *const m_property;
    const InlineDocumentHold m_former;
    const InlineDocumentHold m_present;
};

/// A stored text in several languages, read and written in the language of the Context, or read in
/// that of the system locale if the document says so.
class VORREL_DATACORE_EXPORT LangStringProperty : public InlineDocumentPropertyBase
{
public:
    /// Line breaks in a text that is not \p multiline become blanks.
    LangStringProperty(const char *name, Document *document, bool multiline = false);

    /// Empty below ReadAccess.
    [[nodiscard]] QString get() const;

    /// An edit in the language of the Context, or in \p language. False below WriteAccess and for
    /// an equal text.
    bool set(const QString &text);
    bool set(const QString &text, const QString &language);

    /// Null if there is no text at all.
    [[nodiscard]] LangString *langString() const;

    /// An edit. False below WriteAccess, for the present one, for one of another Context and for
    /// one that another property holds.
    bool setLangString(LangString *langString);

    [[nodiscard]] int type() const override;
    void fromJson(const QJsonValue &json) override;
    [[nodiscard]] QJsonValue toJson() const override;
    [[nodiscard]] QList<Document *> referencedDocuments() const override;
    [[nodiscard]] QString documentType() const override;

protected:
    void exchanged(InlineDocument *former, InlineDocument *present) override;
    [[nodiscard]] bool accepts(const InlineDocument *document) const override;
    [[nodiscard]] std::unique_ptr<Change> makeChange(InlineDocument *former,
                                                     InlineDocument *present) override;

private:
    friend class LangStringChange;

    void fetch(const QString &id);

    const bool m_multiline;
    QString m_fetchedId; // of a document of its own, an old form, while it is being fetched
};

} // namespace vo::data
