// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/manualclock.h"
#include "support/rowview.h"
#include "support/testdocuments.h"

#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/custom/datalistmodel.h>
#include <vorrel/data/custom/integerfield.h>
#include <vorrel/data/custom/stringfield.h>

#include <QtCore/QJsonArray>
#include <QtCore/QRandomGenerator>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_DataListModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        registerDocument<Station>();
        m_model.reset();
        m_context = std::make_unique<EditContext>();
        m_station =
            static_cast<Station *>(LinkedDocument::create("station"_s, "own"_s, m_context.get()));
        m_model = std::make_unique<DataListModel>();
        auto *text = new StringField(m_model.get());
        auto *number = new IntegerField(m_model.get());
        text->setName("text"_s);
        number->setName("stored"_s);
        number->setAlias("number"_s);
        number->setDefaultValue(7);
        QQmlListProperty<DataField> fields = m_model->fields();
        fields.append(&fields, text);
        fields.append(&fields, number);
        m_model->componentComplete();
        m_model->setKey("list"_s);
        m_model->setDocument(m_station);
    }

    void randomEditsFollowAPlainList()
    {
        const QString given = qEnvironmentVariable("VORREL_TEST_SEED");
        const quint32 seed =
            given.isEmpty() ? QRandomGenerator::global()->generate() : given.toUInt();
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt();
        QRandomGenerator random(seed);
        ManualClock clock;
        const QAbstractItemModelTester tester(m_model.get());
        const RowView view(m_model.get());
        QSignalSpy counts(m_model.get(), &DataListModel::countChanged);
        QStringList rows; // what the model has to show
        for (int step = 0; step < steps; ++step) {
            const QByteArray trace =
                "VORREL_TEST_SEED=%1, step %2"_s.arg(seed).arg(step).toLatin1();
            clock.advance(std::chrono::milliseconds(501));
            const auto formerCount = rows.size();
            counts.clear();
            randomStep(random, rows);
            QVERIFY2(view.ids() == rows, trace);
            QVERIFY2(rows.size() == formerCount || counts.count() > 0, trace);
            for (int row = 0; row < rows.size(); ++row) {
                QVERIFY2(view.rows[row] == view.read(row), trace);
            }
            if (!m_model->canCommit()) {
                QVERIFY2(rows == stored("list"_s), trace);
                for (int row = 0; row < rows.size(); ++row) {
                    const QString text = m_station->getStructValue(rows[row], "text"_s).toString();
                    QVERIFY2(view.rows[row].section("|"_s, 1, 1) == text, trace);
                }
            }
        }
    }

    void listsAreFollowedByTheFewestSignals()
    {
        RowView view(m_model.get());
        QRandomGenerator random(7);
        for (int round = 0; round < 300; ++round) {
            QStringList wanted;
            for (int id = 0; id < 12; ++id) {
                wanted.insert(random.bounded(int(wanted.size()) + 1), QString::number(id));
            }
            wanted = wanted.mid(random.bounded(6));
            const QStringList signalsToCome = signalsFor(view.ids(), wanted);
            view.log.clear();
            m_station->setList("list"_s, QJsonArray::fromStringList(wanted));
            QCOMPARE(view.log, signalsToCome);
            QCOMPARE(view.ids(), wanted);
        }
    }

    void slotsMayChangeWhatIsFollowed()
    {
        const std::function<void()> actions[] {
            [&] {
                m_station->setList("list"_s, { "c"_s, "a"_s });
            },
            [&] { m_model->setKey("other"_s); },
            [&] { QVERIFY(!m_model->move(0, 1) && m_model->append().isEmpty()); },
            [&] { delete m_station; },
            [&] { m_model.reset(); },
        };
        using Model = QAbstractItemModel;
        for (const auto &action : actions) {
            for (const auto signal : { &Model::rowsRemoved, &Model::rowsInserted }) {
                init();
                m_station->setList("list"_s, QJsonArray::fromStringList("a b c d e"_l));
                QPointer<QObject> once(new QObject(this));
                connect(m_model.get(), signal, once, [&] {
                    delete once;
                    action();
                });
                m_station->setList("list"_s, QJsonArray::fromStringList("e x c y b"_l));
                const bool isThere = m_model && m_model->document();
                QVERIFY(!once
                        && (!isThere || RowView(m_model.get()).ids() == stored(m_model->key())));
            }
        }
    }

    void documentsAndFieldsMayGo()
    {
        m_model->insert(0, { { "text"_s, "late"_s } });
        delete m_model->findChild<StringField *>();
        QVERIFY(!m_model->roleNames().values().contains("text") && !m_model->canCommit());
        m_model->insert(0);
        delete m_station;
        QVERIFY(!m_model->remove(0) && m_model->insert(0).isEmpty());
        m_model->commit();
        processEvents();
        QCOMPARE(m_model->count(), 0);
    }

