// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/document.h>

#include <QtCore/QJsonValue>

#include <tuple>

namespace vo::data {

class AccessController;
class DocumentNode;
class IDeleteHandler;
struct ReferenceType;

/// The unit of storage: a document with an id, a revision, timestamps, a count of local edits and
/// access rights, and with free-form structs beside its typed properties. Its Context makes it,
/// owns it and holds exactly one for each id.
///
/// Keys of a stored document that no property of its class names are dropped when it is saved
/// again; the place for content of an application's own is the free-form data.
class VORREL_DATACORE_EXPORT LinkedDocument : public vo::data::Document
{
    Q_OBJECT
    QML_NAMED_ELEMENT(LinkedDocument)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY labelChanged)
    Q_PROPERTY(QString typeName READ typeName CONSTANT)

public:
    /// \pre \p context is not null; it becomes the parent
    explicit LinkedDocument(Context *context);
    ~LinkedDocument() override;

    /// Makes the document that \p json describes. Null for an unknown type, with the critical log
    /// line "Creating unknown document: %s", and, with a warning, for an id beyond Latin-1.
    static LinkedDocument *create(const QJsonObject &json, Context *context);

    /// Makes a new document; without \p id it gets one when it is first asked for. Null as above,
    /// and, with a critical log line, if a live document has that id already.
    static LinkedDocument *create(const QString &type, Context *context);
    static LinkedDocument *create(const QString &type, const QString &id, Context *context);

    /// The fixed ids whose documents are of \p type or above it.
    [[nodiscard]] static QStringList autoInstances(const QString &type);

    /// Makes the documents that every Context has from its start.
    static void createAutoInstances(Context *context);

    /// The id stands from initialize() on; another one is refused with a critical log line then.
    void setDocumentId(const QString &id) override;
    void setRevision(const QString &revision) override;
    void markDirty() override;
    void markClean(const QString &revision, int sequence,
                   const QSet<QByteArray> &attachments) override;
    [[nodiscard]] QSet<QByteArray> currentAttachments() const override;
    void setCurrentAttachments(const QSet<QByteArray> &hashes) override;
    void scheduleDependencyUpdate() override;
    [[nodiscard]] StorageFlags storageFlags() const override;
    void initialize() override;
    void attachDocument(Document *document) override;
    void detachDocument(Document *document) override;

protected Q_SLOTS:
    void reportDocumentChange() override;

public:
    [[nodiscard]] Context *context() const override;

    /// Makes an id on first demand: 32 lower-case hexadecimal digits of a random UUID.
    [[nodiscard]] QByteArray id() const override;
    [[nodiscard]] QString revision() const override;
    [[nodiscard]] int changeSequenceNumber() const override;
    [[nodiscard]] QDateTime created() const override;
    [[nodiscard]] qint64 creationTimestamp() const override;
    [[nodiscard]] QDateTime edited() const override;
    [[nodiscard]] QString creationVersion() const override;
    [[nodiscard]] QString label() const override;
    [[nodiscard]] bool deleted() const override;

    /// Deletes the document, or takes that back. Nothing happens below WriteAccess or if something
    /// that points here forbids it. Whatever points here lets go.
    void setDeleted(bool deleted) override;
    [[nodiscard]] AccessLevel accessLevel() const override;
    [[nodiscard]] bool implicitReadAccess() const override;
    [[nodiscard]] bool isLocal() const override;

    /// Null if there is no such attachment property. Lives as long as the document.
    [[nodiscard]] Attachment *attachment(const QString &property) const override;

    /// One for each attachment property.
    [[nodiscard]] QList<Attachment *> attachments() const override;
    void aggregateReferences(QSet<QString> &ids) const override;
    void aggregateDependencies(QSet<const LinkedDocument *> &documents) const override;
    [[nodiscard]] QJsonObject serialize() const override;
    void assignData(const QJsonObject &object) override;

    /// Takes a newer revision over from the database: no edit, but whoever shows the document
    /// notices. \pre what \p object refers to is loaded
    void reload(const QJsonObject &object);

    /// What setLabel() makes of a text; \p accepted false refuses it.
    [[nodiscard]] virtual QString sanitizeLabel(const QString &label, bool &accepted) const;

    /// The last step of copy(), on the copy.
    virtual void initializeCopy(const LinkedDocument *source);

    /// The translated name of the kind of document.
    [[nodiscard]] virtual QString typeName() const;

    void setLabel(const QString &label);

    /// A new document of the same type, with all properties and data of this one.
    Q_INVOKABLE vo::data::LinkedDocument *copy();

