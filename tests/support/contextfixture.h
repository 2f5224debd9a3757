// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/fakecouch.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>

#include <chrono>
#include <memory>

namespace vo::test {

/// A Context on a database in memory, with a database name and a cache location of its own. Its
/// load queue ticks only when it is told to, so that nothing depends on time, and no change feed
/// is open.
class ContextFixture
{
public:
    /// Takes \p context over, or makes one.
    explicit ContextFixture(data::Context *context = nullptr);
    ~ContextFixture();
    Q_DISABLE_COPY_MOVE(ContextFixture)

    [[nodiscard]] data::Context *operator->() const { return m_context.get(); }
    [[nodiscard]] data::Context *context() const { return m_context.get(); }
    [[nodiscard]] FakeCouch &couch() { return m_couch; }
    void destroyContext() { m_context.reset(); }

    /// Stores a tag in the database.
    void store(const QString &id, const QStringList &references = {});

    /// Lets the load queue tick by itself from now on.
    void tickByItself() { m_ticks.reset(); }

    /// One tick of the load queue, and all that follows from it without the passing of time.
    void tick();

    /// Ticks until nothing is being loaded any more. False if that takes more than \p ticks.
    [[nodiscard]] bool finishLoading(int ticks = 1000);

    /// The document, loaded and built; null if there is none.
    [[nodiscard]] data::LinkedDocument *load(const QString &id);

    /// Begins an upload of a new document and of all that is dirty. Until finishSaving(), the
    /// database keeps its answers back.
    data::SaveQueue *startSaving();

    /// True if what was being saved is saved now.
    [[nodiscard]] bool finishSaving();

    /// Uploads all that is dirty.
    [[nodiscard]] bool save();

    /// A new tag, clean if it has a \p revision.
    data::LinkedDocument *create(const QString &id, const QString &revision = {});

private:
    QTemporaryDir m_cache;
    std::unique_ptr<QObject> m_ticks; // keeps them back
    FakeCouch m_couch;
    std::unique_ptr<data::Context> m_context;
};

/// Those of \p documents that not every Context has from its start.
[[nodiscard]] QList<data::Document *> ownDocuments(QList<data::Document *> documents);

/// Turns the event loop some times, and deletes what is to be deleted later.
void processEvents();

/// One tick of the timer of \p receiver that has this period. False if none runs.
bool tickTimer(QObject *receiver, std::chrono::milliseconds period);

/// Uses up the time that deferred work may take in one turn, so that no more of it follows in that
/// turn.
void useUpTheSlice();

} // namespace vo::test
