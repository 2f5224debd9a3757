// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/loader.h>

#include <QtCore/QStringList>

#include <memory>

namespace vo::data {

/// Fetches documents from the database, 25 with each request, one request at a time, and fills
/// the cache. Takes every id, so it has to be the last loader of a queue. Ids must be taken once
/// only until they are answered.
///
/// After a failed request it waits 3 s, then 13, 23, … up to 60. A run of equal failures logs one
/// critical line in "vorrel.data.loadqueue", and its end an info line.
class VORREL_DATACORE_EXPORT CouchDBLoader : public Loader
{
    Q_OBJECT
public:
    explicit CouchDBLoader(Context *context);
    ~CouchDBLoader() override;

    bool load(const QString &id) override;

private:
    struct Batch;
    struct Private;

    void schedule();
    void flush();
    void handleAnswer(const Batch &batch);
    void handleRows(const Batch &batch);
    static QJsonObject takeDocument(const Batch &batch, const QString &id, const QByteArray &json);
    void handleFailure(const Batch &batch, const QStringList &ids);

    const std::unique_ptr<Private> d;
};

} // namespace vo::data
