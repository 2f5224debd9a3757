// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/testdocuments.h"

#include <vorrel/data/models/documentsorter.h>
#include <vorrel/data/models/sorters/datetimesortcriterion.h>
#include <vorrel/data/models/sorters/sizesortcriterion.h>
#include <vorrel/data/models/sorters/stringsortcriterion.h>
#include <vorrel/data/models/sorters/typesortcriterion.h>

#include <QtCore/QRandomGenerator>
#include <QtCore/QSize>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

/// A rule of an application: by the number.
class NumberCriterion : public SortCriterion
{
public:
    [[nodiscard]] CompareFunction createCompareFunction() const override
    {
        return [sign = descending() ? -1 : 1](const Document *a, const Document *b) {
            const auto number = [](const Document *document) {
                return document->property("number").toInt();
            };
            return sign * (number(a) - number(b));
        };
    }
    void touch() { Q_EMIT updateRequired(); }
};

template <typename List, typename T>
void append(List list, T *object)
{
    list.append(&list, object);
}

template <typename List>
void clear(List list)
{
    list.clear(&list);
}

QString ids(const QList<Document *> &documents)
{
    QStringList ids;
    for (const Document *document : documents) {
        ids << document->documentId();
    }
    return ids.join(QLatin1Char(' '));
}

} // namespace

