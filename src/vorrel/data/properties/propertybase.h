// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>
#include <vorrel/data/properties/propertyinfo.h>

#include <QtCore/QJsonValue>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <memory>

namespace vo::data {

class Change;
class Document;

/// One stored field of a document, bound to the Qt property of the same name. It is a member of
/// the private data of its class, made with the name and the document, and registers itself.
/// It reads and writes JSON, copies itself and tells observers of changes.
///
/// A destructor must not touch the document: its class is already gone then.
class VORREL_DATACORE_EXPORT PropertyBase
{
public:
    /// The kinds of properties, as type() gives them.
    enum PropertyType {
        Value = 0,
        LanguageString = 1,
        SingleDocument = 2,
        DocumentList = 3,
        DocumentMap = 4,
        AttachmentFile = 5,
    };

    PropertyBase(const char *name, Document *document);
    virtual ~PropertyBase();
    PropertyBase &operator=(const PropertyBase &) = delete;

    [[nodiscard]] virtual int type() const = 0;

    /// Takes stored data: not an edit, so nothing is recorded and nothing gets dirty.
    virtual void fromJson(const QJsonValue &value) = 0;
    [[nodiscard]] virtual QJsonValue toJson() const = 0;

    /// Adds the ids of the documents that the stored value names.
    virtual void aggregateReferences(QSet<QString> &ids) const;

    /// Takes the value of \p source as an edit. \pre \p source is of the same class
    virtual void copy(PropertyBase *source) = 0;

    [[nodiscard]] const QByteArray &name() const { return m_info->name(); }
    [[nodiscard]] const QMetaMethod &signal() const { return m_info->signal(); }
    [[nodiscard]] bool isReadOnly() const { return m_info->isReadOnly(); }
    [[nodiscard]] bool isConstant() const { return m_info->isConstant(); }
    [[nodiscard]] bool isStored() const { return m_info->isStored(); }

    /// The document that this property belongs to.
    [[nodiscard]] Document *d_() const { return m_document; }
    void emitChangeSignal() const;

    /// The address of this object, folded to 32 bits.
    [[nodiscard]] unsigned int uniqueId() const;

    /// Whether this is a property of documents: a DocumentPropertyBase.
    [[nodiscard]] bool holdsDocuments() const
    {
        const int kind = type();
        return kind >= SingleDocument && kind <= DocumentMap;
    }

protected:
    PropertyBase(const PropertyBase &other);

    [[nodiscard]] bool canRead() const;
    [[nodiscard]] bool canWrite() const;

    /// Tells that the value changed, unless the document is locked. Slots may destroy the
    /// document and this property with it: false says that they did.
    bool notify() const;

    /// The end of an edit: tells of it and marks the document dirty. False as above.
    bool notifyAndMarkDirty();
    bool markDirtyAndNotify();

    /// Applies \p change and has it recorded.
    void apply(std::unique_ptr<Change> change);

    /// Has a change recorded that is applied already, if recording is on. \p make makes it.
    template <typename Make>
    void recordApplied(Make make)
    {
        if (isRecording()) {
            record(make());
        }
    }

private:
    friend class Document;

    [[nodiscard]] bool isRecording() const;
    void record(std::unique_ptr<Change> change);

    PropertyInfo *const m_info;
    Document *const m_document;
};

} // namespace vo::data
