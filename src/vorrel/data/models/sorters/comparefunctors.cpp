// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sorters/comparefunctors_p.h>

#include <vorrel/data/core/document.h>

#include <QtCore/QDateTime>
#include <QtCore/QSize>

namespace vo::data {

DateTimeRule::Key DateTimeRule::key(const Document *document)
{
    return m_property.read(document).toDateTime().toMSecsSinceEpoch();
}

SizeRule::Key SizeRule::key(const Document *document)
{
    const QSize size = m_property.read(document).toSize();
    return quint32(size.width()) * quint32(size.height());
}

StringRule::Key StringRule::key(const Document *document)
{
    return m_order.key(m_property.readText(document));
}

SimpleTypeRule::Key SimpleTypeRule::key(const Document *document)
{
    return document->type();
}

int SimpleTypeRule::compare(const Key &a, const Key &b) const
{
    return QString::compare(a, b, Qt::CaseSensitive);
}

TypeOrderRule::Key TypeOrderRule::key(const Document *document)
{
    constexpr int behindAll = 65535;
    const int place = int(m_types.indexOf(document->type()));
    return place < 0 ? behindAll : place;
}

} // namespace vo::data
