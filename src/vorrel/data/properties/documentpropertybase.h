// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/ideletehandler.h>
#include <vorrel/data/properties/propertybase.h>

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QPointer>

#include <functional>

namespace vo::data {

class DocumentStore;
class InlineDocument;

/// A stored field that points at documents or holds them. It attaches its targets to its document
/// and detaches them, and watches their deletion. Documents of another Context are refused with
/// the warning "Cannot set document from different context".
class VORREL_DATACORE_EXPORT DocumentPropertyBase : public PropertyBase, public IDeleteHandler
{
public:
    using PropertyBase::PropertyBase;

    /// Drops all targets, as an edit.
    virtual void clear() = 0;

    /// The type string of the class of the targets.
    [[nodiscard]] virtual QString documentType() const = 0;

    /// Whether all targets have been built.
    [[nodiscard]] virtual bool isComplete() const = 0;
    [[nodiscard]] virtual QList<Document *> referencedDocuments() const = 0;

    /// A target may go if this property may be changed.
    [[nodiscard]] bool canDelete() const override;

    [[nodiscard]] Document *ownerDocument() const { return d_(); }

    /// Makes the inline document that \p object describes; null for an unknown type.
    [[nodiscard]] InlineDocument *createInlineDocument(const QJsonObject &object) const;

    /// Gives \p object to \p current if that is of its type, else makes a new inline document. An
    /// object without a type leaves a constant property as it is and empties others.
    [[nodiscard]] InlineDocument *updateInlineDocument(InlineDocument *current,
                                                       const QJsonObject &object) const;

protected:
    /// Points at \p target from now on: the document knows of it, and removeDocument() is called
    /// when it is deleted. Slots may destroy the document and this property with it: false says
    /// that they did.
    bool attach(Document *target);
    bool detach(Document *target);

    /// The same for an inline document, which this property then holds.
    void adopt(InlineDocument *document);
    void release(InlineDocument *document);

    /// Disposes of an inline document that was replaced by stored data, unless a change may bring
    /// it back.
    static void discard(InlineDocument *document);

    /// Ceases to hold \p document without telling anybody: for destructors.
    static void disown(InlineDocument *document);

    /// For a value that reading has just built: whoever reads it, perhaps a binding, must not be
    /// told inside the read, so that the next turn of the incubator tells.
    void notifyLater() { m_untold = true; }

    /// Tells what notifyLater() put off. False if a slot destroyed the document.
    bool deliverNotification();

    /// Leaves \p target without touching this property's own document: for destructors.
    void abandon(Document *target);

    /// Whether this property lies inside \p document, which then cannot come to lie in it.
    [[nodiscard]] bool liesWithin(const InlineDocument *document) const;

    /// Whether \p document may be set here: logs the warning above if not.
    [[nodiscard]] bool acceptsContext(const Document *document) const;
    [[nodiscard]] DocumentStore &store() const;

    /// Applies an edit that \p assign makes in both directions and that gives whether anything
    /// changed, and has it recorded.
    void applyEdit(std::function<bool(bool forward)> assign);

private:
    friend class InlineDocument;

    /// Somebody destroyed an inline document that this property holds.
    virtual void inlineDocumentDestroyed(InlineDocument *document);

    bool m_untold = false;
};

/// Keeps an inline document that left its property for as long as a change may bring it back.
class VORREL_DATACORE_EXPORT InlineDocumentHold
{
public:
    explicit InlineDocumentHold(InlineDocument *document);
    InlineDocumentHold(const InlineDocumentHold &other);
    ~InlineDocumentHold();
    InlineDocumentHold &operator=(const InlineDocumentHold &) = delete;

    /// Null once it was destroyed all the same.
    [[nodiscard]] InlineDocument *document() const;

private:
    const QPointer<InlineDocument> m_document;
};

} // namespace vo::data
