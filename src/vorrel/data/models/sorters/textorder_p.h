// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QCollator>
#include <QtCore/QString>

#include <optional>

namespace vo::data {

/// The order of texts in the default locale at the time that it is made, with numbers in them by
/// their value.
class TextOrder
{
public:
    struct Key
    {
        QString text;                            // if the collator makes no keys
        std::optional<QCollatorSortKey> sortKey; // else
    };

    TextOrder();

    [[nodiscard]] Key key(const QString &text) const;
    [[nodiscard]] int compare(const Key &a, const Key &b) const;

private:
    QCollator m_collator;
    bool m_hasKeys;
};

} // namespace vo::data
