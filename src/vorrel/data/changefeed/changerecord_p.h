// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace vo::data {

/// What the database says of one document: a record of its change feed, or a row of the answer
/// when it is asked for revisions.
struct ChangeRecord
{
    /// What is missing, or of another type than it should be, is empty.
    static ChangeRecord fromFeed(const QJsonObject &record);

    /// The id is empty if the row knows no document.
    static ChangeRecord fromRow(const QJsonObject &row);

    /// The text of an update sequence, which may be text or a number; empty for anything else.
    static QString sequenceText(const QJsonValue &value);

    /// Whether this is the first revision that a document ever had.
    [[nodiscard]] bool isFirstRevision() const;

    QString sequence; // empty in rows
    QString id;
    QString revision;
    bool deleted = false;
    bool isNews = false; // from the feed, not from a row
};

} // namespace vo::data
