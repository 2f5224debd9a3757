// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/mediaassetfolder.h>

namespace vo::data {

/// The folder for what presets use, which every Context has. It lies in no other, so that users do
/// not see it among theirs; where it is imported, it becomes one of those.
class VORREL_DATACORE_EXPORT MediaAssetPresetFolder : public vo::data::MediaAssetFolder
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MediaAssetPresetFolder)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "presets")
    Q_CLASSINFO("AutoInstance", "cef9bcec49db47fcab262d75e742e5cf")
    Q_CLASSINFO("ExportType", "mediaassetfolder")
    Q_CLASSINFO("ExportLabel", "Von Vorlagen verwendete Medien")
    Q_PROPERTY(QString label READ label CONSTANT STORED false)

public:
    explicit MediaAssetPresetFolder(Context *context);
    ~MediaAssetPresetFolder() override;

    /// A text of the library.
    [[nodiscard]] QString label() const override;

    /// Every Context makes one, which must not be stored unless somebody edits it.
    [[nodiscard]] StorageFlags storageFlags() const override;
};

} // namespace vo::data
