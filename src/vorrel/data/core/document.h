// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtCore/QVariantList>
#include <QtQml/QQmlListProperty>
#include <QtQml/qqml.h>

#include <functional>
#include <memory>
#include <vector>

namespace vo::data {

class AccessController;
class Attachment;
class AttachmentProperty;
class Change;
class Context;
class DocumentListPropertyBase;
class IChangeRecorder;
class InlineDocument;
class LangString;
class LinkedDocument;
class PropertyBase;

/// The root of all typed objects over stored JSON. It knows its stored properties by name, the
/// type string that names its class in the database, and which documents it points at and which
/// point at it. Identity, revision and dirtiness come from LinkedDocument.
///
/// A class says its type with Q_CLASSINFO("DocumentType", "segment"); the segments of a chain of
/// classes are joined with ":", base first, unless the class says Q_CLASSINFO("InheritType",
/// "false"). Documents are made by the Context, which owns them, and live on its thread.
///
/// Getters give a default below ReadAccess and setters do nothing and return false below
/// WriteAccess.
class VORREL_DATACORE_EXPORT Document : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Document)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_MOC_INCLUDE("vorrel/data/context/context.h")
    Q_MOC_INCLUDE("vorrel/data/properties/attachment.h")
    Q_MOC_INCLUDE("vorrel/data/properties/langstring.h")
    Q_PROPERTY(QString type READ type CONSTANT)
    Q_PROPERTY(QString documentId READ documentId CONSTANT)
    Q_PROPERTY(QString database READ database CONSTANT)
    Q_PROPERTY(QDateTime created READ created CONSTANT)
    Q_PROPERTY(vo::data::Context *context READ context CONSTANT)
    Q_PROPERTY(QString language READ language CONSTANT)
    Q_PROPERTY(QString revision READ revision NOTIFY editedChanged)
    Q_PROPERTY(QString creationVersion READ creationVersion NOTIFY editedChanged)
    Q_PROPERTY(QDateTime edited READ edited NOTIFY editedChanged)
    Q_PROPERTY(QString label READ label NOTIFY labelChanged)
    Q_PROPERTY(QQmlListProperty<vo::data::Document> attachedDocuments READ attachedDocuments NOTIFY
                   attachedDocumentsChanged)
    Q_PROPERTY(
        vo::data::Document::AccessLevel accessLevel READ accessLevel NOTIFY accessLevelChanged)
    Q_PROPERTY(bool implicitReadAccess READ implicitReadAccess NOTIFY implicitReadAccessChanged)
    Q_PROPERTY(bool deleted READ deleted WRITE setDeleted NOTIFY deletedChanged)

public:
    enum AccessLevel {
        UnknownAccess = -1,
        NoAccess = 0,
        ReadAccess = 1,
        WriteAccess = 2,
    };
    Q_ENUM(AccessLevel)

    enum StorageFlag {
        NoStorageFlag = 0,
        StoreNewDocument = 1,  ///< a new document is dirty at once, so that it is saved
        CreatedInternally = 2, ///< its creation is not recorded for undo
        IgnoreChangeFeed = 4,  ///< remote revisions are not looked at
    };
    Q_DECLARE_FLAGS(StorageFlags, StorageFlag)
    Q_FLAG(StorageFlags)

    explicit Document(QObject *parent);
    ~Document() override;

    virtual void setDocumentId(const QString &id) = 0;
    virtual void setRevision(const QString &revision) = 0;

    /// A hook for classes whose older data looks different: called after assignData() when a
    /// document is made from JSON.
    virtual void convert(const QJsonObject &object);

    /// Counts a local edit. Does nothing while the document is locked.
    virtual void markDirty() = 0;

    /// The state of edit number \p sequence has been stored as \p revision with \p attachments.
    /// Later edits keep the document dirty.
    virtual void markClean(const QString &revision, int sequence,
                           const QSet<QByteArray> &attachments) = 0;

    /// Hashes of the attachments that the database is known to have.
    [[nodiscard]] virtual QSet<QByteArray> currentAttachments() const;
    virtual void setCurrentAttachments(const QSet<QByteArray> &hashes);
    virtual void scheduleDependencyUpdate() = 0;

    /// The document that a link from this one counts for; null if it can close no cycle.
    [[nodiscard]] virtual const Document *linkSource() const;
    [[nodiscard]] virtual StorageFlags storageFlags() const;

    /// The last step of creation, after the data is there and before signals are on.
    virtual void initialize();

    /// Notes that this document points at \p document, once more if it did already. Called by
    /// properties and references when their target changes, by nothing else.
    virtual void attachDocument(Document *document);
    virtual void detachDocument(Document *document);

protected Q_SLOTS:
    virtual void attachmentDownloadFinished();
    virtual void reportDocumentChange();

