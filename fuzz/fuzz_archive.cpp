// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// A content archive from anywhere: whatever is in it can be taken apart, written and taken apart
// again, with the same result.

#include <vorrel/data/archive/archiveformat_p.h>

#include <vorrel/util/crc32.h>

#include <QtCore/QBuffer>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cstdint>

using namespace vo::data;

namespace {

constexpr int headerSize = archiveformat::headerSize;
constexpr int chunkHeaderSize = 10;

void require(bool holds)
{
    if (!holds) {
        qFatal("The archive is not read as it was written");
    }
}

/// Gives each chunk the checksum that it needs, which a fuzzer would never find.
void mend(QByteArray &file)
{
    qint64 offset = headerSize;
    while (offset + chunkHeaderSize < file.size()) {
        char *header = file.data() + offset;
        const qint64 size = qFromLittleEndian<quint32>(header + 2);
        const qint64 present = std::min<qint64>(size, file.size() - offset - chunkHeaderSize);
        const quint32 crc = vo::util::Crc32::create(header + chunkHeaderSize, present);
        qToLittleEndian(crc, header + 6);
        offset += chunkHeaderSize + size;
    }
}

bool read(const QByteArray &file, QList<DocumentChunk> &chunks)
{
    return archiveformat::parse(reinterpret_cast<const uchar *>(file.constData()), file.size(),
                                chunks);
}

QByteArray write(const QList<DocumentChunk> &chunks)
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    archiveformat::Writer writer(file);
    for (const DocumentChunk &chunk : chunks) {
        auto attachment = archiveformat::readAttachment(chunk);
        QBuffer content;
        content.setData(attachment ? attachment->content : QByteArray());
        content.open(QIODevice::ReadOnly);
        if (chunk.type == DocumentChunk::Attachment && attachment) {
            require(writer.addAttachment(*attachment, content));
        } else {
            writer.add(DocumentChunk::Type(chunk.type), archiveformat::payload(chunk));
        }
    }
    require(writer.finish());
    return file.data();
}

void compare(const DocumentChunk &first, const DocumentChunk &second)
{
    require(first.type == second.type);
    const auto attachment = archiveformat::readAttachment(first);
    if (first.type == DocumentChunk::Attachment && attachment) {
        const auto other = archiveformat::readAttachment(second);
        require(other && other->property == attachment->property && other->hash == attachment->hash
                && other->mimeType == attachment->mimeType
                && other->content == attachment->content);
    } else {
        require(archiveformat::payload(first) == archiveformat::payload(second));
        require(archiveformat::readJson(first) == archiveformat::readJson(second));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    QByteArray file(reinterpret_cast<const char *>(bytes), int(size));
    mend(file);
    QList<DocumentChunk> chunks;
    const bool isValid = read(file, chunks);
    const QByteArray written = write(chunks);
    QList<DocumentChunk> again;
    // The last chunk of an archive cannot be empty, wherever it stood before.
    const bool mayEnd = !chunks.isEmpty() && chunks.constLast().size > 0;
    require(read(written, again) == mayEnd);
    require(!isValid || !mayEnd || chunks.size() == again.size());
    for (int index = 0; index < int(again.size()); ++index) {
        compare(chunks.at(index), again.at(index));
    }
    return 0;
}
