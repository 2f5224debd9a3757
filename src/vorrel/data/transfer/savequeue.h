// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class Context;
class Document;

/// One upload of documents with unsaved edits, for a progress bar:
///
///     ProgressBar { visible: shop.saveQueue; value: shop.saveQueue ? shop.saveQueue.progress : 0 }
///
/// Documents go one after the other, those that others refer to first, so that nobody ever reads a
/// reference to a document that is not there. The first that fails ends the upload: what came
/// before is saved, everything else stays unsaved. What failed last time goes last, so that it does
/// not keep others from being saved.
///
/// Context::saveLocalChanges() makes one and destroys it when it has ended. The documents are
/// read when the upload starts; what is edited later stays unsaved. Log lines are in
/// "vorrel.data.savequeue".
class VORREL_DATACORE_EXPORT SaveQueue : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SaveQueue)
    QML_UNCREATABLE("Uploads are started by a Context")
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)

public:
    /// \pre all \p documents belong to \p context, which becomes the parent
    SaveQueue(const QSet<Document *> &documents, Context *context);
    ~SaveQueue() override;

    /// Once. Without documents it ends inside this call.
    void startTransfer();

    /// The part that has been sent, in bytes, from 0 to 1. Goes back while the sizes of further
    /// documents become known.
    [[nodiscard]] double progress() const;

    /// Whether all documents have been saved. Meaningful once it has finished.
    [[nodiscard]] bool success() const;

public Q_SLOTS:
    /// Does nothing: an upload that runs cannot be ended.
    void abortTransfer();

Q_SIGNALS:
    void finished();
    void progressChanged();

private Q_SLOTS:
    void nextTask();

private:
    friend class Context;

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