public:
    /// The type string, as in "asset:font:package".
    [[nodiscard]] virtual QString type() const;

    /// The Context that this document lives in; never null.
    [[nodiscard]] virtual Context *context() const = 0;

    /// The id in the database; Latin-1.
    [[nodiscard]] virtual QByteArray id() const = 0;

    /// Empty as long as the document was never stored.
    [[nodiscard]] virtual QString revision() const;

    /// The number of local edits since the last save.
    [[nodiscard]] virtual int changeSequenceNumber() const = 0;
    [[nodiscard]] virtual QDateTime created() const;

    /// When the document was created, in milliseconds since the epoch.
    [[nodiscard]] virtual qint64 creationTimestamp() const;
    [[nodiscard]] virtual QDateTime edited() const;

    /// The version of this library that last wrote the document.
    [[nodiscard]] virtual QString creationVersion() const;
    [[nodiscard]] virtual QString label() const;
    [[nodiscard]] virtual bool deleted() const;
    virtual void setDeleted(bool deleted);
    [[nodiscard]] virtual AccessLevel accessLevel() const;

    /// Whether read access comes only from a document that refers to this one.
    [[nodiscard]] virtual bool implicitReadAccess() const;
    Q_INVOKABLE [[nodiscard]] virtual bool isLocal() const;
    Q_INVOKABLE [[nodiscard]] virtual vo::data::Attachment *attachment(
        const QString &property) const;
    [[nodiscard]] virtual QList<Attachment *> attachments() const;

    /// Adds the ids of all documents that the stored JSON refers to.
    virtual void aggregateReferences(QSet<QString> &ids) const;

    /// Adds the linked documents that complete properties point at.
    virtual void aggregateDependencies(QSet<const LinkedDocument *> &documents) const;

    /// The JSON to store, without any access check.
    [[nodiscard]] virtual QJsonObject serialize() const;

    /// Takes stored data: a missing key leaves its property as it is, and nothing gets dirty.
    virtual void assignData(const QJsonObject &object);

    /// Whether this document is of \p type or of a type below it.
    Q_INVOKABLE [[nodiscard]] bool hasType(const QString &type) const;

    /// The same as setDeleted(true).
    Q_INVOKABLE void remove();

    Q_INVOKABLE void beginRecordChanges();
    Q_INVOKABLE void endRecordChanges();
    Q_INVOKABLE void rollbackChanges();
    Q_INVOKABLE [[nodiscard]] bool changeRecordingActive() const;

    /// \name Elements of a document list property, by its name
    /// All give false or -1 if there is no such property. removeListIndex() gives false also
    /// after a successful removal: do not rely on its result.
    /// @{
    Q_INVOKABLE bool addListElement(const QString &property, vo::data::Document *document);
    Q_INVOKABLE bool insertListElement(const QString &property, vo::data::Document *document,
                                       int index);
    Q_INVOKABLE bool removeListElement(const QString &property, vo::data::Document *document);
    Q_INVOKABLE bool removeListIndex(const QString &property, int index);
    Q_INVOKABLE bool moveListElement(const QString &property, int from, int to);
    Q_INVOKABLE [[nodiscard]] int indexOfListElement(const QString &property,
                                                     vo::data::Document *document) const;
    /// @}

    /// \name Content archives
    /// @{

    /// Writes this document and all that it refers to into one file, from which a DocumentImporter
    /// makes them in another database. The name of the \p file gets the suffix ".vorrel" if it has
    /// none; a former file stays if the new one cannot be written.
    ///
    ///     if (product.exportGaps().length === 0)
    ///         product.exportDocument("file:///home/ann/table.vorrel")
    ///
    /// The archive leaves out the documents with the ids \p dependencies and what these refer to:
    /// the target has to have them. The keys \p excludedKeys are left out of each document.
    ///
    /// False, with a critical log line, if \p file is not local, if the document is deleted, or if
    /// the Context is busy: files that are missing are being fetched from now on, so it is worth
    /// another attempt when that has ended. **True also if the file cannot be written or an
    /// attachment is left out**, which only critical lines tell.
    ///
    /// \pre exportGaps() names no document: a reference to one that is not loaded ends the program
    /// with the line "Could not find document reference %s".
    Q_INVOKABLE bool exportDocument(const QUrl &file, const QStringList &dependencies = {},
                                    const QStringList &excludedKeys = {});

    /// What an archive would lack: documents that are referred to and not loaded, and attachments
    /// whose files are not on this machine. Ask before exportDocument(). Empty if nothing is
    /// missing; else a list of ExportGap.
    Q_INVOKABLE [[nodiscard]] QVariantList exportGaps(const QStringList &dependencies = {}) const;

    /// Fetches the missing files of this document and of all that it points at, unless the Context
    /// does that anyway. The Context is busy until they are here.
    Q_INVOKABLE void completeCache();
    static void completeCache(const QList<Document *> &documents);
    /// @}

    /// The bytes of id() as text.
    [[nodiscard]] QString documentId() const;
    [[nodiscard]] QString database() const;
    [[nodiscard]] QUrl serviceUrl() const;

    /// Where the document stands in the database. Holds the user and password of serviceUrl(), if
    /// it has any: not for logs.
    [[nodiscard]] QUrl documentUrl() const;

    /// Where the database has the attachment of that \p hash, given in hexadecimal digits. As
    /// above.
    [[nodiscard]] QUrl attachmentUrl(const QByteArray &hash) const;
    [[nodiscard]] QString language() const;
    /// Whether it has edits that were not saved yet; both are the same. There is no signal of its
    /// own: ask again after editedChanged() and Context::saved().
    Q_INVOKABLE [[nodiscard]] bool isDirty() const;
    Q_INVOKABLE [[nodiscard]] bool hasLocalChanges() const;

    /// Whether there is a Qt property of this name, stored or not.
    [[nodiscard]] bool hasProperty(const QString &name) const;

    /// The first attached document with this id, or null.
    [[nodiscard]] Document *attachedDocument(const QString &id) const;

    /// The documents that this one points at, once each.
    [[nodiscard]] QList<Document *> attached() const;
    [[nodiscard]] QList<Document *> referencingDocuments() const;
    [[nodiscard]] QQmlListProperty<Document> attachedDocuments();

    /// The stored properties that are files.
    [[nodiscard]] QList<AttachmentProperty *> attachmentProperties() const;

    /// The language text behind the property \p property. Null for other properties, for an empty
    /// one and below ReadAccess.
    Q_INVOKABLE [[nodiscard]] vo::data::LangString *langString(const QString &property) const;

    /// Whether all that this document refers to has been built. Once true it stays true.
    [[nodiscard]] bool isComplete() const;

    /// Whether a link from here to \p target would close a cycle. If so, the application message
    /// "vorrel.error.DependencyCycle" tells the cycle, and the caller drops the edit.
    [[nodiscard]] bool performCycleCheck(Document *target) const;

    /// Whether this object was built from the local cache.
    [[nodiscard]] bool wasCached() const;

    /// Whether language texts follow the system locale instead of the language of the Context.
    [[nodiscard]] bool useLocale() const;

    /// Applies \p change and hands it to the recorder, if one is recording.
    void applyChange(std::unique_ptr<Change> &&change);

    /// Hands over \p change, which is deleted if nobody records it.
    void recordChange(Change *change);

    [[nodiscard]] static QString typeOf(const QMetaObject &metaObject);

    /// Whether \p type is \p base or lies below it, segment by segment.
    [[nodiscard]] static bool isBaseType(const QString &base, const QString &type);

