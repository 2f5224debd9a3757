// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/exportgap.h>

#include <vorrel/util/dependencygraph.h>

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QStringList>

namespace vo::data {

class AttachmentProperty;
class Context;
class Document;
class LinkedDocument;

namespace archiveformat {
class Writer;
}

/// One export, or the look whether it is possible. A value for the stack of Document's functions.
class DocumentExporter
{
public:
    /// What \p document leads to, and what it lacks; its parent if it is an inline one. What
    /// \p dependencies lead to is left out, since the target has it.
    DocumentExporter(const Document *document, const QStringList &dependencies);

    [[nodiscard]] QList<ExportGap> gaps() const;

    /// Writes the archive \p path. \pre there are no gaps
    [[nodiscard]] bool write(const QString &path, const QStringList &excludedKeys) const;

private:
    void exclude();
    void collect();
    [[nodiscard]] QStringList references(const QString &id) const;
    void writeChunks(archiveformat::Writer &writer, const QStringList &excludedKeys) const;
    static void writeGroup(archiveformat::Writer &writer, const LinkedDocument *document,
                           const QStringList &excludedKeys);
    static bool writeAttachment(archiveformat::Writer &writer, const AttachmentProperty *property);

    const QPointer<Context> m_context;
    const QString m_rootId;
    const QStringList m_dependencies;
    QSet<QString> m_excluded;                    // ids
    QList<QPointer<LinkedDocument>> m_documents; // needed ones first
    QList<ExportGap> m_missing;
};

} // namespace vo::data
