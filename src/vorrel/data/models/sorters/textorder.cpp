// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/sorters/textorder_p.h>

namespace vo::data {

TextOrder::TextOrder()
    : m_collator(QLocale())
    , m_hasKeys(m_collator.locale().language() != QLocale::C)
{
    m_collator.setNumericMode(true);
}

// Without a language there is no collation: texts are compared by their code units, which the keys
// of such a collator do not follow.
TextOrder::Key TextOrder::key(const QString &text) const
{
    return m_hasKeys ? Key { QString(), m_collator.sortKey(text) } : Key { text, std::nullopt };
}

int TextOrder::compare(const Key &a, const Key &b) const
{
    return a.sortKey && b.sortKey ? a.sortKey->compare(*b.sortKey)
                                  : m_collator.compare(a.text, b.text);
}

} // namespace vo::data
