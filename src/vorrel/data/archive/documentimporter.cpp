// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/archive/documentimporter.h>

#include <vorrel/data/archive/documentimportjob_p.h>
#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/document.h>

#include <QtCore/QPointer>

#include <utility>

namespace vo::data {

namespace {

QString textOf(DocumentImporter::Error error, const QStringList &missing)
{
    switch (error) {
    case DocumentImporter::NoError:
        return QStringLiteral("No error.");
    case DocumentImporter::NoContext:
        return QStringLiteral("Cannot import without a valid context.");
    case DocumentImporter::NoLocalDocument:
        return QStringLiteral("The selected import file is not a local file.");
    case DocumentImporter::InvalidArchive:
        return QStringLiteral("The selected import file is invalid or corrupted.");
    case DocumentImporter::MissingDependency:
        return missing.isEmpty() ? QStringLiteral("A required dependency is missing.")
                                 : QStringLiteral("Missing required dependency: %1")
                                       .arg(missing.join(QStringLiteral(", ")));
    }
    return QStringLiteral("Import failed.");
}

} // namespace

struct DocumentImporter::Private
{
    QPointer<Context> context;
    DocumentImportJob *job = nullptr; // child of the importer; null when idle
    Error error = NoError;
    QString errorString;
};

DocumentImporter::DocumentImporter(QObject *parent)
    : QObject(parent)
    , d(new Private)
{ }

DocumentImporter::~DocumentImporter() = default;

Context *DocumentImporter::context() const
{
    return d->context;
}

void DocumentImporter::setContext(Context *context)
{
    if (context != d->context) {
        d->context = context;
        Q_EMIT contextChanged();
    }
}

DocumentImporter::Error DocumentImporter::error() const
{
    return d->error;
}

QString DocumentImporter::errorString() const
{
    return d->errorString;
}

bool DocumentImporter::isImporting() const
{
    return d->job;
}

double DocumentImporter::progress() const
{
    return d->job ? d->job->progress() : 0;
}

void DocumentImporter::importDocument(const QUrl &file)
{
    if (d->job) {
        qCWarning(lcData, "DocumentImport is currently busy");
        return;
    }
    const QPointer<DocumentImporter> self(this);
    d->error = NoError;
    d->errorString.clear();
    Q_EMIT errorChanged();
    if (!self || d->job) { // a slot was faster
        return;
    }
    const QPointer<DocumentImportJob> job(
        new DocumentImportJob(d->context, file.toLocalFile(), this));
    d->job = job;
    connect(job, &DocumentImportJob::progressChanged, this, &DocumentImporter::progressChanged);
    connect(job, &DocumentImportJob::finished, this, &DocumentImporter::finishImport);
    Q_EMIT importingChanged();
    if (job) {
        job->start();
    }
}

void DocumentImporter::finishImport()
{
    const QPointer<DocumentImporter> self(this);
    const QPointer<Document> result(d->job->result());
    const Error error = d->job->error();
    d->error = error;
    d->errorString = textOf(error, d->job->missingDependencies());
    Q_EMIT errorChanged();
    if (self && error != NoError) {
        Q_EMIT importFailed(error);
    } else if (self) {
        Q_EMIT importFinished(result);
    }
    if (self) {
        std::exchange(d->job, nullptr)->deleteLater();
        Q_EMIT importingChanged();
    }
    if (self) {
        Q_EMIT progressChanged();
    }
}

} // namespace vo::data

#include "moc_documentimporter.cpp"
