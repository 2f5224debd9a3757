// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtQml/QQmlListProperty>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class Document;

/// How many documents refer to each of several documents, asked for in one request. For lists, in
/// which a ReferenceCount for each row would send as many requests:
///
///     ReferenceCounter { id: uses; documents: tags.documents }
///     Repeater {
///         model: tags.documents
///         Text {
///             text: uses.status === ReferenceCounter.Ready ? uses.referenceCount(modelData) : "…"
///         }
///     }
///
/// A document counts once among the referrers, whether it is named by the view "references" of the
/// database, refers to the document here by an edit that was not saved yet, or both. So one whose
/// reference was removed here still counts until that is saved.
///
/// It counts when the documents change, and again after scheduleUpdate(); it does not follow
/// changes of referrers by itself. A query that fails is an error of severity Major of the Context,
/// which tries it again; `status` stays Loading until that has worked.
///
/// Belongs to whoever makes it and does not own the documents, which belong to one Context. One
/// that is destroyed leaves the list at once. Log lines are in "vorrel.job", at debug; those about
/// wrong use are warnings in "vorrel.data".
class VORREL_DATACORE_EXPORT ReferenceCounter : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ReferenceCounter)
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(vo::data::ReferenceCounter::Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> documents READ documents NOTIFY documentsChanged)

public:
    enum Status {
        Ready = 0,
        Loading = 1, ///< also while the query fails and is tried again
        Error = 2,   ///< never set
    };
    Q_ENUM(Status)

    explicit ReferenceCounter(QObject *parent = nullptr);
    ~ReferenceCounter() override;

    [[nodiscard]] Status status() const;

    /// QML may append and clear; nulls are ignored. What is appended while the database is being
    /// asked waits for the next scheduleUpdate().
    [[nodiscard]] QQmlListProperty<Document> documents();

    /// Whether any document refers to \p document. False with a warning unless the status is Ready,
    /// and for a document that was not counted.
    Q_INVOKABLE [[nodiscard]] bool isReferenced(vo::data::Document *document) const;

    /// How many documents refer to \p document. 0 with a warning unless the status is Ready, and
    /// for a document that was not counted.
    Q_INVOKABLE [[nodiscard]] int referenceCount(vo::data::Document *document) const;

public Q_SLOTS:
    /// Asks the database 100 ms later. Does nothing unless the status is Ready.
    void scheduleUpdate();

Q_SIGNALS:
    void statusChanged();
    void documentsChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private Q_SLOTS:
    void updateCount();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
