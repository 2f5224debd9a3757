// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class Document;

/// How many documents refer to one document, in the database and here, with edits that were not
/// saved yet:
///
///     ReferenceCount { id: uses; document: tag }
///     Text { text: uses.status === ReferenceCount.Ready ? uses.count : "…" }
///
/// It counts when the document is set, and again after update(); it does not follow changes by
/// itself. Stored documents come from the view "references" of the database and are not loaded for
/// it. An inline document that refers counts for itself as soon as its document is loaded.
///
/// A query that fails is an error of severity Major of the Context, which tries it again; `status`
/// stays Loading until that has worked. Another document is counted at once, and the error of the
/// former one goes with the next attempt to fix it.
///
/// Belongs to whoever makes it. Log lines are in "vorrel.job", at debug.
class VORREL_DATACORE_EXPORT ReferenceCount : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ReferenceCount)
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(vo::data::Document *document READ document WRITE setDocument NOTIFY documentChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(vo::data::ReferenceCount::Status status READ status NOTIFY statusChanged)

public:
    enum Status {
        Ready = 0,
        Loading = 1, ///< also while the query fails and is tried again
        Error = 2,   ///< never set
    };
    Q_ENUM(Status)

    explicit ReferenceCount(QObject *parent = nullptr);
    ~ReferenceCount() override;

    /// Null also after the document was destroyed; documentChanged() follows in a later turn.
    [[nodiscard]] Document *document() const;

    /// Not owned. What is being counted for another one is given up.
    void setDocument(Document *document);

    /// The last result; 0 without a document.
    [[nodiscard]] int count() const;
    [[nodiscard]] Status status() const;

public Q_SLOTS:
    /// Counts 70 ms later. Does nothing if the document is being counted then.
    void update();

Q_SIGNALS:
    void documentChanged();
    void countChanged();
    void statusChanged();

private Q_SLOTS:
    void performUpdate();
    void finishUpdate();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
