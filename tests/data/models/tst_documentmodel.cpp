// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/naiverows.h"
#include "support/testdocuments.h"

#include <vorrel/data/models/documentmodelpropertyroles.h>
#include <vorrel/data/models/filters/groupedfiltercriterion.h>
#include <vorrel/data/models/filters/integerfiltercriterion.h>
#include <vorrel/data/models/filters/stringfiltercriterion.h>
#include <vorrel/data/models/sorters/stringsortcriterion.h>
#include <vorrel/data/models/sorters/typesortcriterion.h>

#include <QtCore/QRandomGenerator>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using namespace std::chrono_literals;

namespace {

/// Steps (see Table), the signals of those behind the colon, and the rows and the selection at the
/// end. 0 is a null.
const char *const scripts = R"(: +a0 => +0-0 d +1-1 d |a0|
+abc : =xyz = . => -0-2 d ||
+abc : =abc . => d |abc|
+abc : =bac . => ~0 ~1 d |bac|
+abc : =cbde0 . => +3-4 ~0 ~2 d |cbde0|
+abc : =b . => -1-2 ~0 d |b|
+abc : =x +y => |abc|
+aba0c : sc sc sx ta tc uc => s ~4 s s ~0 s ~4 |aba0c|xa
+aba0c : A A ua => s ~0 ~1 ~2 ~3 ~4 s ~0 |aba0c|ba0c
+aba0c A sx : C C => s ~0 ~1 ~0 ~4 |aba0c|
+abcb0 A : Db => |a0c00|ac0
+abcb0 A Db : P => -3-3 -1-1 d s |ac0|ac0
+a0 A Da : A +b => -0-0 d s ~0 +1-1 d |0b|0
+a0 =bcd Dc : . => ~0 ~1 d |bd|
+ab =bcd : Dc Dd Db Da . P => -0-1 d ||
+0aba P : La Lx P => ~1 ~3 |0aba|)";

/// A model of documents with one letter each, which notes its signals: "+2-3" for inserted rows,
/// "-2-3" for removed ones, "~1" for a changed one, "d" and "s" for the lists. Stations have small
/// letters, tags great ones.
struct Table
{
    explicit Table(const std::function<void()> &heard = [] {})
    {
        const auto note = [this, heard](const QString &text) { log += text, heard(); };
        DocumentModel *const m = model.get();
        QObject::connect(m, &DocumentModel::rowsInserted, [=](auto, int first, int last) {
            const auto rows = model->dataList().mid(first, last - first + 1);
            mirror = mirror.mid(0, first) + rows + mirror.mid(first);
            note("+%1-%2 "_s.arg(first).arg(last));
        });
        QObject::connect(m, &DocumentModel::rowsRemoved, [=](auto, int first, int last) {
            mirror.erase(mirror.begin() + first, mirror.begin() + last + 1);
            note("-%1-%2 "_s.arg(first).arg(last));
        });
        QObject::connect(m, &DocumentModel::dataChanged, [=](auto a, auto b, const auto &roles) {
            mirror[a.row()] = model->dataList().at(a.row());
            note(a == b && roles.isEmpty() ? "~%1 "_s.arg(a.row()) : "?"_s);
        });
        QObject::connect(m, &DocumentModel::documentsChanged, [=] { note("d "_s); });
        QObject::connect(m, &DocumentModel::selectionChanged, [=] { note("s "_s); });
    }

    LinkedDocument *document(QChar id)
    {
        const QString type = id.isUpper() ? "tag"_s : "station"_s;
        auto *known = static_cast<LinkedDocument *>(context.loadedDocument(id));
        return known || id == QLatin1Char('0') ? known : LinkedDocument::create(type, id, &context);
    }

    void run(const QString &steps)
    {
        QList<Document *> documents;
        const auto any = [&] { return static_cast<LinkedDocument *>(documents.value(0)); };
        const std::map<char, std::function<void()>> acts {
            { ':', [&] { log.clear(); } },
            { '+', [&] { append(source, documents); } },
            { '=', [&] { refill(source, documents); } },
            { '.', [&] { tickTimer(model.get(), 30ms); } },
            { 's', [&] { model->selectDocument(any()); } },
            { 'u', [&] { model->deselectDocument(any()); } },
            { 't', [&] { model->toggleDocumentSelected(any()); } },
            { 'A', [&] { model->selectAll(); } },
            { 'C', [&] { model->clearSelection(); } },
            { 'D', [&] { delete any(); } },
            { 'L', [&] { any()->setLabel("L"_s); } },
            { 'P', [] { processEvents(); } },
        };
        for (const QString &step : steps.split(QLatin1Char(' '))) {
            documents.clear();
            for (const QChar id : step.mid(1)) {
                documents << document(id);
            }
            model ? acts.at(step.at(0).toLatin1())() : void();
        }
    }

    /// The signals so far, the rows and the selection.
    QString state() const
    {
        return log + idsOf(model.get(), "documents") + idsOf(model.get(), "selection");
    }

    TestContext context;
    QString log;
    QList<Document *> mirror; // what a view has by the signals
    std::unique_ptr<DocumentModel> model = std::make_unique<DocumentModel>();
    QObject *source = model.get(); // of what is appended
    QAbstractItemModelTester tester { model.get() };
};

/// A filter, a sorter and a model in a row, under random steps, also from within.
struct Chain : Table
{
    explicit Chain(quint32 seed)
        : Table([this] { random.bounded(30) == 0 ? act() : void(); })
        , random(seed)
    {
        part.setProperty("text"_s), number.setProperty("number"_s), text.setProperty("text"_s);
        QObject::connect(&filter, &DocumentFilter::resultChanged,
                         [this] { refill(&sorter, filter.resultList()); });
        QObject::connect(&sorter, &DocumentSorter::resultChanged,
                         [this] { refill(model.get(), sorter.resultList()); });
        source = &filter;
    }

