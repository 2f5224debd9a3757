// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <vector>

namespace vo::data {

class Context;

/// Documents that arrived together with all that they refer to, and are put into the Context one by
/// one, referenced ones first. References come from the database and may form cycles: a document
/// that is reached a second time on its own way is not waited for, which is logged as a warning.
class DocumentBatch
{
public:
    explicit DocumentBatch(QHash<QString, QJsonObject> documents);

    /// Adds the next document to \p context, whose slots may destroy this batch. False when there
    /// is none left.
    bool addNext(Context *context);

    [[nodiscard]] bool contains(const QString &id) const { return m_documents.contains(id); }

    /// The ids that are not in the Context yet.
    [[nodiscard]] QSet<QString> remaining() const;

    /// Logs what was loaded and how long it took, and how many references close cycles.
    void report() const;

private:
    struct Visit
    {
        QString id;
        QJsonArray references;
        int next = 0;
    };

    void enter(const QString &id, const Context *context);
    void follow(const QString &reference, const QString &source, const Context *context);

    QHash<QString, QJsonObject> m_documents; // to be added
    QStringList m_order;
    int m_nextInOrder = 0;
    std::vector<Visit> m_path;
    QSet<QString> m_entered;
    QElapsedTimer m_elapsed;
    int m_loaded = 0;
    int m_cached = 0;
    int m_cycles = 0;
};

} // namespace vo::data
