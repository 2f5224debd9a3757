// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/base/jsonslices_p.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <cstring>

namespace vo::data {

namespace {

bool isSpace(char character)
{
    return character == ' ' || character == '\n' || character == '\r' || character == '\t';
}

// Behind the string that begins at \p at; null if it does not end.
const char *skipString(const char *at, const char *end)
{
    const char *const start = at++;
    while (const void *quote = std::memchr(at, '"', std::size_t(end - at))) {
        at = static_cast<const char *>(quote);
        const char *escape = at;
        while (escape - 1 > start && escape[-1] == '\\') {
            --escape;
        }
        ++at;
        if ((at - 1 - escape) % 2 == 0) {
            return at;
        }
    }
    return nullptr;
}

// Behind the value that begins at \p at; null if it does not end. Brackets of different kinds are
// not told apart.
const char *skipValue(const char *at, const char *end)
{
    int depth = 0;
    while (at != end) {
        switch (*at) {
        case '"':
            at = skipString(at, end);
            if (!at || depth == 0) {
                return at;
            }
            continue;
        case '{':
        case '[':
            ++depth;
            break;
        case '}':
        case ']':
            if (depth == 0) {
                return at; // of the value around a number or a word
            }
            if (--depth == 0) {
                return at + 1;
            }
            break;
        case ',':
            if (depth == 0) {
                return at;
            }
            break;
        default:
            break;
        }
        ++at;
    }
    return nullptr;
}

QByteArray slice(const char *begin, const char *end)
{
    return QByteArray::fromRawData(begin, int(end - begin));
}

} // namespace

JsonSlices::JsonSlices(const QByteArray &text)
    : m_at(text.constData())
    , m_end(m_at + text.size())
{
    skipSpace();
    if (m_at != m_end && (*m_at == '{' || *m_at == '[')) {
        m_closing = *m_at == '{' ? '}' : ']';
        ++m_at;
    } else {
        m_at = m_end;
    }
}

bool JsonSlices::next()
{
    skipSpace();
    if (m_at != m_end && *m_at == ',') {
        ++m_at;
        skipSpace();
    }
    if (m_at == m_end || *m_at == m_closing || (m_closing == '}' && !readKey())) {
        return false;
    }
    const char *behind = skipValue(m_at, m_end);
    if (!behind || behind == m_at) {
        m_at = m_end;
        return false;
    }
    const char *last = behind;
    while (isSpace(last[-1])) {
        --last; // behind a number or a word
    }
    m_value = slice(m_at, last);
    m_at = behind;
    return true;
}

bool JsonSlices::isWhole()
{
    if (m_at == m_end || *m_at != m_closing) {
        return false;
    }
    ++m_at;
    skipSpace();
    return m_at == m_end;
}

bool JsonSlices::readKey()
{
    const char *behind = *m_at == '"' ? skipString(m_at, m_end) : nullptr;
    if (behind) {
        m_key = slice(m_at + 1, behind - 1);
        m_at = behind;
        skipSpace();
    }
    if (!behind || m_at == m_end || *m_at != ':') {
        m_at = m_end;
        return false;
    }
    ++m_at;
    skipSpace();
    return true;
}

void JsonSlices::skipSpace()
{
    while (m_at != m_end && isSpace(*m_at)) {
        ++m_at;
    }
}

QByteArray JsonSlices::member(const QByteArray &object, QLatin1String key)
{
    for (JsonSlices members(object); members.next();) {
        if (members.key() == key.data()) {
            return members.value();
        }
    }
    return {};
}

QString JsonSlices::toString(const QByteArray &json)
{
    if (json.size() < 2 || !json.startsWith('"')) {
        return {};
    }
    if (!json.contains('\\')) {
        return QString::fromUtf8(json.constData() + 1, json.size() - 2);
    }
    return QJsonDocument::fromJson('[' + json + ']').array().at(0).toString();
}

} // namespace vo::data
