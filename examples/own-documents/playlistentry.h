// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "playlists_export.h"

#include <VorrelDataCore>

/// What a screen shows for some seconds, perhaps to praise a product. A part of a Playlist.
class PLAYLISTS_EXPORT PlaylistEntry : public vo::data::InlineDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "playlistentry")
    VO_PROPERTY(QString, title, setTitle)
    VO_PROPERTY(int, seconds, setSeconds)
    VO_PROPERTY(vo::data::Product *, product, setProduct)

public:
    explicit PlaylistEntry(vo::data::Document *parent);
    ~PlaylistEntry() override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
