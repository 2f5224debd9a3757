// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace vo::benchmark {

/// The id of the document with this number.
QString sampleId(int number);

/// A name as in a catalogue, the same for a number in each run: what a search finds lies scattered
/// over a list.
QString sampleName(int number);

/// A typical document, the same in each run: some 1,200 bytes of JSON with 15 typed values, a
/// language text, references and 10 structs of free-form data.
QJsonObject sampleDocument(int number);
QByteArray sampleJson(int number);

/// The same as a generic document, which has no properties: its values are free data as well.
QJsonObject genericDocument(int number);

} // namespace vo::benchmark