Q_SIGNALS:
    void deletedChanged();
    void labelChanged();
    void attachedDocumentsChanged();
    void accessLevelChanged();
    void implicitReadAccessChanged();
    void editedChanged();

protected:
    /// Announces every property anew, because the access level changed what getters answer.
    void allPropertiesChanged();

    /// Takes the value of one property from \p source. \pre both documents have it
    void copyProperty(const QString &name, Document *source);
    void setUseLocale(bool useLocale);

private:
    friend class AttachmentProperty;
    friend class DocumentImportJob;
    friend class InlineDocument;
    friend class LinkedDocument;
    friend class PropertyBase;
    friend class LinkedDocumentPropertyBase;
    friend class PropertyInfo;

    void addProperty(PropertyBase *property);
    void addPostRoutine(std::function<void()> routine);
    void executePostRoutines();
    void addReferencingDocument(Document *document);
    void removeReferencingDocument(Document *document);
    void leaveAttachments();

    /// The way of a new object with stored data to its end. False if a slot destroyed it.
    bool complete(const QJsonObject &json);

    /// Takes the value of every property from \p source. \pre both are of the same class
    void copyProperties(Document *source);
    void lock();
    void unlock();
    [[nodiscard]] bool isLocked() const;
    void markAsCached();
    [[nodiscard]] PropertyBase *propertyValue(const QString &name) const;
    [[nodiscard]] DocumentListPropertyBase *listProperty(const QString &name) const;
    [[nodiscard]] const std::vector<PropertyBase *> &properties() const;
    [[nodiscard]] IChangeRecorder *changeRecorder() const;
    [[nodiscard]] QList<Document *> linkTargets() const;

    struct Private;
    const std::unique_ptr<Private> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Document::StorageFlags)

} // namespace vo::data
