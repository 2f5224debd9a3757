// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/iincubatable.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/documentpropertybase.h>
#include <vorrel/data/properties/typeddocumentproperty.h>

namespace vo::data {

/// What LinkedDocumentProperty does for all classes of targets.
class VORREL_DATACORE_EXPORT LinkedDocumentPropertyBase : public DocumentPropertyBase,
                                                          public IIncubatable
{
public:
    using Target = LinkedDocument;

    LinkedDocumentPropertyBase(const char *name, Document *document);
    ~LinkedDocumentPropertyBase() override;

    [[nodiscard]] int type() const override;
    void fromJson(const QJsonValue &json) override;
    [[nodiscard]] QJsonValue toJson() const override;
    void aggregateReferences(QSet<QString> &ids) const override;
    void copy(PropertyBase *source) override;
    void clear() override;
    [[nodiscard]] bool isComplete() const override;
    [[nodiscard]] QList<Document *> referencedDocuments() const override;
    void removeDocument(Document *document) override;
    bool incubate(Context *context) override;

protected:
    /// The target, built now if it was not yet.
    [[nodiscard]] LinkedDocument *target() const;
    bool setTarget(LinkedDocument *target);
    void setFallbackTarget(LinkedDocument *fallback);

    /// Whether \p document is of the class of the targets.
    [[nodiscard]] virtual bool accepts(const Target *document) const = 0;

private:
    void resolve();
    [[nodiscard]] LinkedDocument *orFallback(LinkedDocument *target) const;
    bool assign(LinkedDocument *target);
    bool exchange(LinkedDocument *target);
    [[nodiscard]] QString storedId() const;

    QPointer<LinkedDocument> m_current;
    QPointer<LinkedDocument> m_fallback;
    QByteArray m_pendingId; // of a target that is not built yet
};

/// A stored field that points at one linked document of class \a T. Stored data may name a document
/// that is not built yet: it is built when the field is read, or later, in a slice of its own.
template <typename T>
class LinkedDocumentProperty : public TypedDocumentProperty<T, LinkedDocumentPropertyBase>
{
public:
    using TypedDocumentProperty<T, LinkedDocumentPropertyBase>::TypedDocumentProperty;

    /// Null below ReadAccess.
    [[nodiscard]] T *get() const
    {
        return this->canRead() ? static_cast<T *>(this->target()) : nullptr;
    }

    /// An edit. False below WriteAccess, for the present target, for a document of another
    /// Context and for a link that would close a cycle.
    bool set(T *target) { return this->setTarget(target); }

    /// What stands in for null; it is not stored.
    void setFallback(T *fallback) { this->setFallbackTarget(fallback); }
};

} // namespace vo::data
