// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include <functional>

namespace vo::benchmark {

/// Keeps the optimiser from dropping the work that made \p value.
template <typename T>
void keep(const T &value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// One measured thing and what it is measured against: the same work by a peer, or a limit.
struct Row
{
    QString work;
    int size = 0; // how many items one run handles
    QString unit; // of both figures
    double ours = 0;
    QString anchorName;
    double anchor = 0;
    double target = 0; // the ratio that we owe; 0 for none
};

/// The figures of one program. Printed as a table at the end, or as JSON lines with --json.
/// Options: --quick for one run of the small sizes only, --json.
class Report
{
public:
    Report(const QString &subject, int argc, char **argv);
    ~Report();
    Q_DISABLE_COPY_MOVE(Report)

    /// The sizes to measure at, none above \p largest.
    [[nodiscard]] QList<int> sizes(int largest = 100000) const;
    [[nodiscard]] int runs() const { return m_quick ? 1 : 7; }
    void add(const Row &row);

    /// Runs both sides in turns and adds the medians of their times per item, in \p row.unit,
    /// which is ns, us or ms.
    void compare(Row row, const std::function<void()> &ours, const std::function<void()> &anchor);

private:
    const QString m_subject;
    const bool m_quick;
    const bool m_json;
    QList<Row> m_rows;
};

/// How long \p work takes, in nanoseconds of this thread's processor time. Time in which others
/// have the processor does not count.
double cpuTime(const std::function<void()> &work);

/// How many bytes of heap \p work leaves in use.
double heapGrowth(const std::function<void()> &work);

/// Bytes that this process has in memory, at most so far. Begins anew with \p restart.
double peakMemory(bool restart);

double median(QList<double> values);

} // namespace vo::benchmark
