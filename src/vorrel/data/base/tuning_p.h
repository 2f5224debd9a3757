// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

#include <chrono>
#include <cstddef>

/// Every period, budget and batch size of the library, each with its effect.
namespace vo::data::tuning {

using namespace std::chrono_literals;

/// How often the load queue looks at what is wanted. Longer gathers larger batches and delays
/// each level of references by as much.
constexpr std::chrono::milliseconds loadQueueTick = 100ms;

/// Documents asked for in one bulk request. Larger saves round trips and makes each answer
/// block the event loop longer while it is parsed.
constexpr int bulkFetchSize = 25;

/// Wait after the first failed bulk request; each further failure adds the step, up to the limit.
constexpr std::chrono::milliseconds bulkRetryBase = 3s;
constexpr std::chrono::milliseconds bulkRetryStep = 10s;
constexpr std::chrono::milliseconds bulkRetryLimit = 60s;

/// Work of a batch (reading the cache, making nodes, waking requests) done in one turn of the
/// event loop. Larger finishes sooner and drops frames.
constexpr std::chrono::milliseconds batchSlice = 4ms;

/// Budget of the incubator in one turn of the event loop.
constexpr std::chrono::milliseconds incubatorSlice = 4ms;

/// Turns in a row after which an object that still wants more counts as a fault of its class when
/// all waiting work is finished at once. Debug builds stop there.
constexpr int incubationTurnLimit = 10'000'000;

/// Budget of the graph tasks in one turn of the event loop.
constexpr std::chrono::milliseconds graphTaskSlice = 6ms;

/// Time in which changes of references gather before the edges of a document follow.
constexpr std::chrono::milliseconds dependencyUpdateDelay = 100ms;

/// Documents that are loaded anew at a time after edits of others. The network manager has six
/// connections to a server, one of which the change feed holds.
constexpr int parallelReloads = 4;

/// Wait before a failed one is repeated.
constexpr std::chrono::milliseconds reloadRetry = 5s;

/// How often the revisions of cached documents are asked for. Longer shows stale ones for as long.
constexpr std::chrono::milliseconds revisionFetchPeriod = 5s;

/// Change records of a save that are held back before all but the newest of each document are
/// dropped.
constexpr int heldRecords = 100000;

/// Work on change records done in one turn of the event loop.
constexpr std::chrono::milliseconds changeFeedSlice = 4ms;

/// The sign of life that the continuous feed asks for, the silence after which it is given up, and
/// how often that is looked at. Shorter notices a dead connection sooner and costs traffic.
constexpr std::chrono::milliseconds feedHeartbeat = 20s;
constexpr std::chrono::milliseconds feedSilence = 40s;
constexpr std::chrono::milliseconds feedWatchdog = 60s;

/// Wait before a continuous feed that ended is opened again, and before looking again for a network
/// manager.
constexpr std::chrono::milliseconds feedReconnect = 8s;
constexpr std::chrono::milliseconds feedManagerWait = 1s;

/// Longest line of a continuous feed in bytes; one that has no end would fill the memory.
constexpr int maximumFeedLine = 64 * 1024 * 1024;

/// Between two looks at whether a long poll is to be sent, and the time after which the server
/// answers it without a change. After failures it is as many steps as there were, up to the limit.
constexpr std::chrono::milliseconds longPollPeriod = 2s;
constexpr std::chrono::milliseconds longPollTimeout = 12s;
constexpr std::chrono::milliseconds longPollRetryStep = 2s;
constexpr int longPollRetryLimit = 5;

/// Between two polls. Shorter shows edits of others sooner and costs as many more requests.
constexpr std::chrono::milliseconds pollPeriod = 40s;

/// The memory of the document cache grows by this. Larger copies more when a document comes while
/// the cache is being written.
constexpr qint64 cacheSegmentSize = 1024LL * 1024;

/// Garbage in the document cache below which a store does not compact. Larger makes files larger,
/// smaller copies the cache more often.
constexpr qint64 cacheGarbageForStore = 256LL * 1024;

/// Garbage, if it is half of the cache as well, that compacts at once. Larger takes more memory in
/// long runs without a store.
constexpr qint64 cacheGarbageAtOnce = 64LL * 1024 * 1024;

/// Largest content of the document cache: what one LZ4 block can take. More is not cached.
constexpr qint64 cacheSizeLimit = 0x7E000000;

/// Age at which a file that a killed writer has left is removed. Smaller may hit a writer that
/// runs.
constexpr std::chrono::seconds strayFileAge = 24h;

/// Bytes of an attachment that are in memory while it is copied. Larger saves system calls.
constexpr std::size_t attachmentCopySize = std::size_t(1024) * 1024;

/// Largest image that is read, in MiB of decoded pixels. Larger lets a header that lies take as
/// much memory.
constexpr int decodedImageLimit = 512;

/// Base64 text of attachments that goes inside a document when it is uploaded, in bytes. Larger
/// saves requests and takes more memory.
constexpr qint64 inlineAttachmentLimit = 5LL * 1024 * 1024;

/// Length of a stored document in bytes above which its upload is warned of. CouchDB takes 8 MB
/// unless it is told otherwise.
constexpr qint64 largeDocument = 16LL * 1024 * 1024;

/// Documents whose upload is being prepared at a time; as many are in memory with their
/// attachments.
constexpr int parallelPreparations = 2;

/// Conflicts of one upload that are answered at once; before each further attempt there is a wait,
/// which doubles up to the limit.
constexpr int promptConflictRetries = 4;
constexpr std::chrono::milliseconds conflictRetryBase = 1s;
constexpr std::chrono::milliseconds conflictRetryLimit = 30s;

/// Bytes of a server's refusal that are logged.
constexpr int loggedAnswerSize = 1024;

/// Wait from the last reason for a query of a listing to that query. Longer gathers more reasons.
constexpr std::chrono::milliseconds listingDelay = 100ms;

/// Wait from a reason for counting references to the query. Longer gathers more reasons, and shows
/// counts later.
constexpr std::chrono::milliseconds referenceCountDelay = 70ms;

/// The same for the counts of a list of documents, which are asked for together.
constexpr std::chrono::milliseconds referenceCounterDelay = 100ms;

/// Wait from the last change to the evaluation of a filter, unless the application says otherwise.
/// Longer gathers more changes, and shows them later.
constexpr std::chrono::milliseconds filterDelay = 100ms;

/// The same for a sorter.
constexpr std::chrono::milliseconds sorterDelay = 30ms;

/// Wait from the clearing of a model's documents to the update of its rows. The documents that come
/// in that time come to the views as one change.
constexpr std::chrono::milliseconds modelBatchDelay = 30ms;

/// Longest custom type, behind "data:", that makes a generic document; types come from the
/// database.
constexpr int maximumTypeLength = 255;

/// Longest id of a document in a content archive, which may come from anybody.
constexpr int maximumIdLength = 255;

/// Sets of changes that can be undone. Each keeps what it replaced, and whole inline documents.
constexpr int undoLimit = 70;

/// Time from the beginning of a set in which the same edits join it. Longer makes more of a burst
/// of typing one step.
constexpr std::chrono::milliseconds undoMergeWindow = 500ms;

/// Items that are made in one list at a time, and entries that one paste makes. Larger lets bad
/// input, or a list that holds one item many times over, take more memory before it is refused.
constexpr int newItemsLimit = 1'000'000;
constexpr int pastedEntriesLimit = 100'000;

/// How often the countdown to the next attempt to fix errors goes on.
constexpr std::chrono::milliseconds errorRetryTick = 200ms;

/// Time between two attempts. Shorter notices sooner that a cause is gone, and asks a server that
/// is down as often.
constexpr std::chrono::milliseconds errorRetryPeriod = 15s;

/// Wait from the last new error to its report in the log, so that one that passes is not reported.
constexpr std::chrono::seconds errorReportDelay = 20s;
constexpr std::chrono::seconds errorReportDelayAfterFix = 5s;

/// Each report waits longer by the step than the one before, up to the limit.
constexpr std::chrono::seconds errorReportStep = 300s;
constexpr std::chrono::seconds errorReportLimit = 3600s;

/// How often the status of downloads follows them. Shorter moves a progress bar more smoothly.
constexpr std::chrono::milliseconds downloadTick = 1s;

} // namespace vo::data::tuning
