// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/testdocuments.h"

#include <QtCore/QRandomGenerator>

namespace vo::test {

/// A station as its readers see it.
struct PlainStation
{
    int number = 7;
    QString text;
    QString title;
    QString next;  // an id
    QString field; // of a struct: a text, or a reference
    QMap<QString, double> prices;
    QStringList notes;

    bool operator==(const PlainStation &other) const;
};

/// All stations that are not deleted, by their ids.
using World = QMap<QString, PlainStation>;

[[nodiscard]] World worldOf(const data::Context *context);

/// What an EditContext has to come to, by copies of the whole world. An edit is named by what it
/// edits; its name is empty if it never merges.
struct EditModel
{
    struct Level
    {
        World world;
        int edits;
    };
    struct Step
    {
        World before;
        World after;
        QStringList edits;
        qint64 time;
    };

    World now;
    QStringList edits;   // in the open group
    QList<Level> levels; // how the group was when each of them was opened
    QList<Step> stack;
    int position = -1;
    qint64 time = 0; // of the open group
    int made = 0;    // stations
    QString lastId;  // what was edited last, and how
    int lastEdit = 0;

    void begin();
    void end();
    void rollback();
    void move(int distance);
    void clear();
};

/// Makes one and the same edit in both. Stations lead to younger ones only, so that no edit closes
/// a circle. Numbers beyond 40 are cut by a slot.
void randomEdit(QRandomGenerator &random, EditModel &model, data::Context *context);

} // namespace vo::test
