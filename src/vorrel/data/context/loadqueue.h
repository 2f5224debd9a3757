// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <memory>

namespace vo::data {

class Context;
class Loader;

/// Gathers the ids that are wanted, has its loaders fetch them every 100 ms, follows the references
/// in what comes back, and gives documents to the Context when all that they refer to is there:
/// referenced ones first. Made for and owned by a Context.
class VORREL_DATACORE_EXPORT LoadQueue : public QObject
{
    Q_OBJECT
public:
    explicit LoadQueue(Context *context);

    /// Deletes the loaders.
    ~LoadQueue() override;

    [[nodiscard]] virtual bool isLoading() const;

    /// Wants documents. Nothing is fetched before the next tick.
    virtual void load(const QSet<QString> &ids);

    /// Takes \p loader over.
    void addLoader(Loader *loader);

    /// Gives \p loader back to the caller. What it has not answered is asked of the others.
    void removeLoader(Loader *loader);

    [[nodiscard]] Context *context() const;

    /// The ids that are not in the Context yet: to be fetched, or waiting for their references.
    [[nodiscard]] QSet<QString> wantedDocuments() const;

Q_SIGNALS:
    void loadingChanged();
    void documentNotFound(const QString &id);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void handleLoaded(const QString &id, const QJsonObject &data);
    void handleNotFound(const QString &id);
    void handleFailed(const QString &id);
    void offerRequested();
    void offerSlice();
    void offer(const QString &id);
    void instanceDocuments();
    void setLoading(bool loading);

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
