// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Context: the export of documents. It stands here and not in context/, because it knows the
// archives of this folder: so no arrow points up.

#include <vorrel/core/couchurl.h>
#include <vorrel/data/archive/documentexporter_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context_p.h>

namespace vo::data {

bool Context::Private::exportDocument(const Document *document, const QUrl &file,
                                      const QStringList &dependencies,
                                      const QStringList &excludedKeys)
{
    const QString suffix = QStringLiteral(".vorrel");
    QString path = file.toLocalFile();
    if (path.isEmpty()) {
        qCCritical(lcData, "Cannot export to %s: it is no local file",
                   qPrintable(CouchUrl::displayText(file)));
        return false;
    }
    if (!path.endsWith(suffix)) {
        path += suffix;
    }
    return DocumentExporter(document, dependencies).write(path, excludedKeys);
}

QList<ExportGap> Context::Private::exportGaps(const Document *document,
                                              const QStringList &dependencies)
{
    return DocumentExporter(document, dependencies).gaps();
}

} // namespace vo::data
