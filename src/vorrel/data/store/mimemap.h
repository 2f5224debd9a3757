// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vo::data {

/// MIME types of files by their suffixes, and the other way round. A table of the kinds of files
/// that catalogues are made of comes first, so that their types are the same on every machine; for
/// others the MIME database of the system is asked. May be used on any thread.
class VORREL_DATACORE_EXPORT MimeMap
{
public:
    MimeMap() = delete;

    /// "application/octet-stream" if nothing is known. Looks at the suffix, and only for one that
    /// is not in the table into the file, if it exists.
    [[nodiscard]] static QByteArray mimeTypeForFile(const QString &fileName);

    /// The same for a file with that \p suffix, given without the dot.
    [[nodiscard]] static QByteArray mimeTypeForSuffix(const QString &suffix);

    /// In lower case and without the dot; empty for an unknown type.
    [[nodiscard]] static QByteArray suffixForMimetype(const QString &mimeType);
};

} // namespace vo::data
