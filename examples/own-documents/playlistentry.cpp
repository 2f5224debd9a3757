// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "playlistentry.h"

using namespace vo::data;

struct PlaylistEntry::Private
{
    PlaylistEntry *const q;
    Property<QString> title { "title", q };
    Property<int> seconds { "seconds", 10, q };
    LinkedDocumentProperty<Product> product { "product", q };
};

PlaylistEntry::PlaylistEntry(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{ }

PlaylistEntry::~PlaylistEntry() = default;

VO_DEFINE_PROPERTY(PlaylistEntry, QString, title, setTitle)
VO_DEFINE_PROPERTY(PlaylistEntry, int, seconds, setSeconds)
VO_DEFINE_PROPERTY(PlaylistEntry, vo::data::Product *, product, setProduct)
