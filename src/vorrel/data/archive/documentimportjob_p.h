// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/archive/documentarchive.h>
#include <vorrel/data/archive/documentimporter.h>

#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <memory>

namespace vo::data {

class Context;
class Document;
class LinkedDocument;
class LoadRequest;
class PropertyBase;

/// One import of a DocumentImporter, whose child it is. It emits finished() once, with an error or
/// a result, unless it is destroyed before.
class DocumentImportJob : public QObject
{
    Q_OBJECT

public:
    /// Reads the archive \p path at once.
    DocumentImportJob(Context *context, const QString &path, QObject *parent);
    ~DocumentImportJob() override;

    /// May come to its end at once, and may destroy this object then.
    void start();

    [[nodiscard]] DocumentImporter::Error error() const { return m_error; }

    /// The document that was exported, as it is here now. Null for none.
    [[nodiscard]] Document *result() const;

    /// Those of the documents which the target must have that are not loaded.
    [[nodiscard]] QStringList missingDependencies() const;

    /// From 0 to 1.
    [[nodiscard]] double progress() const { return m_progress; }

Q_SIGNALS:
    void progressChanged();
    void finished();

private:
    [[nodiscard]] bool collectIds();
    void loadDocuments();
    void updateLoadProgress();
    void setProgress(double progress);
    void fail(DocumentImporter::Error error);
    void applyWhenIdle();
    void apply();
    void applyChunks();
    void applyChunk(int index);
    void beginDocument(const QString &type);
    void takeDocument(const QString &type);
    void applyJson(const DocumentChunk &chunk);
    void applyObject(const QJsonObject &object);
    void applyProperty(PropertyBase *property, const QJsonValue &value);
    void applyCustomData(const QJsonObject &data);
    void applyAttachment(const DocumentChunk &chunk);
    [[nodiscard]] QSet<QByteArray> filesBehind(int index) const;

    const QPointer<Context> m_context;
    QList<DocumentChunk> m_chunks;
    QStringList m_idsToLoad;
    QStringList m_dependencies;
    QMap<QString, QString> m_idMap;                         // ids in the archive to those here
    const std::shared_ptr<const DocumentArchive> m_archive; // shared with what runs
    DocumentImporter::Error m_error = DocumentImporter::NoError;
    QPointer<LinkedDocument> m_result;
    QPointer<LoadRequest> m_request;
    double m_progress = 0;

    // The group that is being applied
    QString m_rootId;
    QString m_currentId;
    QPointer<LinkedDocument> m_current; // null if the group is left out
    QSet<QByteArray> m_files;           // the properties whose attachments are in the group
};

} // namespace vo::data
