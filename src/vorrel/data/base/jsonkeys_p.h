// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QLatin1String>

/// The reserved keys of a stored document and of the database's answers.
namespace vo::data::jsonkeys {

// Stored documents
constexpr QLatin1String id("_id");
constexpr QLatin1String revision("_rev");
constexpr QLatin1String attachments("_attachments");
constexpr QLatin1String type("type");
constexpr QLatin1String label("label");
constexpr QLatin1String references("references");
constexpr QLatin1String created("created");
constexpr QLatin1String edited("edited");
constexpr QLatin1String creationVersion("creationVersion");
constexpr QLatin1String customData(":data");
constexpr QLatin1String accessControl("accessControl");
constexpr QLatin1String wasCached("wasCached");

// Prefixes of the keys inside ":data"
constexpr QLatin1String structPrefix("s:");
constexpr QLatin1String listPrefix("l:");

// What a copied scope tells besides its entries
constexpr QLatin1String scope("scope");

// Attachment stubs
constexpr QLatin1String contentType("content_type");
constexpr QLatin1String length("length");
constexpr QLatin1String stub("stub");
constexpr QLatin1String attachmentData("data");

// Bulk fetch
constexpr QLatin1String keys("keys");
constexpr QLatin1String rows("rows");
constexpr QLatin1String key("key");
constexpr QLatin1String doc("doc");

// Change feed and revisions
constexpr QLatin1String sequence("seq");
constexpr QLatin1String lastSequence("last_seq");
constexpr QLatin1String results("results");
constexpr QLatin1String recordId("id");
constexpr QLatin1String changes("changes");
constexpr QLatin1String rev("rev");
constexpr QLatin1String value("value");
constexpr QLatin1String deleted("deleted");
constexpr QLatin1String error("error");
constexpr QLatin1String reason("reason");

// Texts in several languages
constexpr QLatin1String items("items");

// Schema values
constexpr QLatin1String schemaValues("values");
constexpr QLatin1String boolean("boolean");
constexpr QLatin1String color("color");
constexpr QLatin1String date("date");
constexpr QLatin1String documentLink("documentLink");
constexpr QLatin1String index("index");
constexpr QLatin1String integer("integer");
constexpr QLatin1String media("media");
constexpr QLatin1String product("product");
constexpr QLatin1String productLink("productLink"); // the older form
constexpr QLatin1String real("real");
constexpr QLatin1String string("string");
constexpr QLatin1String time("time");
constexpr QLatin1String url("url");

// Coordinates
constexpr QLatin1String latitude("lat");
constexpr QLatin1String longitude("lon");

// Fonts
constexpr QLatin1String fontFamily("family");
constexpr QLatin1String fontPixelSize("pixelSize");
constexpr QLatin1String fontWeight("weight");
constexpr QLatin1String fontCapitalization("capitalization");
constexpr QLatin1String fontItalic("italic");
constexpr QLatin1String fontLetterSpacing("letterSpacing");
constexpr QLatin1String fontWordSpacing("wordSpacing");

} // namespace vo::data::jsonkeys