    /// A digest of the ids, revisions and edits of this document and all that it points at.
    [[nodiscard]] QByteArray subtreeRevision() const;

    /// Whether the document was made by the library itself and not by a user.
    [[nodiscard]] bool isInternal() const;

    [[nodiscard]] AccessController *accessController() const;
    void updateAccessLevel();

    /// Grants WriteAccess until the access level is computed again.
    void overrideAccessLevel();

    /// Brings the edges of this document in the graph in line with what it points at.
    void updateDependencies();

    /// Makes everything that points here let go, whatever access it has: this document goes.
    void releaseReferrers();

    /// Hands the pending change report to the Context.
    void deliverDocumentChange();

    /// \name Free-form data
    /// Named structs of named JSON values. Reads give nothing below ReadAccess.
    /// @{

    /// Replaces all of it, as stored data: not an edit.
    void assignCustomData(const QJsonObject &data);

    /// All of it, whatever the access level.
    [[nodiscard]] QJsonObject customData() const;
    Q_INVOKABLE [[nodiscard]] QJsonObject getStruct(const QString &key) const;

    /// Undefined if there is no such struct or field.
    Q_INVOKABLE [[nodiscard]] QJsonValue getStructValue(const QString &key,
                                                        const QString &field) const;

    /// An edit; the undefined value removes the field. False below WriteAccess and for an equal
    /// value.
    Q_INVOKABLE bool setStructValue(const QString &key, const QString &field,
                                    const QJsonValue &value);
    /// @}

    /// \name References in free-form data
    /// A field refers to a document by the text "$ref(0,<id>)". A text that only begins like that
    /// is text.
    /// @{
    [[nodiscard]] static bool isReference(const QString &text);

    /// Id and type of a reference; an empty id and -1 for other texts.
    [[nodiscard]] static std::tuple<QByteArray, int> referenceData(const QString &text);
    [[nodiscard]] static const ReferenceType *referenceType(int type);
    [[nodiscard]] static const ReferenceType *referenceType(const QObject *object);
    [[nodiscard]] static QString encodeReference(int type, const QString &id);

    /// Empty for null and for objects that cannot be referred to.
    Q_INVOKABLE [[nodiscard]] static QString encodeReference(const QObject *object);

    /// The object that \p text refers to, built on first use. Null if it is not loaded.
    Q_INVOKABLE [[nodiscard]] QObject *decodeReference(const QString &text) const;

    /// Whether any field refers to the object.
    [[nodiscard]] bool hasReference(const QObject *object) const;
    [[nodiscard]] bool hasReference(const QByteArray &id, int type) const;

    /// The objects of a kind that fields refer to, once each, built now if they were not yet.
    [[nodiscard]] QList<QObject *> references(int type) const;

    /// Count a reference that stands elsewhere than in a field. No edit of the data.
    void addReference(const QObject *object);
    void removeReference(const QObject *object);

    /// Sets every field that refers to the object to null, as edits.
    void purgeReference(const QObject *object);
    /// @}

    // For reference types and their incubator.
    void attachReference(const QByteArray &id, LinkedDocument *target);
    void detachReference(const QByteArray &id);

public Q_SLOTS:
    void scheduleAccessLevelUpdate();

Q_SIGNALS:
    void accessControlParametersChanged();

    /// An empty \p field means any of the struct, an empty \p key any struct.
    void structValueChanged(const QString &key, const QString &field);
    void listChanged(const QString &key);
    void listParentChanged(const QSet<QString> &ids);

private:
    friend class AccessController;
    friend class Document;
    friend class DocumentPropertyBase;

    void addDeleteHandler(IDeleteHandler *handler, const Document *owner);
    void removeDeleteHandler(IDeleteHandler *handler);
    void removeDeleteHandlersOf(const Document *owner);
    [[nodiscard]] bool hasImplicitReadAccess() const;
    void computeFirstAccessLevel();
    [[nodiscard]] std::vector<LinkedDocument *> sourcesToAsk() const;
    void correctAnswersOfRing();
    static LinkedDocument *createInternal(const QString &type, Context *context);
    void completeNew();
    [[nodiscard]] QList<LinkedDocument *> builtReferences() const;
    void readAccessChanged();
    void purgeReferences();
    void clearLinks();
    void callDeleteHandlers();
    void clearStructReferences();
    [[nodiscard]] bool acceptsReference(const QJsonValue &value);
    void countReference(const QString &text);
    void uncountReference(const QString &text);
    void recountReferences();
    void recordStructChange(std::function<void(bool forward)> change);
    void writeStructValue(const QString &key, const QString &field, const QJsonValue &value);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
