// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class Context;
class Document;

/// Brings a content archive, which Document::exportDocument() has written, into a Context.
///
///     DocumentImporter {
///         id: importer
///         context: shop
///         onImportFinished: function(doc) { shop.saveLocalChanges() }
///         onImportFailed: console.warn(importer.errorString)
///     }
///     Button { text: "Import"; onClicked: importer.importDocument(dialog.fileUrl) }
///     ProgressBar { visible: importer.importing; value: importer.progress }
///
/// The documents of the archive become new ones, with new ids, and all references among them
/// follow. Assets and media folders keep their ids: if the database has one it is taken, and gets
/// the values of the archive. The result is not saved yet. If the Context is an EditContext, the
/// whole import is one step of undo.
///
/// Anything that the archive says about documents which are there and are no assets, or may not be
/// written, is left out with a critical log line, as is an attachment whose content does not have
/// its hash. A damaged archive changes nothing. The lines are in "vorrel.data".
class VORREL_DATACORE_EXPORT DocumentImporter : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DocumentImporter)
    Q_MOC_INCLUDE("vorrel/data/context/context.h")
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(vo::data::Context *context READ context WRITE setContext NOTIFY contextChanged)
    Q_PROPERTY(vo::data::DocumentImporter::Error error READ error NOTIFY errorChanged)
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorChanged)
    Q_PROPERTY(bool importing READ isImporting NOTIFY importingChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)

public:
    enum Error {
        NoError = 0,
        NoContext = 1, ///< also if it was destroyed meanwhile
        NoLocalDocument = 2,
        InvalidArchive = 3, ///< also if there is no such file
        MissingDependency = 4,
    };
    Q_ENUM(Error)

    explicit DocumentImporter(QObject *parent = nullptr);

    /// An import that runs ends without a word; what it has not made yet does not come.
    ~DocumentImporter() override;

    /// Not owned; null once it is gone.
    [[nodiscard]] Context *context() const;

    /// For the next import.
    void setContext(Context *context);

    /// That of the last import.
    [[nodiscard]] Error error() const;

    /// The same as a text, in English.
    [[nodiscard]] QString errorString() const;
    [[nodiscard]] bool isImporting() const;

    /// How far the import is, from 0 to 1. The first half is for looking which documents are there,
    /// in turns of the event loop; the second half is for the import itself, in one turn.
    [[nodiscard]] double progress() const;

public Q_SLOTS:
    /// Imports a local file. Ends with importFinished() or importFailed(), maybe before it returns.
    /// It waits until the Context is not busy: as long as the server is away, or an error of the
    /// Context stands. Does nothing but log a warning while an import runs.
    void importDocument(const QUrl &file);

Q_SIGNALS:
    void contextChanged();
    void errorChanged();
    void importingChanged();
    void progressChanged();

    /// \p doc is what was exported, as it is here; null if that was of a type that archives leave
    /// out. A further import can begin in a later turn of the event loop.
    void importFinished(vo::data::Document *doc);
    void importFailed(vo::data::DocumentImporter::Error error);

private Q_SLOTS:
    void finishImport();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
