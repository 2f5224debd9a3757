// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QAtomicInt>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVector>

namespace vo::data {

class Change;

/// The changes of one group of edits, in the order in which they were made: one step of undo. It
/// owns them. Groups lie in each other: each level begins at a checkpoint, to which it can be
/// rolled back.
///
/// Applying, taking back and rolling back run through the signals of documents. Nothing may be
/// added meanwhile, and the caller keeps the set alive.
class VORREL_DATACORE_EXPORT ChangeSet
{
public:
    ChangeSet();
    ~ChangeSet();
    Q_DISABLE_COPY_MOVE(ChangeSet)

    /// Opens a level.
    void beginNested();

    /// Closes the innermost level. True while others remain. \pre a level is open
    bool endNested();

    /// The number of open levels.
    [[nodiscard]] int nesting() const;

    /// Takes \p change over and puts it where it was made: an edit that a slot made because of
    /// another one comes after that, although it is recorded first.
    void add(Change *change);

    /// Takes back what was recorded since the innermost level was opened, and stays in that level.
    /// Logs a critical line if no level is open.
    void rollback();

    /// Drops changes that are invalid, and merges those that can be merged into the first of them.
    void compress();

    [[nodiscard]] bool isEmpty() const;
    void apply();
    void unapply();

    /// Merges \p next, made after this set, into this one: as a whole, or not at all and false.
    /// Only sets that edit the same things in the same order merge, and only within 500 ms from the
    /// beginning of this one.
    bool merge(ChangeSet *next);

    /// Something to remember with the changes, by a name.
    void setData(const QString &key, const QVariant &value);
    [[nodiscard]] QVariant data(const QString &key) const;

private:
    const qint64 m_timestamp;  // ms since the epoch
    QList<Change *> m_changes; // owned
    QVector<int> m_checkpoints;
    QAtomicInt m_nesting;
    QMap<QString, QVariant> m_data;
};

} // namespace vo::data
