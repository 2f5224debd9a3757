// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"

#include <QtTest/QTest>

#include <functional>
#include <new>

using namespace vo::data;
using namespace vo::test;
using Edit = std::function<bool(ValueDocument &)>;
Q_DECLARE_METATYPE(Edit)

namespace {

/// Holds its property itself, so that the property is found where the document is.
struct Inlined : public LinkedDocument
{
    using LinkedDocument::LinkedDocument;
    Property<int> number { "number", this };
};

/// A change of another kind with the key of a given one.
struct Impostor : public Change
{
    Impostor(Document *document, quint64 keyOfOther)
        : Change(document)
        , key(keyOfOther)
    { }
    void apply() override { }
    void unapply() override { }
    [[nodiscard]] quint64 uniqueKey() const override { return key; }

    const quint64 key;
};

} // namespace

class tst_ChangeRecording : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void editsAreTakenBackAndMadeAgain_data()
    {
        QTest::addColumn<Edit>("edit");
        const auto row = [](const char *tag, const Edit &edit) { QTest::newRow(tag) << edit; };
        row("int", [](auto &document) { return document.setInteger(1); });
        row("moment",
            [](auto &document) { return document.setMoment(QDateTime::currentDateTime()); });
        row("list", [](auto &document) { return document.d->palette.set({ QColor(1, 2, 3) }); });
        row("map entry", [](auto &document) { return document.d->prices.set("DE"_s, 2); });
        row("map entry gone", [](auto &document) { return document.d->prices.remove("AT"_s); });
        row("struct", [](auto &document) { return document.setStructValue("s"_s, "f"_s, 1); });
    }
    void editsAreTakenBackAndMadeAgain()
    {
        QFETCH(Edit, edit);
        m_document->d->prices.fromJson(R"({"AT": 1})"_json);
        const auto content = [this] {
            QJsonObject json = m_document->serialize();
            json.remove("edited"_s);
            return json;
        };
        const QJsonObject before = content();
        QVERIFY(edit(*m_document));
        const QJsonObject after = content();
        QVERIFY(after != before);

        m_context->undo();
        QCOMPARE(content(), before);
        const int sequence = m_document->changeSequenceNumber();
        QVERIFY(sequence > 1); // taking back is an edit, too
        m_context->redo();
        QCOMPARE(content(), after);
        QVERIFY(m_document->changeSequenceNumber() > sequence);
    }

    void editsOfOnePropertyMerge()
    {
        m_document->setInteger(1);
        m_document->setInteger(2);
        m_document->d->prices.set("AT"_s, 1);
        m_document->d->prices.set("DE"_s, 2);
        const auto &changes = m_context->changes;
        QCOMPARE(int(changes.size()), 4);
        for (const int first : { 0, 2 }) {
            QVERIFY(changes[first]->uniqueKey() != 0);
            QCOMPARE(changes[first]->uniqueKey(), changes[first + 1]->uniqueKey());
            QVERIFY(changes[first]->canMergeWith(changes[first + 1].get()));
            changes[first]->mergeWith(changes[first + 1].get());
            // The first old value and the last new one.
            changes[first]->unapply();
            QCOMPARE(m_document->integer(), first == 0 ? 7 : 2);
            QVERIFY(m_document->prices().isEmpty() || first == 0);
            changes[first]->apply();
            QCOMPARE(m_document->integer(), 2);
            QCOMPARE(int(m_document->prices().size()), 2);
        }
    }

    void editsOfDifferentThingsDoNotMerge()
    {
        auto *other = load<ValueDocument>({});
        m_document->setText("a"_s);
        m_document->d->nameless.set("b"_s); // another property of the same type
        m_document->setInteger(1);
        other->setText("c"_s);
        m_document->setStructValue("s"_s, "f"_s, 1);
        m_document->setStructValue("s"_s, "f"_s, 2);
        auto &changes = m_context->changes;
        changes.push_back(std::make_unique<Impostor>(m_document, changes.front()->uniqueKey()));
        for (std::size_t first = 0; first < changes.size(); ++first) {
            for (std::size_t second = first + 1; second < changes.size(); ++second) {
                QVERIFY2(!changes[first]->canMergeWith(changes[second].get()),
                         qPrintable("%1 and %2"_s.arg(first).arg(second)));
            }
        }
    }

    void reusedAddressDoesNotMergeStrangers()
    {
        alignas(Inlined) unsigned char storage[sizeof(Inlined)];
        for (const int number : { 1, 2 }) {
            auto *document = new (storage) Inlined(m_context.get());
            QVERIFY(document->number.set(number));
            document->~Inlined();
        }
        const auto &changes = m_context->changes;
        QCOMPARE(changes.at(0)->uniqueKey(), changes.at(1)->uniqueKey());
        QVERIFY(!changes.at(0)->canMergeWith(changes.at(1).get()));
    }

    void changeDiesWithItsDocument()
    {
        m_document->setText("a"_s);
        m_document->d->palette.set({ QColor() });
        m_document->d->prices.set("AT"_s, 1);
        for (const bool alive : { true, false }) {
            for (const auto &change : m_context->changes) {
                QCOMPARE(change->isValid(), alive);
            }
            delete std::exchange(m_document, nullptr);
        }
        m_context->undo();
        m_context->redo();
    }

    void onlyEditsAreRecordedAndOnlyWhileRecording()
    {
        m_document->Document::assignData(R"({"text": "b", "prices": {"AT": 1}})"_json);
        m_document->d->title.insert("_"_s, "c"_s); // this kind never is
        m_context->accepting = false;              // what nobody takes is deleted
        QVERIFY(m_document->setText("c"_s));
        m_context->active = false;
        QVERIFY(!m_document->changeRecordingActive());
        QVERIFY(m_document->setText("a"_s));
        QVERIFY(m_document->d->prices.remove("AT"_s));
        QVERIFY(m_document->setStructValue("s"_s, "f"_s, 1));
        QVERIFY(m_context->changes.empty());
        m_document->beginRecordChanges();
        m_document->rollbackChanges();
        m_document->endRecordChanges();
        QCOMPARE(m_context->calls, "begin rollback end"_l);
    }

    void changeMayBeDeletedWhileItRuns()
    {
        m_document->setStructValue("s"_s, "f"_s, 1);
        QString seen;
        connect(m_document, &LinkedDocument::structValueChanged, this,
                [this] { m_context->clearChanges(); });
        connect(m_document, &LinkedDocument::structValueChanged, this,
                [&](const QString &key, const QString &field) { seen = key + field; });
        m_context->changes.back()->unapply();
        QVERIFY(m_context->changes.empty());
        QCOMPARE(seen, "sf"_s);
        QVERIFY(m_document->getStructValue("s"_s, "f"_s).isUndefined());
    }

private:
    void prepare() override
    {
        m_document = load<ValueDocument>({});
        m_context->active = true;
    }

    ValueDocument *m_document = nullptr;
};

QTEST_GUILESS_MAIN(tst_ChangeRecording)
#include "tst_changerecording.moc"
