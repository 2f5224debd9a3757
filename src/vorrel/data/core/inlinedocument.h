// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/document.h>

namespace vo::data {

class DocumentPropertyBase;

/// A document that lives inside the JSON of another one, as the value or an element of a property.
/// It has no id of its own: identity, revision, timestamps and access are those of its parent, and
/// its edits make the document dirty whose property holds it.
///
/// It is the child of its parent, and of the document whose property it enters. One that no
/// property holds counts as deleted; one that left its property, and that no change may bring back,
/// is destroyed in a later turn of the event loop.
class VORREL_DATACORE_EXPORT InlineDocument : public vo::data::Document
{
    Q_OBJECT
    QML_NAMED_ELEMENT(InlineDocument)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")

public:
    /// \pre \p parent is not null
    explicit InlineDocument(Document *parent);
    ~InlineDocument() override;

    /// Makes what \p json describes; null for an unknown type.
    static InlineDocument *create(const QJsonObject &json, Document *parent);

    /// Makes a new one; null for an unknown type.
    static InlineDocument *create(const QString &type, Document *parent);

    /// A new inline document of the same type with the properties of this one.
    [[nodiscard]] virtual InlineDocument *copy(Document *parent);

    /// The document whose property holds this one, or null.
    [[nodiscard]] Document *ownerDocument() const;
    [[nodiscard]] Document *parentDocument() const;

    void setDocumentId(const QString &id) override;
    void setRevision(const QString &revision) override;
    void markDirty() override;
    void markClean(const QString &revision, int sequence,
                   const QSet<QByteArray> &attachments) override;
    void scheduleDependencyUpdate() override;
    [[nodiscard]] const Document *linkSource() const override;

protected Q_SLOTS:
    void reportDocumentChange() override;

public:
    [[nodiscard]] Context *context() const override;
    [[nodiscard]] QByteArray id() const override;
    [[nodiscard]] QString revision() const override;
    [[nodiscard]] int changeSequenceNumber() const override;
    [[nodiscard]] QDateTime created() const override;
    [[nodiscard]] qint64 creationTimestamp() const override;
    [[nodiscard]] QDateTime edited() const override;
    [[nodiscard]] QString creationVersion() const override;
    [[nodiscard]] bool deleted() const override;

    /// Takes the document out of the property that holds it. Cannot be taken back by false.
    void setDeleted(bool deleted) override;
    [[nodiscard]] AccessLevel accessLevel() const override;
    [[nodiscard]] bool implicitReadAccess() const override;
    [[nodiscard]] bool isLocal() const override;

private:
    friend class DocumentPropertyBase;
    friend class InlineDocumentHold;

    [[nodiscard]] DocumentPropertyBase *owner() const;
    void setOwner(DocumentPropertyBase *owner);
    void deleteIfUnheld();

    Context *const m_context;
    DocumentPropertyBase *m_owner = nullptr;
    int m_holds = 0; // changes that may bring it back
};

} // namespace vo::data
