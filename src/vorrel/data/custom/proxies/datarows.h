// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <vector>

namespace vo::data {

/// The rows of the source of a proxy model, as its criteria read them. Belongs to the proxy model,
/// which tells it of changes.
class VORREL_DATACORE_EXPORT DataRows
{
public:
    /// Null for none.
    [[nodiscard]] const QAbstractItemModel *model() const { return m_model; }
    void setModel(const QAbstractItemModel *model);

    /// The number of a role; -1, which has no values, if the model has none of that name.
    [[nodiscard]] int role(const QString &name) const;
    [[nodiscard]] QVariant value(int row, int role) const;

    /// Another one means that values of the row may be others than before, or that another row
    /// stands there. Never 0.
    [[nodiscard]] quint64 revision(int row) const;

    /// All rows are others.
    void renew();

    /// The values of these are others.
    void renew(int firstRow, int lastRow);

private:
    QPointer<const QAbstractItemModel> m_model;
    std::vector<quint64> m_revisions;
    quint64 m_lastRevision = 1;
};

} // namespace vo::data