    template <typename List>
    auto anyOf(const List &list)
    {
        return *(std::begin(list) + random.bounded(int(std::size(list))));
    }

    void act()
    {
        const int n = random.bounded(4);
        QString ids;
        do {
            ids += anyOf("ABCDEFGHIabcdefghijklmnopqrstuvwxy"_s);
        } while (random.bounded(12) > 0);
        const auto [list, criterion] = anyOf(links);
        const char *const names[] { "enabled", "inverted", "descending", "matchRequirement",
                                    "text",    "contains", "number",     "value" };
        const QByteArray name = anyOf(names);
        const QVariant word = n == 0 ? QString() : "a%1"_s.arg(random.bounded(6));
        const QVariant value = name == "text" || name == "contains" ? word : n % 3;
        const int act = random.bounded(8);
        if (act < 2) {
            run(act > 0 ? anyOf("sutDAC"_s) + ids.left(1) : (n > 0 ? "+"_s : "="_s) + ids);
        } else if (QQmlListReference criteria(list, "criteria"); act == 2) {
            n > 0 ? criteria.append(criterion) : criteria.clear();
        } else {
            QObject *object = n > 1 ? criterion : document(ids.at(0));
            object->metaObject()->indexOfProperty(name) < 0 || object->setProperty(name, value);
        }
    }

    /// Whether everything is as it has to be when nothing is under way any more.
    bool isRight()
    {
        do {
            processEvents();
        } while (tickTimer(&filter, 100ms) || tickTimer(&sorter, 30ms)
                 || tickTimer(model.get(), 30ms));
        const auto all = listed(model.get(), "selection");
        const QList<Document *> end { nullptr }; // UBSan cannot bear a comparison of empty lists
        const auto rows = naiveRows(&filter, &sorter) + end;
        const auto isMarked = [&](auto *d) { return model->isSelected(d) == all.contains(d); };
        return model->dataList() + end == rows && mirror + end == rows
            && std::all_of(rows.begin(), rows.end(), isMarked);
    }

    QRandomGenerator random;
    StringSortCriterion text;
    TypeSortCriterion type;
    StringFilterCriterion part;
    IntegerFilterCriterion number;
    GroupedFilterCriterion inner, outer;
    DocumentFilter filter;
    DocumentSorter sorter;
    const std::pair<QObject *, QObject *> links[8] {
        { &sorter, &text },  { &sorter, &type }, { &filter, &part }, { &filter, &number },
        { &filter, &outer }, { &outer, &inner }, { &outer, &part },  { &inner, &number },
    };
};

} // namespace

class tst_DocumentModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // Again and again, until a slot has destroyed the model in each signal.
    void rowsAndSignalsFollowTheLists()
    {
        for (const QString &script : QString::fromLatin1(scripts).split(QLatin1Char('\n'))) {
            const QString steps = script.section(" =>"_s, 0, 0);
            bool isWhole = false;
            for (int end = 1; !isWhole; ++end) {
                int signalsLeft = end;
                Table table([&] { --signalsLeft ? void() : table.model.reset(); });
                table.run(steps);
                isWhole = table.model != nullptr;
                QCOMPARE(isWhole ? steps + " => "_s + table.state() : script, script);
            }
        }
    }

    void aSlotMayEditTheLists()
    {
        Table table([&] { table.log == "~0 "_s ? table.run("+x =yz Da"_s) : void(); });
        table.run("+abcd : =dcba ."_s);
        QCOMPARE(table.state(), "~0 +4-4 d ~1 ~2 ~3 d |dcb0x|"_s);
        QTRY_COMPARE(table.state(), "~0 +4-4 d ~1 ~2 ~3 d -3-3 d -2-3 ~0 ~1 d |yz|"_s);
        const LogCapture log;
        QMetaObject::invokeMethod(table.model.get(), "performBatchUpdate");
        QVERIFY(log.contains("Error: performBatchUpdate() called without active batching. "_s));
    }

    void theLastListOfPropertiesNamesTheRolesOfAll()
    {
        TestContext context;
        DocumentModelPropertyRoles model, other;
        append(&model, { context.create("a"_s), nullptr });
        context.find("a"_s)->setProperty("mood", "dynamic"_s);
        model.setProperties("number text"_l);
        QCOMPARE(model.index(0).data(258), QVariant(7));
        other.setProperties("documentId mood"_l);
        QCOMPARE(model.roleNames().value(257), QByteArray("document"));
        QCOMPARE(model.index(0).data(258), QVariant("a"_s));
        const LogCapture log;
        QVERIFY(!model.index(0).data(259).isValid() && !model.index(1).data(258).isValid());
        QVERIFY(!model.index(0).data(260).isValid() && model.index(1).data(257).isValid());
        QCOMPARE(log.lines().join(QString()),
                 "default|critical|"
                 "vo::data::DocumentModelPropertyRoles::data Property not defined in Document"_s);
        QCOMPARE(model.DocumentModel::data(model.index(1), 258), QVariant(QString()));
    }

    void randomStepsEndInTheRightRows()
    {
        const auto other = QString::number(QRandomGenerator::global()->generate());
        const auto seed = qEnvironmentVariable("VORREL_TEST_SEED", other);
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt();
        Chain chain(seed.toUInt());
        for (int step = 0; step < steps; ++step) {
            chain.act();
            QVERIFY2(chain.random.bounded(2) > 0 || chain.isRight(), qPrintable("seed "_s + seed));
        }
    }
};

QTEST_GUILESS_MAIN(tst_DocumentModel)
#include "tst_documentmodel.moc"
