// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/documents/scriptasset.h>

namespace vo::data {

ScriptAsset::ScriptAsset(Context *context)
    : Asset(context)
{ }

ScriptAsset::~ScriptAsset() = default;

} // namespace vo::data

#include "moc_scriptasset.cpp"
