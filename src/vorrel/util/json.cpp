// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/util/json.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

namespace vo::util::json {

namespace {

// The file is the letters "qbjs", the version 1, and a container. All numbers are little-endian.
//
// A container is a header of three words (its size, its length with the lowest bit set for an
// object, the offset of its table), then the data of its elements, then the table: for an array the
// elements themselves, for an object the offsets of entries. An entry is an element and its key.
//
// An element is one word: three bits type, one bit that says that the text is Latin-1 or that the
// number is in here, one bit that says that the key is Latin-1, and 27 bits of number or offset.
// Offsets count from the header of the container around.
constexpr qint64 wordSize = 4;
constexpr qint64 fileHeaderSize = 2 * wordSize;
constexpr qint64 headerSize = 3 * wordSize;
constexpr int maximumDepth = 1024;

enum ElementType { Null, Bool, Double, String, Array, Object };
constexpr quint32 typeMask = 0x7;
constexpr quint32 isCompact = 0x8;
constexpr quint32 hasLatinKey = 0x10;
constexpr int numberShift = 5;

/// Reads each byte once at most: what it reads has to lie behind all that it has read before. The
/// first thing that is wrong makes the whole invalid.
class Reader
{
public:
    explicit Reader(const QByteArray &data)
        : m_data(data)
    { }

    QJsonDocument read()
    {
        if (m_data.size() < fileHeaderSize || !m_data.startsWith("qbjs") || word(wordSize) != 1) {
            return {};
        }
        m_cursor = fileHeaderSize;
        const QJsonValue root = container(m_cursor, m_data.size(), 1);
        if (!m_valid) {
            return {};
        }
        return root.isObject() ? QJsonDocument(root.toObject()) : QJsonDocument(root.toArray());
    }

private:
    struct Container
    {
        qint64 start;
        qint64 table; // where the data of its elements ends
        int depth;
    };

    template <typename Number>
    [[nodiscard]] Number number(qint64 position) const
    {
        return qFromLittleEndian<Number>(m_data.constData() + position);
    }
    [[nodiscard]] quint32 word(qint64 position) const { return number<quint32>(position); }

    /// Goes behind these bytes, if they are there and none of them has been read.
    bool claim(qint64 position, qint64 size, qint64 end)
    {
        m_valid = m_valid && position >= m_cursor && size <= end - position;
        m_cursor = m_valid ? position + size : m_cursor;
        return m_valid;
    }

    QJsonValue fail()
    {
        m_valid = false;
        return {};
    }

    QJsonValue container(qint64 start, qint64 end, int depth)
    {
        if (depth > maximumDepth || !claim(start, headerSize, end)) {
            return fail();
        }
        const quint32 kind = word(start + wordSize);
        const bool isObject = kind & 1;
        const qint64 length = kind >> 1;
        if (length == 0) { // its size and table say nothing
            return isObject ? QJsonValue(QJsonObject()) : QJsonValue(QJsonArray());
        }
        const qint64 ownEnd = start + word(start);
        const qint64 table = start + word(start + 2 * wordSize);
        if (ownEnd > end || table < m_cursor || length * wordSize > ownEnd - table) {
            return fail();
        }
        const Container own { start, table, depth };
        const QJsonValue value = isObject ? object(own, length) : array(own, length);
        return claim(table, length * wordSize, ownEnd) ? value : QJsonValue();
    }

    // Data may lie in another order than the table, because edits have appended to it.

    QJsonValue array(const Container &own, qint64 length)
    {
        std::vector<std::pair<quint32, qint64>> places; // offset and index
        places.reserve(std::size_t(length));
        for (qint64 index = 0; index < length; ++index) {
            places.emplace_back(word(own.table + index * wordSize) >> numberShift, index);
        }
        std::sort(places.begin(), places.end());
        std::vector<QJsonValue> values(places.size());
        for (const auto &[offset, index] : places) {
            values[std::size_t(index)] = element(word(own.table + index * wordSize), own);
        }
        QJsonArray result;
        for (const QJsonValue &value : values) {
            result.append(value);
        }
        return result;
    }

    QJsonValue object(const Container &own, qint64 length)
    {
        std::vector<qint64> entries;
        entries.reserve(std::size_t(length));
        for (qint64 index = 0; index < length; ++index) {
            entries.push_back(own.start + word(own.table + index * wordSize));
        }
        std::sort(entries.begin(), entries.end());
        std::vector<std::pair<QString, QJsonValue>> members;
        for (const qint64 entry : entries) {
            if (!claim(entry, wordSize, own.table)) {
                return {};
            }
            const quint32 value = word(entry);
            const QString key = text(m_cursor, value & hasLatinKey, own.table);
            members.emplace_back(key, element(value, own));
        }
        // An object grows at its end in no time, and in its middle by moving the rest.
        std::stable_sort(members.begin(), members.end(),
                         [](const auto &a, const auto &b) { return a.first < b.first; });
        QJsonObject result;
        for (const auto &[key, value] : members) {
            result.insert(key, value);
        }
        return result;
    }

    QJsonValue element(quint32 element, const Container &own)
    {
        const qint64 position = own.start + (element >> numberShift);
        const quint32 type = element & typeMask;
        switch (type) {
        case Null:
            return QJsonValue::Null;
        case Bool:
            return bool(element >> numberShift);
        case Double:
            return element & isCompact ? QJsonValue(qint32(element) >> numberShift)
                                       : real(position, own.table);
        case String:
            return text(position, element & isCompact, own.table);
        case Array:
        case Object: {
            const QJsonValue value = container(position, own.table, own.depth + 1);
            return value.isObject() == (type == Object) ? value : fail();
        }
        default:
            return fail();
        }
    }

    QJsonValue real(qint64 position, qint64 end)
    {
        if (!claim(position, sizeof(double), end)) {
            return {};
        }
        const auto bits = number<quint64>(position);
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return std::isfinite(value) ? QJsonValue(value) : QJsonValue();
    }

    /// Latin-1 has its length in two bytes, UTF-16 in four. Both end at a whole word.
    QString text(qint64 position, bool isLatin, qint64 end)
    {
        const qint64 lengthSize = isLatin ? sizeof(quint16) : sizeof(quint32);
        if (!claim(position, lengthSize, end)) {
            return {};
        }
        const qint64 length = isLatin ? number<quint16>(position) : word(position);
        const qint64 size = isLatin ? length : 2 * length;
        if (!claim(m_cursor, size, end)) {
            return {};
        }
        const char *bytes = m_data.constData() + position + lengthSize;
        if (isLatin) {
            return QString::fromLatin1(bytes, int(length));
        }
        QString result(int(length), Qt::Uninitialized);
        qFromLittleEndian<quint16>(bytes, length, result.data());
        return result;
    }

    const QByteArray &m_data;
    qint64 m_cursor = 0; // all before it is read
    bool m_valid = true;
};

} // namespace

QJsonDocument fromBinaryData(const QByteArray &data)
{
    return Reader(data).read();
}

} // namespace vo::util::json
