// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/jobs/listing.h>
#include <vorrel/data/jobs/viewjob.h>

#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

namespace vo::data {

/// Asks for the ids of a listing.
class ListingJob : public ViewJob
{
    Q_OBJECT
public:
    ListingJob(const QUrl &url, Context *context)
        : ViewJob(url, ContextError::Blocking, context)
    { }

protected:
    void run() override;
};

class ListingPrivate : public QObject, public DocumentWatch
{
    Q_OBJECT
public:
    explicit ListingPrivate(Listing *listing);
    ~ListingPrivate() override;

    void documentDestroyed(const Document *document) override;

    /// Empties the list, and forgets what was asked for.
    void clear();

    /// Has the list made anew in the next turn.
    void scheduleResult();

    /// The list as it is to be. Without what is not to be shown.
    [[nodiscard]] QList<Document *> wantedDocuments() const;

    Listing *const q;
    QPointer<Context> context;
    Listing::Status status = Listing::Loaded;
    int queryLimit = -1;
    QPointer<ListingJob> job; // that is waited for
    int queries = 0;          // tells the loads of an earlier list
    QTimer timer;             // to the next query
    bool resultScheduled = false;
    QSet<Document *> documentSet; // that may belong to the list
    DocumentList documents;       // the list

public Q_SLOTS:
    void updateListing();
    void processViewResult();

private:
    void setStatus(Listing::Status newStatus);
    void load(const QStringList &ids);
    void take(const QStringList &ids, int query);
};

} // namespace vo::data
