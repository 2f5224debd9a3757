// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/changefeedmonitor.h>

#include <vorrel/core/couchurl.h>

#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>

#include <memory>
#include <optional>

namespace vo::data {

struct ChangeRecord;

/// What all monitors that ask the database have in common. It knows the newest revision of each
/// document that it has heard of, drops cached documents that are older, and removes documents that
/// were deleted. While the Context saves, records wait, so that those of the save itself are seen
/// when it is over. Documents that came out of the cache are asked for every 5 s.
///
/// Records are handled in time slices and in their order. The table of revisions lives as long as
/// the monitor and is not stored.
class VORREL_DATACORE_EXPORT BaseChangeFeedMonitor : public ChangeFeedMonitor
{
    Q_OBJECT
public:
    BaseChangeFeedMonitor(const QString &database, Context *context);
    ~BaseChangeFeedMonitor() override;

    void registerDocument(LinkedDocument *document) override;
    [[nodiscard]] int revisionCount() const override;

    /// The newest update sequence that was handled; empty before the first.
    [[nodiscard]] QString lastSequence() const;

protected:
    /// Handles one record of the feed, or queues it behind others. Slots may destroy the monitor.
    void handleRecord(const QJsonObject &record);

    /// Takes a sequence, number or text, as the newest one. Nothing happens for other values.
    void updateSequence(const QJsonValue &value);

    /// Handles the answer to a poll: its sequence and all its records.
    void handleAnswer(const QJsonObject &answer);

    /// Whether records are queued.
    [[nodiscard]] bool hasQueuedRecords() const;

    /// Whether the Context has what a request needs: a network manager and a service URL.
    [[nodiscard]] bool canConnect() const;

    /// The URL of the feed from lastSequence() on, or from now on while that is empty, with the
    /// further items \p query.
    [[nodiscard]] QUrl nextFeedUrl(const CouchUrl::Query &query);

    /// The database answers the request that was made with the last nextFeedUrl(). If it asked
    /// anew from "now" on, records may have been missed: the revisions of all documents are
    /// checked.
    void feedAnswers();

private:
    void holdRecord(const ChangeRecord &record);
    [[nodiscard]] std::optional<ChangeRecord> takeRecord();
    void applyRecord(const ChangeRecord &record);
    bool insert(const QString &id, const QString &revision);
    void drain();
    void scheduleDrain();
    void processQueuedRecords();
    void fetchRevisions();
    void updateCurrentRevisions();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
