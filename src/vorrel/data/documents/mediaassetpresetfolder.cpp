// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/mediaassetpresetfolder.h>

#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/documents/mediaasset.h>

namespace vo::data {

MediaAssetPresetFolder::MediaAssetPresetFolder(Context *context)
    : MediaAssetFolder(context)
{ }

MediaAssetPresetFolder::~MediaAssetPresetFolder() = default;

QString MediaAssetPresetFolder::label() const
{
    return qtTrId(textids::mediaPresetFolder);
}

Document::StorageFlags MediaAssetPresetFolder::storageFlags() const
{
    return CreatedInternally;
}

} // namespace vo::data

#include "moc_mediaassetpresetfolder.cpp"