private:
    [[nodiscard]] QStringList stored(const QString &list) const
    {
        return QVariant(m_station->getList(list).toVariantList()).toStringList();
    }

    /// One thing that the user of the model, or another one, may do.
    void randomStep(QRandomGenerator &random, QStringList &rows)
    {
        const auto anyRow = [&] { return random.bounded(int(rows.size()) + 1) - (rows.isEmpty()); };
        const int row = anyRow();
        const int to = anyRow();
        const QString id = rows.value(row);
        const QVariantMap values { { "text"_s, "t%1"_s.arg(random.bounded(9)) },
                                   { "number"_s, random.bounded(9) } };
        switch (random.bounded(14)) {
        case 0:
        case 1: {
            const int place = std::clamp(row, 0, int(rows.size()));
            rows.insert(place, m_model->insert(row, values));
            break;
        }
        case 2:
            m_model->remove(row) ? void(rows.removeAt(row)) : void();
            break;
        case 3:
        case 4:
            if (m_model->move(id, to)) {
                rows.move(rows.indexOf(id), std::min(to, int(rows.size()) - 1));
            }
            break;
        case 5:
            if (!id.isEmpty()) {
                m_model->migrate(random.bounded(2) ? "other"_s : "list"_s, row, to);
                rows.removeAt(row);
            }
            break;
        case 6:
        case 7:
            m_model->setData(row, "text"_s, values["text"_s]);
            m_model->setData(id, "number"_s, values["number"_s]);
            break;
        case 8:
            m_model->commit();
            rows = stored("list"_s); // with what migrated within the list
            break;
        case 9:
            m_model->revert();
            rows = stored("list"_s);
            break;
        case 10:
        case 11:
            random.bounded(2) ? m_context->undo() : m_context->redo();
            rows = m_model->canCommit() && ids() == rows ? rows : stored("list"_s);
            break;
        case 12:
            m_station->setStructValue(id.isEmpty() ? "other"_s : id, "text"_s, "o"_s);
            break;
        default:
            changeFromElsewhere(random);
            rows = stored("list"_s);
        }
    }

    [[nodiscard]] QStringList ids() const { return RowView(m_model.get()).ids(); }

    void changeFromElsewhere(QRandomGenerator &random)
    {
        QStringList items = stored("list"_s);
        for (int changes = random.bounded(6); changes > 0 && !items.isEmpty(); --changes) {
            items.removeAt(random.bounded(int(items.size())));
        }
        for (int changes = random.bounded(6); changes > 0; --changes) {
            items.insert(random.bounded(int(items.size()) + 1), "r%1"_s.arg(random.bounded(20)));
        }
        if (random.bounded(8)) {
            items.removeDuplicates();
        }
        for (int changes = random.bounded(12); changes > 0 && !items.isEmpty(); --changes) {
            const int size = int(items.size());
            items.move(random.bounded(size), random.bounded(size));
        }
        QJsonObject data = m_station->serialize()[":data"_s].toObject();
        data["l:list"_s] = QJsonArray::fromStringList(items);
        for (const QString &item : items) {
            data["s:"_s + item] = QJsonObject { { "text"_s, "e%1"_s.arg(random.bounded(9)) } };
        }
        reload(m_station, { { ":data"_s, data } });
    }

    std::unique_ptr<EditContext> m_context;
    Station *m_station = nullptr;
    std::unique_ptr<DataListModel> m_model;
};

QTEST_GUILESS_MAIN(tst_DataListModel)
#include "tst_datalistmodel.moc"