class tst_Sorters : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void sortsByEachRule_data()
    {
        QTest::addColumn<int>("rule");
        QTest::addColumn<bool>("descending");
        QTest::addColumn<QString>("order");
        QTest::newRow("none") << 0 << false << "d c b a e"_s;
        QTest::newRow("disabled") << 1 << false << "a b c d e"_s;
        QTest::newRow("text") << 2 << false << "e d b a c"_s;
        QTest::newRow("text, descending") << 2 << true << "c a b d e"_s;
        QTest::newRow("time") << 3 << false << "d e a c b"_s;
        QTest::newRow("size") << 4 << false << "a e d b c"_s;
        QTest::newRow("type") << 5 << false << "a b c d e"_s;
        QTest::newRow("type order") << 6 << false << "e a b c d"_s;
        QTest::newRow("type order, descending") << 6 << true << "a b c d e"_s;
        QTest::newRow("own rule") << 7 << false << "e b d a c"_s;
    }
    void sortsByEachRule()
    {
        QFETCH(int, rule);
        QFETCH(bool, descending);
        TestContext context;
        DocumentSorter sorter;
        sorter.setDelay(0);
        const auto add = [&](const QString &id, const QString &text, int time, const QSize &size,
                             int number) {
            auto *station = context.create(id);
            station->setText(text);
            station->setMoment(QDateTime::fromSecsSinceEpoch(time));
            station->setProperty("size", size);
            station->setNumber(number);
            append(sorter.documents(), station);
        };
        add("d"_s, "a9"_s, 1, { 1, 5 }, 1);
        add("c"_s, "Ä10"_s, 3, { 65536, 65537 }, 2); // the area wraps to 65536
        add("b"_s, "A10"_s, 5, { 3, 5 }, 1);
        add("a"_s, "ä10"_s, 3, QSize(), 2);
        Document *tag = context.createDocumentWithId("tag"_s, "e"_s); // without these properties
        tag->setProperty("moment", QDateTime::fromSecsSinceEpoch(2));
        append(sorter.documents(), tag);
        // Each under the number of its row.
        StringSortCriterion text;
        text.setProperty("text"_s);
        DateTimeSortCriterion time;
        time.setProperty("moment"_s);
        SizeSortCriterion size;
        size.setProperty("size"_s);
        TypeSortCriterion type;
        TypeSortCriterion typeOrder;
        typeOrder.setTypeOrder("tag x tag"_l);
        NumberCriterion number;
        StringSortCriterion disabled;
        disabled.setEnabled(false);
        const QList<SortCriterion *> rules { nullptr, &disabled, &text,      &time,
                                             &size,   &type,     &typeOrder, &number };
        SortCriterion *criterion = rules.at(rule);
        if (criterion) {
            criterion->setDescending(descending);
        }
        append(sorter.criteria(), criterion);
        QTEST(ids(sorter.resultList()), "order");
    }

    // Against a sort of all from scratch, by the same functions.
    void followsEveryChange()
    {
        constexpr int steps = 3000;
        const quint32 seed = qEnvironmentVariableIntValue("VORREL_TEST_SEED");
        QRandomGenerator random { seed };
        TestContext context;
        DocumentSorter sorter;
        sorter.setDelay(0);
        StringSortCriterion text;
        text.setProperty("text"_s);
        NumberCriterion number;
        QList<Document *> documents;
        const auto check = [&](int step) {
            QList<Document *> expected = documents;
            const auto byNumber = number.createCompareFunction();
            const auto byText = text.createCompareFunction();
            std::stable_sort(expected.begin(), expected.end(), [&](Document *a, Document *b) {
                const int first = number.enabled() ? byNumber(a, b) : 0;
                const int result = first != 0 ? first : byText(a, b);
                return result != 0 ? result < 0 : a->id() < b->id();
            });
            QVERIFY2(sorter.resultList() == expected,
                     qPrintable("step %1, seed %2"_s.arg(step).arg(seed)));
        };
        append(sorter.criteria(), static_cast<SortCriterion *>(&number));
        append(sorter.criteria(), static_cast<SortCriterion *>(&text));
        for (int step = 0; step < steps; ++step) {
            const auto any = [&] {
                return static_cast<Station *>(documents.at(random.bounded(int(documents.size()))));
            };
            const int action = documents.isEmpty() ? 0 : random.bounded(10);
            if (action == 0) {
                documents << context.create();
                append(sorter.documents(), documents.constLast());
            } else if (action == 1 && random.bounded(4) == 0) {
                documents << any(); // once more
                append(sorter.documents(), documents.constLast());
            } else if (action == 2 && random.bounded(8) == 0) {
                Document *gone = any();
                documents.removeAll(gone);
                delete gone;
            } else if (action == 3 && random.bounded(30) == 0) {
                documents.clear();
                clear(sorter.documents());
            } else if (action == 4 && random.bounded(4) == 0) {
                number.setDescending(!number.descending());
            } else if (action == 5 && random.bounded(4) == 0) {
                number.setEnabled(!number.enabled());
            } else if (action < 8) {
                any()->setNumber(random.bounded(5));
            } else {
                // Many at a time.
                for (int i = random.bounded(40); i > 0; --i) {
                    any()->setText("t%1"_s.arg(random.bounded(20)));
                }
            }
            processEvents();
            check(step);
        }
    }

    void waitsForTheEndOfABurst()
    {
        TestContext context;
        auto sorter = std::make_unique<DocumentSorter>();
        QSignalSpy results(sorter.get(), &DocumentSorter::resultChanged);
        QSignalSpy busy(sorter.get(), &DocumentSorter::busyChanged);
        QCOMPARE(sorter->delay(), 30);
        for (int i = 0; i < 100; ++i) {
            append(sorter->documents(), context.create());
        }
        QVERIFY(sorter->busy() && results.isEmpty());
        QTRY_COMPARE(results.size(), 1);
        QVERIFY(!sorter->busy() && busy.size() == 2);
        clear(sorter->criteria());
        clear(sorter->documents());
        clear(sorter->documents()); // even so
        QTRY_COMPARE(results.size(), 2);
        // A slot may destroy it.
        connect(sorter.get(), &DocumentSorter::resultChanged, this, [&] { sorter.reset(); });
        append(sorter->documents(), context.create());
        QTRY_VERIFY(!sorter);
    }
};

QTEST_GUILESS_MAIN(tst_Sorters)
#include "tst_sorters.moc"
