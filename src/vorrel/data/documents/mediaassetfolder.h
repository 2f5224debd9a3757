// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/core/linkeddocument.h>

namespace vo::data {

class MediaAsset;

/// A folder of media. Folders form a tree, whose root every Context has from its start: folders and
/// assets that are put into no other lie there.
///
///     ListView {
///         model: folder.assets
///         delegate: Text { text: modelData.label }
///     }
///
/// This is the base of the root, of the folder for presets and of MediaAssetCustomFolder, which is
/// the one that users make.
class VORREL_DATACORE_EXPORT MediaAssetFolder : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MediaAssetFolder)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_MOC_INCLUDE("vorrel/data/documents/mediaasset.h")
    Q_CLASSINFO("DocumentType", "mediaassetfolder")
    Q_PROPERTY(vo::data::MediaAssetFolder *parentFolder READ parentFolder CONSTANT STORED false)
    Q_PROPERTY(QQmlListProperty<vo::data::MediaAssetFolder> childFolders READ childFolderList NOTIFY
                   childFoldersChanged STORED false)
    Q_PROPERTY(QQmlListProperty<vo::data::MediaAsset> assets READ assetList NOTIFY assetsChanged
                   STORED false)

public:
    ~MediaAssetFolder() override;

    /// The folder that \p context has from its start; null only if an application has put a
    /// document of another type under its id.
    [[nodiscard]] static MediaAssetFolder *root(const Context *context);

    /// Null for the root and for the folder of presets, which lies in no other.
    [[nodiscard]] virtual MediaAssetFolder *parentFolder() const;

    /// The folders and assets whose parent this is, as far as they have been built, by id.
    [[nodiscard]] QList<MediaAssetFolder *> childFolders() const;
    [[nodiscard]] QList<MediaAsset *> assets() const;
    [[nodiscard]] QQmlListProperty<MediaAssetFolder> childFolderList();
    [[nodiscard]] QQmlListProperty<MediaAsset> assetList();

Q_SIGNALS:
    void childFoldersChanged();
    void assetsChanged();

protected:
    explicit MediaAssetFolder(Context *context);

private:
    friend class MediaAsset;
    friend class MediaAssetCustomFolder;

    void folderMoved();
    void assetMoved();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
