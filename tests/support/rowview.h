// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/literals.h"

#include <QtCore/QAbstractItemModel>

namespace vo::test {

/// What a view shows that knows a list model by its signals alone, and which row signals came. The
/// first role of the model is an id.
class RowView : public QObject
{
public:
    explicit RowView(const QAbstractItemModel *shown)
        : model(shown)
    {
        using Model = QAbstractItemModel;
        connect(model, &Model::modelReset, this, [this] { reset(); });
        connect(model, &Model::rowsInserted, this, [this](const auto &, int first, int last) {
            log << "insert %1-%2"_s.arg(first).arg(last);
            for (int row = first; row <= last; ++row) {
                rows.insert(row, read(row));
            }
        });
        connect(model, &Model::rowsRemoved, this, [this](const auto &, int first, int last) {
            log << "remove %1-%2"_s.arg(first).arg(last);
            rows.erase(rows.begin() + first, rows.begin() + last + 1);
        });
        connect(model, &Model::rowsMoved, this, [this](auto &, int from, int, auto &, int to) {
            log << "move %1-%2"_s.arg(from).arg(to);
            rows.move(from, to > from ? to - 1 : to);
        });
        connect(model, &Model::dataChanged, this, [this](const auto &first, const auto &last) {
            for (int row = first.row(); row <= last.row(); ++row) {
                rows[row] = read(row);
            }
        });
        reset();
    }

    /// All that a row holds now, the id first.
    [[nodiscard]] QString read(int row) const
    {
        QStringList values;
        for (int role = Qt::UserRole; model->roleNames().contains(role); ++role) {
            values << model->data(model->index(row, 0), role).toString();
        }
        return values.join("|"_s);
    }

    [[nodiscard]] QStringList ids() const
    {
        QStringList all;
        for (const QString &row : rows) {
            all << row.section("|"_s, 0, 0);
        }
        return all;
    }

    const QAbstractItemModel *const model;
    QStringList rows;
    QStringList log;

private:
    void reset()
    {
        log << "reset"_s;
        rows.clear();
        for (int row = 0; row < model->rowCount(); ++row) {
            rows << read(row);
        }
    }
};

/// The row signals that lead from one order to another: removals from the end on, insertions, and
/// then moves until all is in place.
inline QStringList signalsFor(QStringList rows, const QStringList &wanted)
{
    QStringList all;
    for (int last = int(rows.size()) - 1; last >= 0; --last) {
        int first = last + 1;
        while (first > 0 && !wanted.contains(rows[first - 1])) {
            rows.removeAt(--first);
        }
        if (first <= last) {
            all << "remove %1-%2"_s.arg(first).arg(last);
            last = first;
        }
    }
    for (int first = 0; first < wanted.size(); ++first) {
        int next = first;
        while (next < wanted.size() && !rows.contains(wanted[next])) {
            rows.insert(next, wanted[next]);
            ++next;
        }
        if (next > first) {
            all << "insert %1-%2"_s.arg(first).arg(next - 1);
            first = next;
        }
    }
    while (rows != wanted) {
        for (int row = 0; row < rows.size(); ++row) {
            const int to = int(wanted.indexOf(rows[row]));
            if (to != row) {
                all << "move %1-%2"_s.arg(row).arg(to > row ? to + 1 : to);
                rows.move(row, to);
            }
        }
    }
    return all;
}

} // namespace vo::test
