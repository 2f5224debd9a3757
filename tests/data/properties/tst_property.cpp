// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"
#include "support/signalhook.h"

#include <QtCore/QLocale>
#include <QtCore/QPointer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <functional>

using namespace vo::data;
using namespace vo::test;
using Edit = std::function<void(ValueDocument &)>;
Q_DECLARE_METATYPE(Edit)

namespace {

const QDateTime noon(QDate(2024, 6, 1), QTime(12, 0), Qt::UTC);

} // namespace

class tst_Property : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void editOfEqualValueChangesNothing()
    {
        const QVariant place = QVariant::fromValue(QGeoCoordinate(1, 2));
        const std::vector<std::tuple<QByteArray, QVariant, QVariant>> rows {
            { "integer", 1, 1 },           { "real", 0.3, 0.1 + 0.2 },
            { "single", 1.0F, 1.000001F }, { "moment", noon, noon.toOffsetFromUtc(3600) },
            { "texts", "a b"_l, "a b"_l }, { "place", place, place },
        };
        for (const auto &[name, present, equal] : rows) {
            const int edits = m_document->changeSequenceNumber();
            QVERIFY2(m_document->setProperty(name, present), name);
            QVERIFY2(m_document->setProperty(name, equal), name);
            QCOMPARE(m_document->changeSequenceNumber(), edits + 1);
        }
    }

    void momentsAreKeptInUtc()
    {
        QVERIFY(m_document->setMoment(noon.toOffsetFromUtc(7200)));
        QCOMPARE(m_document->moment().timeSpec(), Qt::UTC);
        QCOMPARE(m_document->moment(), noon);
        m_document->d->moment.fromJson("2024-06-01T14:00:01+02:00"_s);
        QCOMPARE(m_document->moment().timeSpec(), Qt::UTC);
        QCOMPARE(m_document->moment(), noon.addSecs(1));
    }

    void accessDecidesWhatIsReadAndWritten_data()
    {
        QTest::addColumn<int>("level");
        QTest::newRow("none") << int(Document::NoAccess);
        QTest::newRow("read") << int(Document::ReadAccess);
        QTest::newRow("write") << int(Document::WriteAccess);
    }
    void accessDecidesWhatIsReadAndWritten()
    {
        QFETCH(int, level);
        const bool readable = level >= Document::ReadAccess;
        const bool writable = level >= Document::WriteAccess;
        const auto stored = R"({"text": "a", "integer": 3, "palette": ["#010203"],
                                "prices": {"AT": 1}, "title": {"_": "t"}})"_json;
        m_document->Document::assignData(stored);
        AccessContext::access(m_document).level = Document::AccessLevel(level);

        QCOMPARE(m_document->text(), readable ? "a"_s : QString());
        QCOMPARE(m_document->integer(), readable ? 3 : 0);
        QCOMPARE(m_document->palette().isEmpty(), !readable);
        QCOMPARE(m_document->prices().isEmpty(), !readable);
        QCOMPARE(m_document->title(), readable ? "t"_s : QString());
        QCOMPARE(m_document->setText("b"_s), writable);
        QCOMPARE(m_document->d->palette.set({}), writable);
        QCOMPARE(m_document->d->prices.set("DE"_s, 2), writable);
        QCOMPARE(m_document->d->prices.remove("AT"_s), writable);
        m_document->d->title.insert("_"_s, "u"_s);
        QCOMPARE(m_document->d->title.remove("_"_s), writable);
        m_document->d->title.clear();
        QCOMPARE(m_document->isDirty(), writable);
        // Storing asks for no access: a reader must not empty what it passes on.
        const QJsonObject json = m_document->serialize();
        QCOMPARE(json["text"_s].toString(), writable ? "b"_s : "a"_s);
        QCOMPARE(json["title"_s] == stored["title"_s], !writable);
    }

    void editNotifiesReportsAndDirties_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<bool>("dirtyFirst");
        QTest::addColumn<Edit>("edit");
        const auto row = [](const char *signal, bool dirtyFirst, const Edit &edit) {
            QTest::newRow(signal) << QByteArray(signal) << dirtyFirst << edit;
        };
        row("textChanged", false, [](auto &document) { document.setText("a"_s); });
        row("momentChanged", true, [](auto &document) { document.setMoment(noon); });
        row("paletteChanged", false, [](auto &document) { document.d->palette.set({ QColor() }); });
        row("pricesChanged", false, [](auto &document) { document.d->prices.set("AT"_s, 1); });
        row("titleChanged", true, [](auto &document) { document.d->title.insert("_"_s, "a"_s); });
    }
    void editNotifiesReportsAndDirties()
    {
        QFETCH(QByteArray, signal);
        QFETCH(bool, dirtyFirst);
        QFETCH(Edit, edit);
        QStringList order;
        const SignalHook told(m_document, signal, [&] { order += "told"_s; });
        const SignalHook dirty(m_document, "editedChanged", [&] { order += "dirty"_s; });
        const QSignalSpy reported(m_context.get(), &Context::documentChanged);
        edit(*m_document);
        QCOMPARE(order, dirtyFirst ? "dirty told"_l : "told dirty"_l);
        QCOMPARE(m_document->changeSequenceNumber(), 1);
        QTRY_COMPARE(reported.count(), 1);
    }

    void documentMayDieInItsChangeSignal_data()
    {
        editNotifiesReportsAndDirties_data();
        QTest::newRow("stored data")
            << QByteArray("textChanged") << false << Edit([](auto &document) {
                   document.Document::assignData(R"({"text": "a", "real": 1})"_json);
               });
        QTest::newRow("access lost")
            << QByteArray("realChanged") << false << Edit([](auto &document) {
                   AccessContext::setLevel(&document, Document::NoAccess);
                   document.updateAccessLevel();
               });
    }
    void documentMayDieInItsChangeSignal()
    {
        QFETCH(QByteArray, signal);
        QFETCH(Edit, edit);
        QCOMPARE(m_document->accessLevel(), Document::WriteAccess);
        const QPointer<ValueDocument> guard(m_document);
        const SignalHook hook(m_document, signal, [&] { delete guard.data(); });
        edit(*m_document);
        QVERIFY(guard.isNull());
        QVERIFY(m_context->dirtyDocuments().isEmpty());
    }

    void storedDataIsNoEdit()
    {
        const QSignalSpy text(m_document, &ValueDocument::textChanged);
        const QSignalSpy reported(m_context.get(), &Context::documentChanged);
        QCOMPARE(m_document->integer(), 7); // the initial value of its class
        for (int times = 0; times < 2; ++times) {
            m_document->Document::assignData(R"({"text": "a", "integer": "12"})"_json);
        }
        QCOMPARE(m_document->integer(), 12);
        QCOMPARE(text.count(), 1);
        QVERIFY(!m_document->isDirty());
        QTRY_COMPARE(reported.count(), 1);
        // A missing key leaves the value, null is a value.
        m_document->Document::assignData(R"({"integer": null})"_json);
        QCOMPARE(m_document->text(), "a"_s);
        QCOMPARE(m_document->integer(), 0);
    }

    void lockedDocumentIsSilent()
    {
        int notified = 0;
        m_context->addCreationHandler("values"_s, [&](Document *document) {
            auto *values = qobject_cast<ValueDocument *>(document);
            connect(values, &ValueDocument::textChanged, this, [&] { ++notified; });
            values->d->text.fromJson("a"_s);
            values->setText(values->text() + "b"_s);
        });
        const auto *made = load<ValueDocument>({});
        QCOMPARE(made->text(), "ab"_s);
        QCOMPARE(notified, 0);
        QVERIFY(!made->isDirty());
    }

    void uiStringFollowsTheLocale()
    {
        const QLocale former;
        QLocale::setDefault(QLocale("de_AT"_s));
        UiStringProperty &title = m_document->d->title;
        for (const QString &key : "en _ de de_DE de_AT"_l) { // each a better choice
            title.insert(key, key);
            title.insert(key, key); // no edit
            QCOMPARE(title.get(), key == "en"_s ? QString() : key == "de_DE"_s ? "de"_s : key);
        }
        QLocale::setDefault(former);
        QCOMPARE(m_document->changeSequenceNumber(), 5);

        // A copy takes all texts, and is no edit.
        auto *other = load<ValueDocument>({});
        AccessContext::access(other).level = Document::ReadAccess;
        other->d->title.copy(&title);
        QCOMPARE(other->d->title.toJson(), title.toJson());
        QVERIFY(!other->isDirty());
    }

    void propertyWithoutQtPropertyWorksUnheard()
    {
        auto &nameless = m_document->d->nameless;
        QVERIFY(nameless.set("a"_s));
        QCOMPARE(nameless.get(), "a"_s);
        QVERIFY(m_document->isDirty());
        QVERIFY(!m_document->serialize().contains("nameless"_s));
        // Neither is what the class declares as not stored.
        QVERIFY(m_document->d->session.set("s"_s));
        QVERIFY(!m_document->serialize().contains("session"_s));
    }

    void recordsOfPropertiesStayInPlace()
    {
        const PropertyInfo *text = &PropertyInfo::get("text", m_document);
        for (int number = 0; number < 2000; ++number) { // makes the table grow
            const QByteArray name = "unknown" + QByteArray::number(number);
            QCOMPARE(PropertyInfo::get(name, m_document).name(), name);
        }
        QCOMPARE(&PropertyInfo::get("text", m_document), text);
        QVERIFY(text->signal().isValid());
        const QByteArray endless(300, 'x');
        QCOMPARE(PropertyInfo::get(endless, m_document).name(), endless.left(255));
    }

private:
    void prepare() override { m_document = load<ValueDocument>({}); }

    ValueDocument *m_document = nullptr;
};

QTEST_GUILESS_MAIN(tst_Property)
#include "tst_property.moc"
