// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/archive/documentarchive.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

/// The file format of content archives: docs/formats/archive.md. The readers trust nothing.
namespace vo::data::archiveformat {

constexpr int headerSize = 8; // bytes

/// What is in an attachment chunk.
struct AttachmentPayload
{
    QByteArray property;
    QByteArray hash;
    QByteArray mimeType;
    QByteArray content; // lies in the chunk
};

/// The chunks of the \p size bytes at \p file, in which they point. False, with the chunks before
/// it, at the first one that is wrong.
[[nodiscard]] bool parse(const uchar *file, qint64 size, QList<DocumentChunk> &chunks);

/// The bytes of a chunk, which are not copied. A null array if it is larger than an array can be.
[[nodiscard]] QByteArray payload(const DocumentChunk &chunk);

/// The JSON object of a JsonText or a BinaryJson. None if the payload is anything else.
[[nodiscard]] std::optional<QJsonObject> readJson(const DocumentChunk &chunk);

/// The parts of an Attachment. None if a part goes beyond the payload, if the hash is not the MD5
/// of the content by its size, or if the MIME type could not stand in an HTTP header.
[[nodiscard]] std::optional<AttachmentPayload> readAttachment(const DocumentChunk &chunk);

/// Writes an archive, chunk by chunk: no more than one of them is in memory.
class Writer
{
public:
    /// Begins at the start of \p device, which is open for writing and not sequential.
    explicit Writer(QIODevice &device);

    void add(DocumentChunk::Type type, const QByteArray &payload);

    /// An attachment with all of \p content, which is open for reading. False, and nothing is
    /// written, if that cannot be read, or if it is too large for a chunk.
    [[nodiscard]] bool addAttachment(const AttachmentPayload &description, QIODevice &content);

    /// Writes the header. False if this or any write before has failed.
    [[nodiscard]] bool finish();

    /// Archives count their chunks in 16 bits.
    [[nodiscard]] int chunkCount() const { return m_count; }

private:
    void add(DocumentChunk chunk);
    void write(const char *bytes, qint64 size);

    QIODevice &m_device;
    int m_count = 0;
    bool m_written = true; // so far
};

} // namespace vo::data::archiveformat
