// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/archive/documentarchive.h>

#include <vorrel/data/archive/archiveformat_p.h>
#include <vorrel/data/base/logging_p.h>

#include <QtCore/QFileInfo>

namespace vo::data {

DocumentArchive::DocumentArchive(const QString &path)
    : m_file(path)
{
    m_error = parseArchive();
}

DocumentArchive::~DocumentArchive() = default;

DocumentArchive::Error DocumentArchive::parseArchive()
{
    const QFileInfo info(m_file);
    if (!info.exists()) {
        return NotFound;
    }
    // To open a pipe would wait for its writer, and maybe for ever.
    const bool mayOpen = info.isFile() || info.isDir();
    if (!mayOpen || !m_file.open(QIODevice::ReadOnly)) {
        const QString text = mayOpen ? m_file.errorString() : QStringLiteral("Not a regular file");
        qCCritical(lcData, "File open error %d: %s",
                   mayOpen ? int(m_file.error()) : int(QFileDevice::OpenError), qPrintable(text));
        return NotReadable;
    }
    const qint64 size = m_file.size();
    if (size < archiveformat::headerSize) {
        return Invalid;
    }
    m_map = m_file.map(0, size);
    if (!m_map) {
        return NotReadable;
    }
    return archiveformat::parse(m_map, size, m_chunks) ? NoError : Invalid;
}

} // namespace vo::data
