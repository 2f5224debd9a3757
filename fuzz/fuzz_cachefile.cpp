// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// A cache file from anywhere: whatever is in it can be looked at, changed, written and read again.

#include <vorrel/data/context/cachefile_p.h>

#include <QtCore/QBuffer>
#include <QtCore/QLoggingCategory>

#include <cstdint>

using namespace vo::data;

namespace {

void require(bool holds)
{
    if (!holds) {
        qFatal("The cache is damaged");
    }
}

CacheTable read(const QByteArray &file)
{
    return cachefile::read(reinterpret_cast<const uchar *>(file.constData()), file.size(),
                           QStringLiteral("fuzz"));
}

void lookAt(const CacheTable &table)
{
    for (int position = 0; position < table.size(); ++position) {
        require(table.find(table.id(position)) == position);
        const std::string_view json = table.json(position);
        require(json.empty() || json.front() + json.back() < 256); // the bytes are there
    }
}

void change(CacheTable &table)
{
    for (int position = table.size() - 1; position >= 0; position -= 2) {
        table.remove(position);
    }
    table.insert("new", "{}", 1);
    const int present = table.size();
    table.insert("new", R"({"n":2})", 2);
    require(table.size() == present);
    lookAt(table);
    if (table.garbage() >= 0) {
        table.compact();
        require(table.garbage() == 0);
    }
    require(table.json(table.find("new")) == R"({"n":2})");
}

void compare(const CacheTable &first, const CacheTable &second)
{
    require(first.size() == second.size());
    for (int position = 0; position < first.size(); ++position) {
        const int other = second.find(first.id(position));
        require(other >= 0 && first.json(position) == second.json(other));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    constexpr size_t smallestFile = 64; // a smaller one is not read at all
    if (size < smallestFile) {
        return 0;
    }
    static const bool quiet = [] {
        QLoggingCategory::setFilterRules(QStringLiteral("vorrel.*=false"));
        return true;
    }();
    Q_UNUSED(quiet)
    CacheTable table = cachefile::read(bytes, qint64(size), QStringLiteral("fuzz"));
    lookAt(table);
    change(table);
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    require(cachefile::write(file, table.snapshot()));
    compare(table, read(file.data()));
    return 0;
}
