// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What free-form data costs: to edit in small and in large documents, to show as a list, and to
// follow when the list is in another order.

#include "support/benchmark.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/custom/datalistmodel.h>
#include <vorrel/data/custom/stringfield.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <memory>

using namespace vo::benchmark;
using namespace vo::data;

class Page : public LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "page")

public:
    using LinkedDocument::LinkedDocument;
};

namespace {

constexpr int fieldCount = 5;
constexpr int large = 10000;
constexpr int small = 10;

QString fieldName(int number)
{
    return QStringLiteral("field%1").arg(number);
}

/// A document with a list of items, each with five texts.
struct Content
{
    explicit Content(int size)
        : page(qobject_cast<Page *>(LinkedDocument::create(QStringLiteral("page"), &context)))
    {
        for (int number = 0; number < size; ++number) {
            ids << page->newListItemId();
        }
        QJsonObject data { { QStringLiteral("l:rows"), QJsonArray::fromStringList(ids) } };
        for (const QString &id : std::as_const(ids)) {
            QJsonObject fields;
            for (int field = 0; field < fieldCount; ++field) {
                fields.insert(fieldName(field), id + fieldName(field));
            }
            data.insert(QStringLiteral("s:") + id, fields);
        }
        page->assignCustomData(data);
    }

    Context context;
    Page *const page;
    QStringList ids;
};

/// An edit in a document with 10,000 structs against the same with 10.
void measureEdits(Report &report)
{
    constexpr int edits = 20000;
    Content many(large);
    Content few(small);
    const auto repeat = [](Content &content, auto edit) {
        return [&content, edit] {
            for (int number = 0; number < edits; ++number) {
                const int place = number % int(content.ids.size());
                edit(content.page, content.ids.at(int(place * 7919LL % content.ids.size())),
                     number);
            }
        };
    };
    const auto row = [](const char *work) {
        return Row { QLatin1String(work),
                     edits,
                     QStringLiteral("us"),
                     0,
                     QStringLiteral("in 10 structs"),
                     0,
                     3 };
    };
    const auto setField = [](Page *page, const QString &id, int number) {
        page->setStructValue(id, fieldName(number % fieldCount), number);
    };
    report.compare(row("set a field in 10,000 structs"), repeat(many, setField),
                   repeat(few, setField));
    const auto makeStruct = [](Page *page, const QString &id, int number) {
        page->setStructValue(id + QLatin1String(":new"), fieldName(0), number);
        page->deleteStruct(id + QLatin1String(":new"));
    };
    report.compare(row("make and delete one of 10,000 structs"), repeat(many, makeStruct),
                   repeat(few, makeStruct));
}

void measureLists(Report &report)
{
    Content many(large);
    Content few(small);
    const auto turn = [](Content &content) {
        for (int times = large / int(content.ids.size()); times > 0; --times) {
            std::rotate(content.ids.begin(), content.ids.begin() + 1, content.ids.end());
            content.page->setList(QStringLiteral("rows"), QJsonArray::fromStringList(content.ids));
        }
    };
    report.compare(
        { QStringLiteral("set a list of 10,000 items"), large, QStringLiteral("us"), 0,
          QStringLiteral("of 10 items"), 0, 3 },
        [&] { turn(many); }, [&] { turn(few); });
    report.compare(
        { QStringLiteral("delete 5,000 of 10,000 items"), large, QStringLiteral("us"), 0,
          QStringLiteral("5 of 10 items"), 0, 3 },
        [] {
            Content content(large);
            content.page->setList(QStringLiteral("rows"),
                                  QJsonArray::fromStringList(content.ids.mid(large / 2)));
        },
        [] {
            for (int times = large / small; times > 0; --times) {
                Content content(small);
                content.page->setList(QStringLiteral("rows"),
                                      QJsonArray::fromStringList(content.ids.mid(small / 2)));
            }
        });
}

void measureLargeStruct(Report &report)
{
    QJsonObject fields;
    for (int number = 0; number < large; ++number) {
        fields.insert(fieldName(number), number);
    }
    Content content(small);
    report.compare(
        { QStringLiteral("set a struct of 10,000 fields"), large, QStringLiteral("ns"), 0,
          QStringLiteral("make the QJsonObject"), 0, 3 },
        [&] { content.page->setStruct(QStringLiteral("s"), fields); },
        [&] {
            QJsonObject copy;
            for (auto it = fields.begin(); it != fields.end(); ++it) {
                copy.insert(it.key(), it.value());
            }
            keep(copy);
        });
    int value = 0;
    report.compare(
        { QStringLiteral("set each field of such a struct"), large, QStringLiteral("us"), 0,
          QStringLiteral("of a struct of 5 fields"), 0, 3 },
        [&] {
            for (int number = 0; number < large; ++number) {
                content.page->setStructValue(QStringLiteral("s"), fieldName(number), --value);
            }
        },
        [&] {
            for (int number = 0; number < large; ++number) {
                content.page->setStructValue(content.ids.first(), fieldName(number % fieldCount),
                                             --value);
            }
        });
}

std::unique_ptr<DataListModel> makeModel(Page *page)
{
    auto model = std::make_unique<DataListModel>();
    QQmlListProperty<DataField> fields = model->fields();
    for (int number = 0; number < fieldCount; ++number) {
        auto *field = new StringField(model.get());
        field->setName(fieldName(number));
        fields.append(&fields, field);
    }
    model->componentComplete();
    model->setKey(QStringLiteral("rows"));
    model->setDocument(page);
    return model;
}

void measureReading(Report &report)
{
    const Content content(large);
    const std::unique_ptr<DataListModel> model = makeModel(content.page);
    QStringList names;
    for (int number = 0; number < fieldCount; ++number) {
        names << fieldName(number);
    }
    const auto readModel = [&] {
        for (int row = 0; row < large; ++row) {
            const QModelIndex index = model->index(row);
            for (int field = 1; field <= fieldCount; ++field) {
                keep(model->data(index, DataListModel::IdRole + field));
            }
        }
    };
    const auto readObjects = [&] {
        for (const QString &id : content.ids) {
            const QJsonObject fields = content.page->getStruct(id);
            for (const QString &name : std::as_const(names)) {
                keep(fields.value(name).toVariant());
            }
        }
    };
    QList<double> times[3];
    for (int run = 0; run < report.runs(); ++run) {
        model->revert(); // forgets what was read
        times[0] << cpuTime(readModel) / large / fieldCount;
        times[1] << cpuTime(readObjects) / large / fieldCount;
        times[2] << cpuTime(readModel) / large / fieldCount;
    }
    const QString unit = QStringLiteral("ns");
    const QString anchor = QStringLiteral("QJsonObject");
    report.add({ QStringLiteral("first read of 5 fields of each row"), large, unit,
                 median(times[0]), anchor, median(times[1]), 3 });
    report.add({ QStringLiteral("second read"), large, unit, median(times[2]), anchor,
                 median(times[1]), 1 });
}

/// The peer: the same moves on a list of texts.
class TextModel : public QAbstractListModel
{
public:
    QStringList rows;

