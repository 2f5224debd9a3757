// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "playlist.h"

#include <numeric>

using namespace vo::data;

struct Playlist::Private
{
    Playlist *const q;
    Property<QString> name { "name", q };
    Property<bool> loop { "loop", true, q };
    LinkedDocumentProperty<Location> shop { "shop", q };
    InlineDocumentListProperty<PlaylistEntry> entries { "entries", q };
};

Playlist::Playlist(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{
    connect(this, &Playlist::entriesChanged, this, &Playlist::followEntries);
}

Playlist::~Playlist() = default;

VO_DEFINE_PROPERTY(Playlist, QString, name, setName)
VO_DEFINE_PROPERTY(Playlist, bool, loop, setLoop)
VO_DEFINE_PROPERTY(Playlist, vo::data::Location *, shop, setShop)

QList<PlaylistEntry *> Playlist::entries() const
{
    return d->entries.get();
}

QQmlListProperty<PlaylistEntry> Playlist::entryList()
{
    return { this, nullptr,
             [](QQmlListProperty<PlaylistEntry> *list) {
                 return static_cast<Playlist *>(list->object)->entries().size();
             },
             [](QQmlListProperty<PlaylistEntry> *list, auto index) {
                 return static_cast<Playlist *>(list->object)->entries().value(index);
             } };
}

PlaylistEntry *Playlist::addEntry(const QString &title)
{
    if (accessLevel() < WriteAccess) {
        return nullptr;
    }
    auto *entry =
        static_cast<PlaylistEntry *>(InlineDocument::create(QStringLiteral("playlistentry"), this));
    entry->setTitle(title);
    d->entries.insert(entry, -1);
    return entry;
}

int Playlist::duration() const
{
    const QList<PlaylistEntry *> all = entries();
    return std::accumulate(all.begin(), all.end(), 0, [](int sum, const PlaylistEntry *entry) {
        return sum + entry->seconds();
    });
}

void Playlist::followEntries()
{
    const QList<PlaylistEntry *> all = entries();
    for (const PlaylistEntry *entry : all) {
        connect(entry, &PlaylistEntry::secondsChanged, this, &Playlist::durationChanged,
                Qt::UniqueConnection);
    }
    Q_EMIT durationChanged();
}

void registerPlaylists()
{
    registerDocument<PlaylistEntry>();
    registerDocument<Playlist>();
    const QString reason = QStringLiteral("Documents are made by a Context");
    qmlRegisterUncreatableType<PlaylistEntry>("Playlists", 1, 0, "PlaylistEntry", reason);
    qmlRegisterUncreatableType<Playlist>("Playlists", 1, 0, "Playlist", reason);
}
