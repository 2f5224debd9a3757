// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

/// Ids of translated texts (for qtTrId) and keys of application messages.
namespace vo::data::textids {

/// The name of a document whose class gives none.
constexpr char linkedDocumentTypeName[] = "11c13098fb478fea";

/// The change feed is interrupted.
constexpr char changeFeedError[] = "fd627c988cb6a2da";

/// A request failed; the code of the NetworkError follows.
constexpr char networkErrorPrefix[] = "error.network.";

/// A file cannot be shown, because its download failed.
constexpr char attachmentError[] = "error.attachment";

/// The labels of the folders that every Context has.
constexpr char mediaRootFolder[] = "folder.mediaRoot";
constexpr char mediaPresetFolder[] = "folder.mediaPresets";

/// The style of a font; a word of its English name in lower case follows.
constexpr char fontStylePrefix[] = "fontstyle.";

/// The names of countries and languages; their codes follow.
constexpr char countryNamePrefix[] = "countryname.";
constexpr char languageNamePrefix[] = "languagename.";

/// A link was refused because it would have closed a cycle. Parameters: "source", "target",
/// "cycle".
constexpr char dependencyCycle[] = "vorrel.error.DependencyCycle";

} // namespace vo::data::textids
