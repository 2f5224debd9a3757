// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/testdocuments.h"

#include <vorrel/data/context/editcontext.h>

#include <QtCore/QRandomGenerator>

namespace vo::test {

/// Free-form data as a map of its stored entries, edited in the plainest way.
struct PlainData : QMap<QString, QJsonValue>
{
    PlainData() = default;
    explicit PlainData(const QJsonObject &object);
    explicit PlainData(const Station *station);

    [[nodiscard]] QStringList items(const QString &list) const;
    [[nodiscard]] QStringList allItems() const;
    [[nodiscard]] QMap<QString, QString> parents() const;
    [[nodiscard]] QStringList texts() const; // of all fields

    /// Without structs and lists in which nothing is.
    [[nodiscard]] PlainData withoutEmpty() const;

    /// What a scope holds, whatever the ids are.
    [[nodiscard]] QString shape(const QString &scope) const;

    void setField(const QString &name, const QString &field, const QJsonValue &value);

    /// \p moved goes to another list.
    void setList(const QString &name, const QStringList &items, const QString &moved = {});
    void deleteScope(const QString &scope);
};

/// Random edits of the free-form data of a station, and what it has to come to.
class PlainHistory
{
public:
    explicit PlainHistory(quint32 seed)
        : m_random(seed)
    { }

    /// One thing that a user, or another one, may do.
    void step(data::EditContext *context, Station *station);

    PlainData now;

private:
    struct Step
    {
        PlainData before;
        PlainData after;
        bool isSure; // nobody else has changed the data since
    };

    [[nodiscard]] bool chance(int of) { return m_random.bounded(of) == 0; }
    QString oneOf(const QStringList &texts);
    void edit(Station *station);
    void editStruct(Station *station, const QString &name);
    void editList(Station *station, const QString &name);
    void moveItems(Station *station, const QString &name);
    void move(data::EditContext *context, Station *station, int distance);
    void changeFromElsewhere(Station *station);

    QRandomGenerator m_random;
    QList<Step> m_stack;
    int m_position = -1;
    int m_count = 0;
};

} // namespace vo::test
