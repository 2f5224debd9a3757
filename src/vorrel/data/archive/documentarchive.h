// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QString>

namespace vo::data {

/// A part of a content archive. Without padding, so that its first 10 bytes are the header that
/// stands in the file, on machines that are little-endian like the file.
#pragma pack(push, 1)
struct DocumentChunk
{
    enum Type : quint16 {
        RootId = 0,       ///< the document that was exported
        DocumentId = 1,   ///< begins the group of a document
        DocumentType = 2, ///< the type that a target makes it of
        BinaryJson = 3,   ///< what older programs wrote in the place of JsonText
        Attachment = 4,
        Dependency = 5, ///< a document that the target must have
        JsonText = 6,
    };

    quint16 type; ///< a Type, or a number that this version does not know
    quint32 size; ///< of the payload, in bytes
    quint32 crc;  ///< CRC-32 of the payload
    const char *data;
};
#pragma pack(pop)

/// Reads a content archive: a file that carries a document with all that it refers to. It is what
/// Document::exportDocument() writes and a DocumentImporter takes apart; programs that only look
/// into one use it directly.
///
///     const DocumentArchive archive(path);
///     if (archive.error() == DocumentArchive::NoError) {
///         const QList<DocumentChunk> chunks = archive.chunks();
///
/// The payloads are not copied: they lie in the file, which is mapped into memory until the
/// archive is destroyed. Nobody may shorten it meanwhile. Any thread may use one.
class VORREL_DATACORE_EXPORT DocumentArchive
{
public:
    enum Error {
        NoError = 0,
        NotFound = 1,
        NotReadable = 2, ///< it cannot be opened or mapped
        Invalid = 3,     ///< it is no archive, or damaged
    };

    /// Reads the file \p path at once. If that cannot be opened there is a critical log line.
    explicit DocumentArchive(const QString &path);
    ~DocumentArchive();
    Q_DISABLE_COPY_MOVE(DocumentArchive)

    [[nodiscard]] Error error() const { return m_error; }

    /// In the order of the file; those in front of the damage if the archive is invalid. Valid as
    /// long as the archive lives.
    [[nodiscard]] QList<DocumentChunk> chunks() const { return m_chunks; }

private:
    [[nodiscard]] Error parseArchive();

    Error m_error = NoError;
    QFile m_file;
    const uchar *m_map = nullptr;
    QList<DocumentChunk> m_chunks;
};

} // namespace vo::data

Q_DECLARE_TYPEINFO(vo::data::DocumentChunk, Q_PRIMITIVE_TYPE);
