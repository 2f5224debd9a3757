// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/mediaassetfolder.h>

namespace vo::data {

/// The folder that all others lie in. Every Context has it, so that nobody has to store it.
class VORREL_DATACORE_EXPORT MediaAssetRootFolder : public vo::data::MediaAssetFolder
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MediaAssetRootFolder)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "root")
    Q_CLASSINFO("AutoInstance", "vorrel.folder.Root")
    Q_PROPERTY(QString label READ label CONSTANT STORED false)

public:
    explicit MediaAssetRootFolder(Context *context);
    ~MediaAssetRootFolder() override;

    /// Its id in every database.
    [[nodiscard]] static QByteArray rootId();

    /// A text of the library.
    [[nodiscard]] QString label() const override;

    /// Every Context makes one, which must not be stored unless somebody edits it.
    [[nodiscard]] StorageFlags storageFlags() const override;
};

} // namespace vo::data
