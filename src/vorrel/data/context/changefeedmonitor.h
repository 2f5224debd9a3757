// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/context.h>

#include <QtCore/QPointer>

namespace vo::data {

/// Tells a Context what changes in its database. The Context makes one of the type that it is set
/// to when it opens a database, owns it, and destroys it in a later turn when another database is
/// opened. It begins to work in its constructor, and lives on the thread of the Context.
///
/// The types of Context::ChangeFeedMonitorType are registered by the library; an application may
/// put a class of its own in the place of one.
class VORREL_DATACORE_EXPORT ChangeFeedMonitor : public QObject
{
    Q_OBJECT
public:
    using Creator = ChangeFeedMonitor *(*)(const QString &database, Context *context);

    /// From now on \p creator makes the monitors of \p type.
    static void registerType(Context::ChangeFeedMonitorType type, Creator creator);

    /// A monitor of \p type. For a type that is not registered, and where there is no database
    /// because its name is empty, a silent one; null if that is not registered either.
    static ChangeFeedMonitor *create(Context::ChangeFeedMonitorType type, const QString &database,
                                     Context *context);

    /// \p context becomes the parent.
    ChangeFeedMonitor(const QString &database, Context *context);
    ~ChangeFeedMonitor() override;

    /// A document has joined the Context.
    virtual void registerDocument(LinkedDocument *document) = 0;

    /// Makes the lasting error of an interrupted feed, unless there is one, and adds it to
    /// \p context.
    virtual void reportError(Context *context) = 0;

    /// Of how many documents the newest revision is known.
    [[nodiscard]] virtual int revisionCount() const;

    /// Null while the Context is being destroyed.
    [[nodiscard]] Context *context() const;
    [[nodiscard]] QString database() const;

    /// That of the Context; null without one.
    [[nodiscard]] QNetworkAccessManager *networkAccessManager() const;

    /// The "_changes" of the database, with the user info of the service URL.
    [[nodiscard]] QUrl feedUrl() const;

Q_SIGNALS:
    void newDocument(const QString &id);
    void newRevision(const QString &id, const QString &revision);

    /// The feed is interrupted. The Context answers with reportError().
    void error();

private:
    const QString m_database;
    const QPointer<Context> m_context;
};

} // namespace vo::data
