// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

/// Ids of translated texts (for qtTrId) and keys of application messages.
namespace vo::data::textids {

/// The name of a document whose class gives none.
constexpr char linkedDocumentTypeName[] = "11c13098fb478fea";

/// A link was refused because it would have closed a cycle. Parameters: "source", "target",
/// "cycle".
constexpr char dependencyCycle[] = "vorrel.error.DependencyCycle";

} // namespace vo::data::textids
