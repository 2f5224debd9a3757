// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/custom/proxies/datarows.h>

#include <algorithm>

namespace vo::data {

void DataRows::setModel(const QAbstractItemModel *model)
{
    m_model = model;
    renew();
}

int DataRows::role(const QString &name) const
{
    return m_model ? m_model->roleNames().key(name.toUtf8(), -1) : -1;
}

QVariant DataRows::value(int row, int role) const
{
    return role < 0 || !m_model ? QVariant() : m_model->index(row, 0).data(role);
}

quint64 DataRows::revision(int row) const
{
    const auto index = std::size_t(row);
    return index < m_revisions.size() ? m_revisions[index] : m_lastRevision;
}

void DataRows::renew()
{
    m_revisions.clear();
    ++m_lastRevision;
}

void DataRows::renew(int firstRow, int lastRow)
{
    if (m_revisions.empty() && m_model) {
        m_revisions.assign(std::size_t(m_model->rowCount()), m_lastRevision);
    }
    ++m_lastRevision;
    const int end = std::min(lastRow + 1, int(m_revisions.size()));
    for (int row = std::max(firstRow, 0); row < end; ++row) {
        m_revisions[std::size_t(row)] = m_lastRevision;
    }
}

} // namespace vo::data
