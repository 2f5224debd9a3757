// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/iupdatehandler.h>

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <deque>

namespace vo {
class Request;
}

namespace vo::data {

/// Shows what others edit: loads a document anew when the database holds a newer revision, with
/// everything that the new revision refers to, and gives the data to the object that is there.
/// Neither an edit nor a step of undo comes of that.
///
/// A document with unsaved edits is left alone, with the warning "Document %s was edited by
/// somebody else, too: its unsaved edits stay". A load that fails is repeated after 5 s. See
/// Context::setFollowsRemoteEdits(); what it does ends with it.
class VORREL_DATACORE_EXPORT ReloadingUpdateHandler : public QObject, public IUpdateHandler
{
    Q_OBJECT
public:
    ReloadingUpdateHandler();
    ~ReloadingUpdateHandler() override;

    void update(LinkedDocument *document) override;

private:
    /// One document on its way.
    struct Reload
    {
        QPointer<LinkedDocument> document;
        QString revision;   // of the document when its data was asked for
        QUrl url;           // where that was
        bool again = false; // a still newer one was announced meanwhile
    };

    void fetchNext();
    void fetch(const QString &id);
    void handleAnswer(const QString &id, const Request &request);
    void loadReferences(const QString &id, const QJsonObject &data);
    void apply(const QString &id, const QJsonObject &data);
    [[nodiscard]] bool mayReload(const QString &id) const;
    void finish(const QString &id);
    void repeatLater(const QString &id);

    QHash<QString, Reload> m_reloads; // by id
    std::deque<QString> m_waiting;
    int m_running = 0; // requests
};

} // namespace vo::data
