// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// A stream from a server: it is cut into lines however it arrives, and slices of a line that is a
// JSON object are what a parser finds in it.

#include <vorrel/data/base/jsonslices_p.h>
#include <vorrel/data/changefeed/linesplitter_p.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QList>

#include <algorithm>
#include <cstdint>

using namespace vo::data;

namespace {

constexpr int lineLimit = 200;

void require(bool holds)
{
    if (!holds) {
        qFatal("The stream was misread");
    }
}

/// The lines of \p stream when it arrives in pieces of \p step bytes, up to one that is too long.
QList<QByteArray> linesOf(const QByteArray &stream, int step)
{
    QList<QByteArray> lines;
    LineSplitter splitter(lineLimit);
    for (int at = 0; at < stream.size() && !splitter.isTooLong(); at += step) {
        splitter.append(stream.mid(at, step));
        while (const std::optional<QByteArray> line = splitter.takeLine()) {
            lines << *line;
        }
    }
    return lines;
}

// What is no JSON is only walked; it must end.
void walk(const QByteArray &line)
{
    const QJsonDocument parsed = QJsonDocument::fromJson(line);
    QList<QByteArray> values;
    JsonSlices slices(line);
    while (slices.next()) {
        values << slices.value();
        require(!slices.value().isEmpty());
        static_cast<void>(JsonSlices::toString(slices.value()));
    }
    const bool isWhole = slices.isWhole();
    if (parsed.isArray()) {
        require(isWhole && values.size() == parsed.array().size());
    } else if (parsed.isObject()) {
        require(isWhole && values.size() >= parsed.object().size()); // keys may be there twice
    }
    for (int index = 0; parsed.isArray() && index < values.size(); ++index) {
        require(QJsonDocument::fromJson('[' + values.at(index) + ']').array().at(0)
                == parsed.array().at(index));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    const QByteArray stream(reinterpret_cast<const char *>(bytes), int(size));
    const QList<QByteArray> lines = linesOf(stream, 1);
    std::for_each(lines.begin(), lines.end(), walk);
    const QList<QByteArray> atOnce = linesOf(stream, 7);
    for (int index = 0; index < std::min(lines.size(), atOnce.size()); ++index) {
        require(lines.at(index) == atOnce.at(index));
    }
    return 0;
}
