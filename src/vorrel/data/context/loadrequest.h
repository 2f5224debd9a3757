// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QStringList>

namespace vo::data {

class Context;
class LinkedDocument;

/// The handle of a caller that waits for documents, made by Context::loadDocuments(). It emits
/// finished() once, in a later turn of the event loop, when each id is loaded or is known not to
/// exist, and deletes itself after that: keep it in a QPointer.
class VORREL_DATACORE_EXPORT LoadRequest : public QObject
{
    Q_OBJECT
public:
    LoadRequest(const QStringList &ids, Context *context);
    ~LoadRequest() override;

    /// The ids that are still waited for.
    [[nodiscard]] QSet<QString> pendingDocuments() const;

    /// What was loaded so far, built on first use. Ids that do not exist, deleted documents and
    /// documents of unknown types are left out.
    [[nodiscard]] QList<LinkedDocument *> documents() const;

Q_SIGNALS:
    void finished();

private Q_SLOTS:
    void newDocumentNode(const QString &id);
    void skipDocument(const QString &id);

private:
    friend class LoadRequestBoard;

    [[nodiscard]] Context *context() const;
    void finishIfComplete();

    QSet<QString> m_pending;
    QStringList m_loaded; // nodes may go while a request lives, so their ids are kept
};

} // namespace vo::data