    [[nodiscard]] int rowCount(const QModelIndex & /*parent*/) const override
    {
        return int(rows.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex & /*index*/, int /*role*/) const override
    {
        return {};
    }

    void follow(const QStringList &wanted)
    {
        QHash<QString, int> places;
        for (int row = 0; row < int(wanted.size()); ++row) {
            places.insert(wanted.at(row), row);
        }
        bool hasMoved = true;
        while (hasMoved) {
            hasMoved = false;
            for (int row = 0; row < int(rows.size()); ++row) {
                if (rows.at(row) != wanted.at(row)) {
                    const int to = places.value(rows.at(row));
                    beginMoveRows({}, row, row, {}, to > row ? to + 1 : to);
                    rows.move(row, to);
                    endMoveRows();
                    hasMoved = true;
                }
            }
        }
    }
};

void measureFollowing(Report &report)
{
    const Content content(large);
    const QString list = QStringLiteral("rows");
    QStringList reverse = content.ids;
    std::reverse(reverse.begin(), reverse.end());
    QStringList shuffled = content.ids;
    std::shuffle(shuffled.begin(), shuffled.end(), QRandomGenerator(1));
    const QStringList turned = content.ids.mid(large / 2) + content.ids.mid(0, large / 2);
    const std::pair<const char *, QStringList> orders[] { { "P12 reverse 10,000 rows", reverse },
                                                          { "P12 shuffle 10,000 rows", shuffled },
                                                          { "P12 rotate by half", turned } };
    for (const auto &[work, order] : orders) {
        QList<double> times[2];
        for (int run = 0; run < report.runs(); ++run) {
            content.page->setListRaw(list, QJsonArray::fromStringList(content.ids));
            const std::unique_ptr<DataListModel> model = makeModel(content.page);
            TextModel peer;
            peer.rows = content.ids;
            content.page->setListRaw(list, QJsonArray::fromStringList(order));
            times[0] << cpuTime([&] {
                            QMetaObject::invokeMethod(model.get(), "processListChange",
                                                      Q_ARG(QString, list));
                        })
                    / 1e6;
            times[1] << cpuTime([&] { peer.follow(order); }) / 1e6;
        }
        report.add({ QLatin1String(work), large, QStringLiteral("ms"), median(times[0]),
                     QStringLiteral("the same moves of texts"), median(times[1]), 0.15 });
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("freeform"), argc, argv);
    registerDocument<Page>();
    measureEdits(report);
    measureLists(report);
    measureLargeStruct(report);
    measureReading(report);
    measureFollowing(report);
    return 0;
}

#include "bench_freeform.moc"
