// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/document.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonValue>
#include <QtCore/QStringList>
#include <QtCore/QVector>

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
    /// Named structs of named JSON values, and named lists of item ids. An item is no more than its
    /// id: what it holds stands in the struct, the list and the scope of that name. Lists nest that
    /// way. Reads give nothing below ReadAccess; edits do nothing and give false below WriteAccess
    /// and when what they name is not there. Each edit is one step for undo.
    /// @{

    /// Replaces all of it, as stored data: not an edit.
    void assignCustomData(const QJsonObject &data);

    /// All of it, whatever the access level.
    [[nodiscard]] QJsonObject customData() const;
    Q_INVOKABLE [[nodiscard]] QJsonObject getStruct(const QString &key) const;

    /// Undefined if there is no such struct or field.
    Q_INVOKABLE [[nodiscard]] QJsonValue getStructValue(const QString &key,
                                                        const QString &field) const;
    Q_INVOKABLE [[nodiscard]] bool hasStruct(const QString &key) const;
    Q_INVOKABLE [[nodiscard]] bool hasStructValue(const QString &key, const QString &field) const;

    /// Replaces all fields: an empty \p object removes the struct. Fields that refer to a document
    /// which is not loaded, or which would close a cycle, are left out. True also if there was
    /// nothing to change.
    Q_INVOKABLE bool setStruct(const QString &key, const QJsonObject &object);

    /// Makes the struct if it is missing, even where the result is false. The undefined value
    /// removes the field. False for an equal value, and for a reference to a document that is not
    /// loaded or that would close a cycle.
    Q_INVOKABLE bool setStructValue(const QString &key, const QString &field,
                                    const QJsonValue &value);

    /// Removes the field.
    Q_INVOKABLE bool clearStructValue(const QString &key, const QString &field);
    Q_INVOKABLE bool deleteStruct(const QString &key);

    /// These replace the target. False also if it is the source.
    Q_INVOKABLE bool moveStruct(const QString &sourceKey, const QString &targetKey);
    Q_INVOKABLE bool duplicateStruct(const QString &sourceKey, const QString &targetKey);

    /// An item, the list that it moves to, and its place there: the end if it is negative or
    /// beyond.
    using ListMove = std::tuple<QString, QString, int>;

    Q_INVOKABLE [[nodiscard]] QJsonArray getList(const QString &key) const;

    /// Makes \p items the list. The items of \p moves go to other lists; the scopes of all others
    /// that \p items lacks are deleted. Empty ids are left out, and with an empty \p key nothing
    /// happens.
    Q_INVOKABLE void setList(const QString &key, const QJsonArray &items);
    void setList(const QString &key, const QJsonArray &items, const QVector<ListMove> &moves);

    /// Stores a list that arrives as it stands: no undo, no signals, and no scopes are deleted.
    void setListRaw(const QString &key, const QJsonArray &items);

    /// Replaces the target, whose items keep their scopes. False also if it is the source.
    Q_INVOKABLE bool moveList(const QString &sourceKey, const QString &targetKey);

    /// With the scopes of its items.
    Q_INVOKABLE bool deleteList(const QString &key);

    /// The list that holds the item; one of them, if several do. Empty if none does.
    Q_INVOKABLE [[nodiscard]] QString listParent(const QString &id) const;

    /// Moves an item, with all that it holds, out of the list that it stands in. A negative
    /// \p index is the end. Within one list it takes that place among the others.
    Q_INVOKABLE bool moveListItem(const QString &id, const QString &key, int index);

    /// Move items of the list to a place beside another one. False if one of them, or the other
    /// one, is not in the list.
    Q_INVOKABLE bool insertListItemBefore(const QString &key, const QString &item,
                                          const QString &before);
    Q_INVOKABLE bool insertListItemAfter(const QString &key, const QString &item,
                                         const QString &after);
    Q_INVOKABLE bool insertListItemsBefore(const QString &key, const QStringList &items,
                                           const QString &before);
    Q_INVOKABLE bool insertListItemsAfter(const QString &key, const QStringList &items,
                                          const QString &after);

    /// Remove items with their scopes.
    Q_INVOKABLE bool removeListItem(const QString &key, const QString &item);
    Q_INVOKABLE bool removeListItem(const QString &key, int index);

    /// How many were removed.
    int removeListItems(const QString &key, const QSet<QString> &items);
    Q_INVOKABLE int removeListItems(const QString &key, const QStringList &items);

    /// Make items, and the list if it is missing. An \p index out of range is the end. Empty if
    /// nothing was made; more than a million at a time are refused with a warning.
    Q_INVOKABLE QString newListItem(const QString &key, int index);
    Q_INVOKABLE QStringList newListItems(const QString &key, int index, int count);

    /// An id that no item of this document has, in the letters of a reference.
    Q_INVOKABLE QString newListItemId();

    /// The structs or lists whose names begin with \p scope and ":".
    Q_INVOKABLE [[nodiscard]] QStringList scopeStructs(const QString &scope) const;
    Q_INVOKABLE [[nodiscard]] QStringList scopeLists(const QString &scope) const;

    /// Deletes all structs and lists with \p scope among the segments of their names, which ":"
    /// divides, and the scopes of the items of these lists.
    Q_INVOKABLE void deleteScope(const QString &scope);

    /// All that deleteScope() would delete, by its stored keys, and the name under "scope".
    Q_INVOKABLE [[nodiscard]] QJsonObject copyScope(const QString &scope) const;

    /// Inserts what copyScope() has copied from \p source, maybe of another document, under the
    /// name \p target. All items get new ids. An item that holds itself is pasted empty, and a
    /// copy that would grow beyond 100,000 items, structs and lists is refused with a warning.
    Q_INVOKABLE void pasteScopeAs(const QJsonObject &scopeData, const QString &source,
                                  const QString &target);
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

private Q_SLOTS:
    void delayedNotify();

Q_SIGNALS:
    void accessControlParametersChanged();

    /// An empty \p field means any of the struct, an empty \p key any struct.
    void structValueChanged(const QString &key, const QString &field);

    /// An empty \p key means any list.
    void listChanged(const QString &key);

    /// These items stand in other lists now, or in none. Comes in a later turn of the event loop,
    /// once for all edits until then.
    void listParentChanged(const QSet<QString> &ids);

private:
    friend class AccessController;
    friend class Document;
    friend class DocumentPropertyBase;
    friend class StructValueChange;

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
    [[nodiscard]] QJsonObject acceptedFields(const QJsonObject &object);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
