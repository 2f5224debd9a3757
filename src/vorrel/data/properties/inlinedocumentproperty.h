// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/core/change.h>
#include <vorrel/data/properties/documentpropertybase.h>
#include <vorrel/data/properties/typeddocumentproperty.h>

namespace vo::data {

/// What InlineDocumentProperty does for all classes of documents.
class VORREL_DATACORE_EXPORT InlineDocumentPropertyBase : public DocumentPropertyBase
{
public:
    using Target = InlineDocument;

    using DocumentPropertyBase::DocumentPropertyBase;
    ~InlineDocumentPropertyBase() override;

    [[nodiscard]] int type() const override;
    void fromJson(const QJsonValue &json) override;
    [[nodiscard]] QJsonValue toJson() const override;
    void aggregateReferences(QSet<QString> &ids) const override;
    void copy(PropertyBase *source) override;
    void clear() override;
    [[nodiscard]] bool isComplete() const override;
    [[nodiscard]] QList<Document *> referencedDocuments() const override;
    void removeDocument(Document *document) override;

protected:
    [[nodiscard]] InlineDocument *held() const { return m_current; }
    bool setHeld(InlineDocument *document);

    /// The held document, or else a new one, which nobody is told of: it is no edit, and whoever
    /// reads the property, perhaps a binding, must not be told inside the read. As long as it is as
    /// new, null is stored. Null if the document of this property is deleted.
    [[nodiscard]] InlineDocument *heldOrNew();

    /// Takes \p document without recording it. False when nothing changes, or when a slot
    /// destroyed the document of this property.
    bool assign(InlineDocument *document);

    /// The document itself is in place, and its signals are connected.
    virtual void exchanged(InlineDocument *former, InlineDocument *present);
    [[nodiscard]] virtual bool accepts(const Target *document) const = 0;
    [[nodiscard]] virtual std::unique_ptr<Change> makeChange(InlineDocument *former,
                                                             InlineDocument *present);

private:
    QPointer<InlineDocument> m_current;
    QJsonObject m_blank; // of a document that was made for a reader
};

/// A stored field that holds one inline document of class \a T, or none.
template <typename T>
class InlineDocumentProperty : public TypedDocumentProperty<T, InlineDocumentPropertyBase>
{
public:
    using TypedDocumentProperty<T, InlineDocumentPropertyBase>::TypedDocumentProperty;

    /// Null below ReadAccess.
    [[nodiscard]] T *get() const
    {
        return this->canRead() ? static_cast<T *>(this->held()) : nullptr;
    }

    /// For a property that is never null: makes a document if there is none. Null below ReadAccess
    /// and in a deleted document.
    [[nodiscard]] T *getOrCreate()
    {
        return this->canRead() ? static_cast<T *>(this->heldOrNew()) : nullptr;
    }

    /// An edit. False below WriteAccess, for the present document, and for one of another Context
    /// or held elsewhere.
    bool set(T *document) { return this->setHeld(document); }
};

} // namespace vo::data
