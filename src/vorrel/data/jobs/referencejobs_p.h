// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/jobs/viewjob.h>

#include <QtCore/QJsonObject>

namespace vo::data {

/// Who refers to a document: the database knows what is stored, the documents themselves what is
/// loaded, with edits that were not saved yet.
class References
{
public:
    /// Asks for the referrers of \p document. A row has the referrer as its id, and as its key the
    /// document that is referred to.
    static QUrl queryUrl(const Document *document);

    /// The loaded documents that refer to \p document, among them inline ones; without those that
    /// only the undo history holds.
    static QList<Document *> loaded(const Document *document);

    References() = delete;
};

/// Counts the referrers of one document.
class ReferenceCountJob : public ViewJob
{
    Q_OBJECT
public:
    explicit ReferenceCountJob(Document *document);
    ~ReferenceCountJob() override;

    /// 0 before the job has finished, and if the document was destroyed meanwhile.
    [[nodiscard]] int count() const { return m_count; }

protected:
    void run() override;
    void answered(int statusCode) override;

private:
    [[nodiscard]] int countReferrers() const;

    const QPointer<Document> m_document;
    int m_count = 0;
};

/// Asks for the referrers of many documents in one request. Documents that are destroyed meanwhile
/// are left out.
class ReferenceCounterJob : public ViewJob
{
    Q_OBJECT
public:
    /// \pre \p documents is not empty. All belong to the Context of the first of them.
    explicit ReferenceCounterJob(const QList<Document *> &documents);
    ~ReferenceCounterJob() override;

    /// Empty before the job has finished.
    [[nodiscard]] QJsonObject response() const { return result().toObject(); }
    [[nodiscard]] QList<Document *> documents() const { return m_documents.objects(); }

protected:
    void run() override;
    [[nodiscard]] Request *createRequest(const QNetworkRequest &request) override;
    void answered(int statusCode) override;

private:
    DocumentList m_documents;
};

} // namespace vo::data
