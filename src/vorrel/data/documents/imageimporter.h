// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class Context;
class ImageAsset;
class MediaAssetFolder;

/// Makes image documents of many files, while the application goes on:
///
///     ImageImporter {
///         id: importer
///         context: shop
///         onFailed: function(file) { console.warn("No image:", file) }
///     }
///     ProgressBar { visible: importer.running; value: importer.progress }
///     FileDialog { fileMode: FileDialog.OpenFiles; onAccepted: importer.add(selectedFiles) }
///
/// Files are read and images are made on as many threads as the machine has cores, each with one
/// image in memory. The documents are made on the thread of this object, which has to be that of
/// the Context, in the order in which files get ready; each is what it would be if its \c file had
/// been set.
class VORREL_DATACORE_EXPORT ImageImporter : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ImageImporter)
    Q_MOC_INCLUDE("vorrel/data/context/context.h")
    Q_MOC_INCLUDE("vorrel/data/documents/imageasset.h")
    Q_MOC_INCLUDE("vorrel/data/documents/mediaassetfolder.h")
    Q_PROPERTY(vo::data::Context *context READ context WRITE setContext NOTIFY contextChanged)
    Q_PROPERTY(vo::data::MediaAssetFolder *folder READ folder WRITE setFolder NOTIFY folderChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    Q_PROPERTY(int total READ total NOTIFY progressChanged)
    Q_PROPERTY(int done READ done NOTIFY progressChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)

public:
    explicit ImageImporter(QObject *parent = nullptr);

    /// Cancels, and waits for the images that are being made just now.
    ~ImageImporter() override;

    /// Where the documents are made.
    [[nodiscard]] Context *context() const;
    void setContext(Context *context);

    /// The folder that they are put into, if there is one.
    [[nodiscard]] MediaAssetFolder *folder() const;
    void setFolder(MediaAssetFolder *folder);

    /// Begins to import local files, after those that are still waiting. What is not an image
    /// becomes a document, too, as it does when it is set as a file.
    Q_INVOKABLE void add(const QList<QUrl> &files);

    /// Forgets the files that are waiting or being read. Documents that were made stay.
    Q_INVOKABLE void cancel();

    [[nodiscard]] bool isRunning() const;

    /// Files since the importer began to run, and how many of them are done with.
    [[nodiscard]] int total() const;
    [[nodiscard]] int done() const;

    /// From 0 to 1.
    [[nodiscard]] double progress() const;

Q_SIGNALS:
    void contextChanged();
    void folderChanged();
    void runningChanged();
    void progressChanged();
    void imported(const QUrl &file, vo::data::ImageAsset *image);

    /// The file could not be read, as a critical line says, or the Context makes no document.
    void failed(const QUrl &file);

    /// The last file is done with. Not after cancel().
    void finished();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
