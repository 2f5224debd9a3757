// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vo::data {

/// Walks the members of a JSON object, or the elements of an array, as slices of its text: for
/// values that are kept as the text that they came as, or not looked at. Only strings and brackets
/// are understood, so whether a value is valid shows when somebody parses it.
///
///     for (JsonSlices rows(text); rows.next();)
///         use(rows.value());
///
/// Key and value refer to the text, which has to outlive them.
class VORREL_DATACORE_EXPORT JsonSlices
{
public:
    explicit JsonSlices(const QByteArray &text);

    /// Goes to the next value. False behind the last one, and where the text is damaged or ends.
    bool next();

    /// Behind the last value: whether the text is whole, with nothing behind it.
    [[nodiscard]] bool isWhole();

    /// The key between its quotes, with any escapes; empty in an array.
    [[nodiscard]] const QByteArray &key() const { return m_key; }
    [[nodiscard]] const QByteArray &value() const { return m_value; }

    /// The text of the first member of \p object called \p key; empty if there is none.
    [[nodiscard]] static QByteArray member(const QByteArray &object, QLatin1String key);

    /// The text of a JSON string, of which \p json is the whole. Empty for other values.
    [[nodiscard]] static QString toString(const QByteArray &json);

private:
    [[nodiscard]] bool readKey();
    void skipSpace();

    const char *m_at;
    const char *m_end;
    char m_closing = 0; // 0 for a text that is neither object nor array
    QByteArray m_key;
    QByteArray m_value;
};

} // namespace vo::data
