// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/archive/archiveformat_p.h>

#include <vorrel/util/crc32.h>
#include <vorrel/util/json.h>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QJsonDocument>
#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>

namespace vo::data::archiveformat {

namespace {

constexpr std::array<char, 6> magic { 'V', 'P', 'K', 'G', 1, 0 }; // the last two are the version
constexpr qint64 chunkHeaderSize = offsetof(DocumentChunk, data);
static_assert(chunkHeaderSize == 10);

constexpr qint64 largestPayload = std::numeric_limits<quint32>::max();
constexpr qint64 largestArray = std::numeric_limits<int>::max() - 64; // with either Qt version
constexpr int hashSize = 16;                                          // bytes
constexpr int longestMimeType = 255;

template <typename Number>
Number number(const uchar *&cursor)
{
    const auto value = qFromLittleEndian<Number>(cursor);
    cursor += sizeof(Number);
    return value;
}

DocumentChunk readHeader(const uchar *cursor)
{
    DocumentChunk chunk {};
    chunk.type = number<quint16>(cursor);
    chunk.size = number<quint32>(cursor);
    chunk.crc = number<quint32>(cursor);
    chunk.data = reinterpret_cast<const char *>(cursor);
    return chunk;
}

/// Byte arrays as a QDataStream writes them, their length first. QDataStream would copy them.
class ArrayReader
{
public:
    explicit ArrayReader(const DocumentChunk &chunk)
        : m_bytes(chunk.data)
        , m_end(chunk.data + chunk.size)
    { }

    bool read(QByteArray &array)
    {
        constexpr quint32 null = 0xffffffff;
        if (m_end - m_bytes < qint64(sizeof(quint32))) {
            return false;
        }
        const auto told = qFromBigEndian<quint32>(m_bytes);
        const qint64 size = told == null ? 0 : told;
        m_bytes += sizeof(quint32);
        if (size > std::min<qint64>(m_end - m_bytes, largestArray)) {
            return false;
        }
        array = QByteArray::fromRawData(m_bytes, int(size));
        m_bytes += size;
        return true;
    }

private:
    const char *m_bytes;
    const char *const m_end;
};

// One with a line break would go on as another header of an upload.
bool isMimeType(const QByteArray &text)
{
    return text.size() <= longestMimeType
        && std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

QByteArray deepCopy(const QByteArray &array)
{
    return QByteArray(array.constData(), array.size());
}

} // namespace

bool parse(const uchar *file, qint64 size, QList<DocumentChunk> &chunks)
{
    if (size < headerSize || !std::equal(magic.begin(), magic.end(), file)) {
        return false;
    }
    const int count = qFromLittleEndian<quint16>(file + magic.size());
    qint64 offset = headerSize;
    for (int index = 0; index < count; ++index) {
        if (offset + chunkHeaderSize >= size) { // so the last chunk cannot be empty
            return false;
        }
        const DocumentChunk chunk = readHeader(file + offset);
        offset += chunkHeaderSize + chunk.size;
        if (offset > size || util::Crc32::create(chunk.data, chunk.size) != chunk.crc) {
            return false;
        }
        chunks.append(chunk);
    }
    return count > 0;
}

QByteArray payload(const DocumentChunk &chunk)
{
    return chunk.size > largestArray ? QByteArray()
                                     : QByteArray::fromRawData(chunk.data, int(chunk.size));
}

std::optional<QJsonObject> readJson(const DocumentChunk &chunk)
{
    const QByteArray bytes = payload(chunk);
    const QJsonDocument document = chunk.type == DocumentChunk::BinaryJson
        ? util::json::fromBinaryData(bytes)
        : QJsonDocument::fromJson(bytes);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

std::optional<AttachmentPayload> readAttachment(const DocumentChunk &chunk)
{
    AttachmentPayload attachment;
    ArrayReader arrays(chunk);
    if (!arrays.read(attachment.property) || !arrays.read(attachment.hash)
        || !arrays.read(attachment.mimeType) || !arrays.read(attachment.content)
        || attachment.hash.size() != hashSize || !isMimeType(attachment.mimeType)) {
        return std::nullopt;
    }
    // Those that outlive the chunk
    attachment.hash = deepCopy(attachment.hash);
    attachment.mimeType = deepCopy(attachment.mimeType);
    return attachment;
}

// Writing

Writer::Writer(QIODevice &device)
    : m_device(device)
{
    write(std::array<char, headerSize> {}.data(), headerSize); // the real one comes at the end
}

void Writer::add(DocumentChunk::Type type, const QByteArray &payload)
{
    DocumentChunk chunk {};
    chunk.type = type;
    chunk.size = quint32(payload.size());
    chunk.data = payload.constData();
    add(chunk);
}

void Writer::add(DocumentChunk chunk)
{
    const qint64 size = chunk.size;
    chunk.crc = qToLittleEndian(util::Crc32::create(chunk.data, size));
    chunk.type = qToLittleEndian<quint16>(chunk.type);
    chunk.size = qToLittleEndian<quint32>(chunk.size);
    write(reinterpret_cast<const char *>(&chunk), chunkHeaderSize);
    write(chunk.data, size);
    ++m_count;
}

bool Writer::addAttachment(const AttachmentPayload &description, QIODevice &content)
{
    const qint64 contentSize = content.size();
    QByteArray start;
    QDataStream stream(&start, QIODevice::WriteOnly);
    stream << description.property << description.hash << description.mimeType
           << quint32(contentSize);
    const qint64 size = start.size() + contentSize;
    if (size > largestPayload) {
        return false;
    }
    // Not an array, which would be filled with zeros, and could not be that large with Qt 5.
    const std::unique_ptr<char[]> bytes(new char[std::size_t(size)]); // NOLINT(*-avoid-c-arrays)
    std::memcpy(bytes.get(), start.constData(), std::size_t(start.size()));
    if (content.read(bytes.get() + start.size(), contentSize) != contentSize) {
        return false;
    }
    DocumentChunk chunk {};
    chunk.type = DocumentChunk::Attachment;
    chunk.size = quint32(size);
    chunk.data = bytes.get();
    add(chunk);
    return true;
}

bool Writer::finish()
{
    m_written = m_written && m_device.seek(0);
    write(magic.data(), magic.size());
    const auto count = qToLittleEndian(quint16(m_count));
    write(reinterpret_cast<const char *>(&count), sizeof count);
    return m_written;
}

void Writer::write(const char *bytes, qint64 size)
{
    m_written = m_written && m_device.write(bytes, size) == size;
}

} // namespace vo::data::archiveformat
