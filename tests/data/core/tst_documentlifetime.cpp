// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/signalhook.h"
#include "support/testdocuments.h"

#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/properties/langstring.h>

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;
using Action = std::function<void(TestContext &, Station &)>;
Q_DECLARE_METATYPE(Action)

namespace {

const auto storedData = R"({"next": "b", "exits": {"east": "b", "west": "c"}, "deleted": false,
    "label": "stored", "title": {"type": "langstring", "items": {"de": "x"}}, "notes":
    [{"type": "note", "station": "b"}, {"type": "note"}], ":data": {"s:s": {"g": 1}}})"_json;

} // namespace

/// Documents may be destroyed at any time, by anybody. Much of what is tested here only shows under
/// the address sanitizer.
class tst_DocumentLifetime : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void slotsMayDestroyAnything_data()
    {
        QTest::addColumn<Action>("action");
        const auto row = [](const char *name, const Action &action) {
            QTest::newRow(name) << action;
        };
        row("value", [](auto &, auto &a) { a.setNumber(1); });
        row("moment", [](auto &, auto &a) { a.setMoment(QDateTime::currentDateTime()); });
        row("list", [](auto &, auto &a) { a.d->palette.set({ QColor() }); });
        row("map", [](auto &, auto &a) { a.d->prices.set("AT"_s, 1); });
        row("caption", [](auto &, auto &a) { a.d->caption.insert("_"_s, "x"_s); });
        row("label", [](auto &, auto &a) { a.setLabel("x"_s); });
        row("texts", [](auto &, auto &a) { a.setTitle("x"_s); });
        row("link", [](auto &context, auto &a) { a.setNext(context.find("c"_s)); });
        row("unlink", [](auto &, auto &a) { a.d->next.clear(); });
        row("insert", [](auto &, auto &a) { a.d->notes.insert(a.newNote("x"_s), 0); });
        row("remove", [](auto &, auto &a) { a.d->notes.remove(a.d->notes.at(0)); });
        row("exit", [](auto &context, auto &a) { a.d->exits.insert("x"_s, context.find("c"_s)); });
        row("hold", [](auto &, auto &a) { a.d->note.set(a.newNote("x"_s)); });
        row("struct", [](auto &, auto &a) { a.setStructValue("s"_s, "f"_s, "$ref(0,c)"_s); });
        row("attach", [](auto &context, auto &a) { a.attachDocument(context.find("c"_s)); });
        row("edges", [](auto &, auto &a) { a.updateDependencies(); });
        row("access", [](auto &, auto &a) { a.accessController()->update(0); });
        row("no access", [](auto &context, auto &) {
            context.levels.insert("a", Document::NoAccess);
            context.updateAccessLevel();
        });
        row("stored data", [](auto &, auto &a) {
            QJsonObject data = storedData;
            data.insert("accessControl"_s, 1);
            reload(&a, data);
        });
        row("saved", [](auto &, auto &a) { a.markClean("2-b"_s, a.changeSequenceNumber(), {}); });
        row("delete", [](auto &, auto &a) { a.remove(); });
        row("delete target", [](auto &context, auto &) { context.find("b"_s)->remove(); });
        row("remove", [](auto &context, auto &) { context.removeDocument("a"_s); });
        row("remove target", [](auto &context, auto &) { context.removeDocument("b"_s); });
        row("undo", [](auto &context, auto &) { context.undo(); });
    }
    void slotsMayDestroyAnything()
    {
        QFETCH(Action, action);
        const LogCapture log;
        int calls = 0;
        for (const QMetaObject *meta :
             { &Document::staticMetaObject, &Station::staticMetaObject,
               &LinkedDocument::staticMetaObject, &Context::staticMetaObject }) {
            for (const QByteArray &signal : signalNames(*meta)) {
                for (int victim = 0; victim < 5; ++victim) {
                    const QPointer<TestContext> context(new TestContext);
                    context->load("b"_s);
                    context->load("c"_s);
                    Station *a = context->load("a"_s, storedData);
                    processEvents();
                    context->recording = true;
                    a->setStructValue("s"_s, "f"_s, "$ref(0,b)"_s);
                    a->setTitle("before"_s);
                    const QPointer<QObject> victims[] { a, context->find("b"_s), a->d->notes.at(1),
                                                        a->langString("title"_s), context.data() };
                    const QObject *sender = meta->cast(a);
                    const SignalHook hook(sender ? sender : context, signal, [&] {
                        ++calls;
                        delete victims[victim].data();
                    });
                    action(*context, *a);
                    processEvents();
                    delete context;
                }
            }
        }
        QVERIFY(calls > 0);
    }

    void documentMayDieWhileItIsMade()
    {
        TestContext context;
        const auto stored = R"({"_id": "a", "type": "station"})"_json;
        for (const char *signal :
             { "documentNodeAdded", "documentAdded", "localDocumentsChanged" }) {
            const SignalHook hook(&context, signal, [&] { delete context.loadedDocument("a"_s); });
            QVERIFY(!context.create("a"_s) && !LinkedDocument::create(stored, &context));
            QVERIFY(ownDocuments(context.documents()).isEmpty());
        }
        context.addCreationHandler("station"_s, [](Document *document) { delete document; });
        QVERIFY(!context.create("a"_s) && !context.createDocument("station"_s));
    }

    void documentsMayGoWhileTheyWait()
    {
        const LogCapture log;
        for (const QString &victim : "document target context"_l) {
            auto context = std::make_unique<TestContext>();
            context->store("b"_s);
            context->store("c"_s);
            Station *a = context->load("a"_s, storedData);
            const Station *other = context->load("other"_s, storedData);
            a->setLabel("x"_s); // its report waits, and so do its edges
            if (victim == "document"_s) {
                context->removeDocument(a);
                delete a;
            } else if (victim == "target"_s) {
                context->removeDocument("b"_s); // it has not been built yet
            } else {
                context.reset();
            }
            processEvents();
            QVERIFY(!context || other->exitTexts().endsWith("west:c"_s));
        }
    }

    void undoPassesOverWhatIsGone()
    {
        TestContext context;
        Station *a = context.create("a"_s);
        a->setNext(context.create("b"_s));
        a->d->exits.insert("x"_s, a->next());
        a->d->notes.insert(a->newNote("gone"_s), -1);
        context.recording = true;
        a->setText("x"_s);
        a->d->exits.clear();
        delete a->next();
        a->d->notes.clear();
        qDeleteAll(a->findChildren<Note *>());
        context.undo();
        QVERIFY(!a->next() && !a->d->notes.at(0) && a->d->exits.get().isEmpty());
        QVERIFY(a->attached().isEmpty());
        delete a;
        context.redo();
        QVERIFY(!context.changes.front()->isValid());
    }
};

QTEST_GUILESS_MAIN(tst_DocumentLifetime)
#include "tst_documentlifetime.moc"
