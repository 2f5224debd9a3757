// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQml/QQmlListProperty>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class Document;
class LinkedDocument;

/// Tells who depends on a document and whether it may be deleted, and deletes it:
///
///     DocumentDeleter { id: deleter; document: dialog.product }
///     Text { text: qsTr("%n place(s) show this product", "", deleter.dependantCount) }
///     Button { enabled: !deleter.locked; onClicked: deleter.deleteDocument() }
///
/// The dependants are asked for by the view "references" of the database, loaded, and looked up
/// among what is loaded. Until all that is done, the document counts as locked. Afterwards access
/// rights, referrers that come and go here, and the end of documents are followed; what others do
/// in the database is found out by setting the document again. Stored referrers of an unknown type
/// cannot be loaded, and are no dependants.
///
/// There is no retry: a request that fails ends in the status Error, with critical lines in
/// "vorrel.listing". To try again, set the document to null and back.
///
/// Belongs to whoever makes it.
class VORREL_DATACORE_EXPORT DocumentDeleter : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DocumentDeleter)
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(vo::data::DocumentDeleter::Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(bool locked READ locked NOTIFY lockedChanged)
    Q_PROPERTY(bool referenced READ referenced NOTIFY referencedChanged)
    Q_PROPERTY(
        vo::data::DocumentDeleter::LockReason lockReason READ lockReason NOTIFY lockReasonChanged)
    Q_PROPERTY(int dependantCount READ dependantCount NOTIFY dependantCountChanged)
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> dependants READ dependantList NOTIFY dependantsChanged)
    Q_PROPERTY(vo::data::Document *document READ document WRITE setDocument NOTIFY documentChanged)

public:
    enum Status {
        Error = -1,
        Null = 0,                 ///< there is no document
        LoadingReferenceList = 1, ///< the database is asked who refers to it
        LoadingReferences = 2,    ///< those are being loaded
        Loaded = 3,               ///< all is known
    };
    Q_ENUM(Status)

    enum LockReason {
        Unknown = -1,           ///< not known yet
        NotLocked = 0,          ///< the document may be deleted
        NoWriteAccess = 1,      ///< it lacks WriteAccess
        ImmutableDependant = 2, ///< a dependant lacks WriteAccess
    };
    Q_ENUM(LockReason)

    explicit DocumentDeleter(QObject *parent = nullptr);
    ~DocumentDeleter() override;

    [[nodiscard]] Status status() const;

    /// True for every reason but NotLocked.
    [[nodiscard]] bool locked() const;
    [[nodiscard]] LockReason lockReason() const;

    /// Whether there are dependants. False until they are known.
    [[nodiscard]] bool referenced() const;
    [[nodiscard]] int dependantCount() const;

    /// The documents that refer to the document, once each, in no order; for inline documents,
    /// those that hold them. One that is destroyed leaves at once.
    [[nodiscard]] QList<LinkedDocument *> dependants() const;
    [[nodiscard]] QQmlListProperty<Document> dependantList();

    /// Null also after the document was destroyed; documentChanged() follows in a later turn.
    [[nodiscard]] Document *document() const;

    /// Not owned. Everything is asked for anew.
    void setDocument(Document *document);

    /// Deletes the document, unless it is locked: then a warning in "vorrel.data" says why not. As
    /// with every deletion, the database learns of it with the next upload.
    Q_INVOKABLE void deleteDocument();

Q_SIGNALS:
    void statusChanged(vo::data::DocumentDeleter::Status status);
    void referencedChanged();
    void lockedChanged();
    void lockReasonChanged();
    void documentChanged();
    void dependantCountChanged();
    void dependantsChanged();

private Q_SLOTS:
    void referenceListFetchFinished();
    void referenceFetchFinished();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
