// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
.pragma library

// What the window shows of a document: which properties and which structs a type has, and how
// their values read.

const properties = {
    "asset:image": ["fileName", "hash"],
    "customer": ["fbtoken"],
    "device": ["serialNumber", "location"],
    "group:product": ["parentGroup"],
    "group:tag": ["parentGroup"],
    "location": ["address", "zipCode", "city", "country", "position", "notes"],
    "product": ["name", "description", "price", "productGroup", "primaryImage"],
    "tag": ["name", "icon", "applicableTypes"],
    "tag:product": ["name", "icon", "applicableTypes", "tagGroup"]
};

const typeTitles = {
    "asset:image": "Image",
    "colorpalette": "Colour palette",
    "group:product": "Product group",
    "group:tag": "Tag group",
    "keyvaluestore": "Key-value store",
    "tag:product": "Product tag"
};

const structs = {
    "data:campaign": ["campaign", "phase-1", "phase-2", "locations"],
    "data:catalogue": ["catalogue"],
    "data:note": ["note"],
    "data:opening:hours": ["schedule", "mon", "tue", "wed", "thu", "fri", "sat", "sun"],
    "data:playlist": ["playlist", "slot-1", "slot-2", "slot-3", "slot-4"],
    "data:screen:layout": ["layout", "zone-hero", "zone-main", "zone-strip", "widget-clock",
                           "widget-hours"],
    "product": ["tags"]
};

// The first part of a type.
const kinds = ["asset", "colorpalette", "customer", "data", "device", "group", "keyvaluestore",
               "location", "product", "tag"];

const kindTitles = {
    "data": "Content", "device": "Devices", "keyvaluestore": "Settings", "location": "Locations",
    "product": "Products", "tag": "Tags"
};

function kind(type) {
    const end = type.indexOf(":");
    return end < 0 ? type : type.slice(0, end);
}

// What to choose from: all documents, or those of a kind.
function kindChoices(counts) {
    const all = Object.values(counts).reduce((sum, count) => sum + count, 0);
    return [{ "text": "All", "value": "", "count": all }].concat(Object.keys(kindTitles).map(
        kind => ({ "text": kindTitles[kind], "value": kind, "count": counts[kind] || 0 })));
}

function groupChoices(groups) {
    return [{ "text": "All groups", "value": null }].concat(groups.map(
        group => ({ "text": group.label, "value": group })));
}

// "zipCode" reads "Zip code", "slot-1" reads "Slot 1".
function title(name) {
    const words = name.replace(/([a-z])([A-Z0-9])/g, "$1 $2").replace(/[-_:]/g, " ").toLowerCase();
    return words.charAt(0).toUpperCase() + words.slice(1);
}

// "data:opening:hours" reads "Opening hours".
function typeTitle(type) {
    return typeTitles[type] || title(type.replace(/^data:/, ""));
}

// The image document that shows what a document is about, or null.
function image(document) {
    return document.hasType("asset:image") ? document : document.primaryImage || null;
}

// What the function edits is one step of undo.
function edit(document, how) {
    document.beginRecordChanges();
    how();
    document.endRecordChanges();
}

// Makes a local file the picture of a product, as one step of undo.
function addPicture(product, file) {
    edit(product, () => {
        const image = product.context.createDocument("asset:image");
        image.file = file;
        product.primaryImage = image;
    });
}

// A product has its name for a label. Fast typing is one step.
function rename(document, text) {
    edit(document, () => document[document.hasType("product") ? "name" : "label"] = text);
}

function fieldsOf(object) {
    return Object.keys(object).map(name => ({ "title": title(name), "value": object[name] }));
}

// The tables for the content of a document, as { title, fields: { title, value }, wide }. The first
// one is the main one.
function sections(document) {
    const type = document.type;
    const result = [];
    if (properties[type])
        result.push({ "title": "Properties", "fields": properties[type].map(
            name => ({ "title": title(name), "value": document[name] })) });
    if (type === "colorpalette")
        result.push({ "title": "Swatches", "fields": list(document.swatches).map(
            (swatch, index) => ({ "title": "Swatch " + (index + 1), "value": swatch.colors })) });
    if (type === "keyvaluestore")
        result.push({ "title": "Values", "fields": fieldsOf(document.data) });
    for (const name of structs[type] || [])
        result.push({ "title": title(name), "fields": fieldsOf(document.getStruct(name)) });
    return result.filter(section => section.fields.length > 0).map(
        (section, index) => ({ "title": section.title, "fields": section.fields, "wide": index === 0 }));
}

// The tables for what a document refers to and what refers to it.
function linkSections(document, referrers) {
    return [linkSection("Refers to", targets(document)), linkSection("Referred to by", referrers)]
        .filter(section => section.fields.length > 0);
}

// A list property as an array.
function list(property) {
    return Array.prototype.slice.call(property);
}

// The documents that a document points at; what lies inside it has the same id.
function targets(document) {
    return list(document.attachedDocuments).filter(
        other => other.documentId !== document.documentId);
}

// A table of links to documents, or to the first of them if there are many.
function linkSection(title, documents) {
    const fields = documents.slice(0, 20).map(
        other => ({ "title": typeTitle(other.type), "value": other }));
    if (fields.length < documents.length)
        fields.push({ "title": "", "value": "and " + (documents.length - fields.length) + " more" });
    return { "title": title, "fields": fields, "wide": false };
}

function isDocument(value) {
    return typeof value === "object" && value !== null && value.documentId !== undefined;
}

// The id in a reference to a document; empty for everything else.
function reference(value) {
    const match = typeof value === "string" ? value.match(/^\$ref\(0,([\w.-]+)\)$/) : null;
    return match ? match[1] : "";
}

// The colours of a value that is one or a list of them; else none.
function colors(value) {
    const texts = typeof value === "string" ? [value] : Array.isArray(value) ? value : [];
    return texts.filter(text => /^#([0-9a-f]{2}){3,4}$/i.test(text));
}

function text(value) {
    if (value === null || value === undefined || value === "")
        return "–";
    if (typeof value === "boolean")
        return value ? "yes" : "no";
    if (typeof value === "object" && value.length !== undefined)
        return Array.prototype.map.call(value, text).join(", ");
    if (value.latitude !== undefined)
        return value.isValid ? value.latitude.toFixed(4) + ", " + value.longitude.toFixed(4) : "–";
    if (Object.prototype.toString.call(value) === "[object Object]")
        return Object.keys(value).map(name => name + " " + text(value[name])).join(", ");
    return String(value);
}

// What is shown of a revision: its count and the start of its digest.
function shortRevision(revision) {
    return revision.slice(0, revision.indexOf("-") + 7);
}

function date(value) {
    return isNaN(value) ? "–" : Qt.formatDateTime(value, "d MMM yyyy, hh:mm");
}
