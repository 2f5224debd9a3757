// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/benchmark.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTextStream>

#include <algorithm>
#include <malloc.h>
#include <time.h>

namespace vo::benchmark {

namespace {

bool hasOption(int argc, char **argv, const char *option)
{
    return std::any_of(argv + 1, argv + argc,
                       [option](const char *argument) { return qstrcmp(argument, option) == 0; });
}

double unitInNanoseconds(const QString &unit)
{
    return unit == QLatin1String("ms") ? 1e6 : unit == QLatin1String("us") ? 1e3 : 1.0;
}

double ratioOf(const Row &row)
{
    return row.anchor > 0 ? row.ours / row.anchor : 0;
}

QString verdict(const Row &row)
{
    if (row.target <= 0) {
        return QString();
    }
    return ratioOf(row) <= row.target ? QStringLiteral("met") : QStringLiteral("MISSED");
}

QByteArray jsonLine(const QString &subject, const Row &row)
{
    const QJsonObject object {
        { QStringLiteral("subject"), subject },
        { QStringLiteral("work"), row.work },
        { QStringLiteral("size"), row.size },
        { QStringLiteral("unit"), row.unit },
        { QStringLiteral("ours"), row.ours },
        { QStringLiteral("anchor"), row.anchorName },
        { QStringLiteral("anchorValue"), row.anchor },
        { QStringLiteral("ratio"), ratioOf(row) },
        { QStringLiteral("target"), row.target },
        { QStringLiteral("qt"), QString::fromLatin1(qVersion()) },
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QString tableLine(const Row &row)
{
    const auto number = [](double value) {
        return QString::number(value, 'f', value < 10 ? 2 : 1);
    };
    const QString anchor = row.anchor > 0 ? number(row.anchor) : QStringLiteral("-");
    const QString ratio = row.anchor > 0 ? number(ratioOf(row)) : QStringLiteral("-");
    const QString target = row.target > 0 ? number(row.target) : QStringLiteral("-");
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7  %8")
        .arg(row.work, -38)
        .arg(row.size, 7)
        .arg(number(row.ours) + QLatin1Char(' ') + row.unit, 12)
        .arg(anchor, 9)
        .arg(ratio, 7)
        .arg(target, 7)
        .arg(verdict(row), 7)
        .arg(row.anchorName);
}

} // namespace

Report::Report(const QString &subject, int argc, char **argv)
    : m_subject(subject)
    , m_quick(hasOption(argc, argv, "--quick"))
    , m_json(hasOption(argc, argv, "--json"))
{ }

Report::~Report()
{
    QTextStream out(stdout);
    if (m_json) {
        for (const Row &row : std::as_const(m_rows)) {
            out << jsonLine(m_subject, row) << '\n';
        }
        return;
    }
    out << m_subject << ", Qt " << qVersion() << '\n'
        << "work                                      items         ours    anchor   ratio  target"
           "          anchor is\n";
    for (const Row &row : std::as_const(m_rows)) {
        out << tableLine(row) << '\n';
    }
}

QList<int> Report::sizes(int largest) const
{
    QList<int> sizes;
    for (int size = 1000; size <= (m_quick ? 1000 : largest); size *= 10) {
        sizes << size;
    }
    return sizes;
}

void Report::add(const Row &row)
{
    m_rows << row;
}

void Report::compare(Row row, const std::function<void()> &ours,
                     const std::function<void()> &anchor)
{
    QList<double> ourTimes;
    QList<double> anchorTimes;
    for (int run = 0; run < runs(); ++run) {
        ourTimes << cpuTime(ours);
        anchorTimes << cpuTime(anchor);
    }
    const double perItem = 1.0 / (unitInNanoseconds(row.unit) * std::max(row.size, 1));
    row.ours = median(ourTimes) * perItem;
    row.anchor = median(anchorTimes) * perItem;
    add(row);
}

double cpuTime(const std::function<void()> &work)
{
    const auto now = [] {
        timespec time {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e9 + double(time.tv_nsec);
    };
    // The allocator sorts what was freed before: who measures next must not pay for it.
    mallopt(M_MXFAST, 64 * sizeof(std::size_t) / 4); // the default
    const double start = now();
    work();
    return now() - start;
}

double heapGrowth(const std::function<void()> &work)
{
    const auto inUse = [] { // bytes, with those of large blocks
        const auto info = mallinfo2();
        return double(info.uordblks) + double(info.hblkhd);
    };
    const double start = inUse();
    work();
    return inUse() - start;
}

double peakMemory(bool restart)
{
    QFile marks(QStringLiteral("/proc/self/clear_refs"));
    if (restart && marks.open(QIODevice::WriteOnly)) {
        marks.write("5");
        marks.close(); // which writes it
    }
    QFile status(QStringLiteral("/proc/self/status"));
    const QByteArray text = status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
    const auto start = text.indexOf("VmHWM:");
    return text.mid(start + 6, text.indexOf("kB", start) - start - 6).trimmed().toDouble() * 1024;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.value(values.size() / 2);
}

} // namespace vo::benchmark
