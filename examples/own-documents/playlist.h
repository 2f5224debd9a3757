// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "playlistentry.h"

/// What the screens of a shop show, one entry after the other.
class PLAYLISTS_EXPORT Playlist : public vo::data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "playlist")
    VO_PROPERTY(QString, name, setName)
    VO_PROPERTY(bool, loop, setLoop)
    VO_PROPERTY(vo::data::Location *, shop, setShop)
    Q_PROPERTY(QQmlListProperty<PlaylistEntry> entries READ entryList NOTIFY entriesChanged)
    Q_PROPERTY(int duration READ duration NOTIFY durationChanged STORED false)

public:
    explicit Playlist(vo::data::Context *context);
    ~Playlist() override;

    [[nodiscard]] QList<PlaylistEntry *> entries() const;
    [[nodiscard]] QQmlListProperty<PlaylistEntry> entryList();

    /// Appends an entry; null below WriteAccess.
    Q_INVOKABLE PlaylistEntry *addEntry(const QString &title);

    /// Of all entries, in seconds.
    [[nodiscard]] int duration() const;

Q_SIGNALS:
    void entriesChanged();
    void durationChanged();

private:
    void followEntries();

    struct Private;
    const std::unique_ptr<Private> d;
};

/// Makes both classes known, here and in QML. Call it before the first Context is made.
PLAYLISTS_EXPORT void registerPlaylists();
