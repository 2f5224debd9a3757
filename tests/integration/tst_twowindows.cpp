// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// The catalogue, twice, on one database: what is done in one window is seen in the other. The
// picture of the second one, "twowindows.png", is the one in the README.

#include "support/devserver.h"

#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/module/registration.h>

#include <QtGui/QPainter>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlComponent>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

constexpr int patience = 20000; // ms

QString source(const QString &path)
{
    return qEnvironmentVariable("VORREL_SOURCE_DIR") + "/"_s + path;
}

/// A drawing of a desk lamp.
QUrl drawLamp(const QTemporaryDir &directory)
{
    QImage image(480, 300, QImage::Format_RGB32);
    image.fill(QColor(0xe6eeea));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x2f5d50), 12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygon({ { 200, 250 }, { 170, 140 }, { 290, 70 } }));
    painter.drawLine(140, 252, 260, 252);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xf1dca4));
    painter.drawPolygon(QPolygon({ { 284, 96 }, { 336, 76 }, { 420, 236 }, { 300, 252 } }));
    painter.setBrush(QColor(0xb86f3c));
    painter.drawPolygon(QPolygon({ { 276, 60 }, { 318, 44 }, { 340, 84 }, { 282, 106 } }));
    painter.end();
    const QString file = directory.filePath("desk-lamp.png"_s);
    image.save(file);
    return QUrl::fromLocalFile(file);
}

/// One running catalogue.
class Catalogue
{
public:
    explicit Catalogue(const DevServer &server)
    {
        m_engine.addImportPath(qEnvironmentVariable("QML2_IMPORT_PATH"));
        m_engine.setInitialProperties(
            { { "serviceUrl"_s, server.serviceUrl() }, { "database"_s, server.database() } });
        m_engine.load(QUrl::fromLocalFile(source("examples/catalog/Main.qml"_s)));
        QQmlComponent session(&m_engine);
        session.setData("import QtQml 2.15\nimport \"examples/catalog\" as Catalog\n"
                        "QtObject { property var session: Catalog.Session }",
                        QUrl::fromLocalFile(source("session.qml"_s)));
        m_session.reset(session.create());
    }

    [[nodiscard]] QQuickWindow *window() const
    {
        return qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
    }
    [[nodiscard]] EditContext *context() const { return window()->findChild<EditContext *>(); }

    /// Shows a document. False as long as it is not loaded.
    [[nodiscard]] bool show(const QString &id) const
    {
        auto *session = m_session->property("session").value<QObject *>();
        Document *document = context()->loadedDocument(id);
        return session->property("current").value<QObject *>() && document
            && session->setProperty("current", QVariant::fromValue(document));
    }

    /// The item that is shown with this value of a property, or null.
    [[nodiscard]] QQuickItem *item(const char *property, const QVariant &value) const
    {
        return find(window()->contentItem(), property, value);
    }
    [[nodiscard]] bool has(const QString &text) const { return item("text", text); }

    void click(const QString &text) const
    {
        const QQuickItem *button = item("text", text);
        QVERIFY(button && button->isEnabled());
        const QPointF center(button->width() / 2, button->height() / 2);
        QTest::mouseClick(window(), Qt::LeftButton, Qt::NoModifier,
                          button->mapToScene(center).toPoint());
    }

private:
    static QQuickItem *find(QQuickItem *item, const char *property, const QVariant &value)
    {
        if (item->isVisible() && item->property(property) == value) {
            return item;
        }
        const QList<QQuickItem *> children = item->childItems();
        for (QQuickItem *child : children) {
            if (QQuickItem *found = find(child, property, value)) {
                return found;
            }
        }
        return nullptr;
    }

    QQmlApplicationEngine m_engine;
    std::unique_ptr<QObject> m_session;
};

} // namespace

class tst_TwoWindows : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void oneShowsWhatIsDoneInTheOther()
    {
        _vo_data_registerTypesdata_core();
        const QString id = "sample.product.desk-lamp"_s;
        QTemporaryDir directory;
        DevServer server;
        QVERIFY2(server.start() && server.fill(), qPrintable(server.errorString()));
        const Catalogue first(server);
        const Catalogue second(server);
        QVERIFY(first.window() && second.window());
        QTRY_VERIFY_WITH_TIMEOUT(first.show(id) && second.show(id), patience);
        const QString name = first.context()->loadedDocument(id)->label();
        QTRY_VERIFY(first.item("placeholderText", "Label"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!first.context()->isBusy(), patience);

        // An edit, and back.
        QQuickItem *label = first.item("placeholderText", "Label"_s);
        label->setProperty("text", "Kran, new"_s);
        QVERIFY(QMetaObject::invokeMethod(label, "textEdited"));
        QTRY_VERIFY(first.has("Kran, new"_s) && first.has("Unsaved changes"_s));
        QTRY_VERIFY(first.context()->canUndo());
        first.click("Undo"_s);
        QTRY_VERIFY(first.has(name) && !first.context()->canUndo());

        // A price is dragged, in one step.
        const QQuickItem *slider = first.item("stepSize", 0.1);
        QVERIFY(slider);
        const auto place = [&](double part) {
            return slider->mapToScene({ part * slider->width(), slider->height() / 2 }).toPoint();
        };
        const double price = first.context()->loadedDocument(id)->property("price").toDouble();
        QTest::mousePress(first.window(), Qt::LeftButton, Qt::NoModifier, place(0.3));
        for (const double part : { 0.4, 0.5, 0.6, 0.8 }) {
            QTest::mouseMove(first.window(), place(part), 20);
        }
        QVERIFY(!first.context()->canSave());
        QTest::mouseRelease(first.window(), Qt::LeftButton, Qt::NoModifier, place(0.8));
        QVERIFY(first.context()->loadedDocument(id)->property("price").toDouble() > 150);
        QTRY_VERIFY(first.context()->canUndo());
        first.click("Undo"_s);
        QTRY_VERIFY(!first.context()->canUndo());
        QCOMPARE(first.context()->loadedDocument(id)->property("price").toDouble(), price);

        // A picture, and another name.
        QObject *pictures = first.item("objectName", "pictures"_s);
        QVERIFY(pictures);
        QVERIFY(QMetaObject::invokeMethod(pictures, "addPicture",
                                          Q_ARG(QVariant, drawLamp(directory))));
        label->setProperty("text", name + " II"_s);
        QVERIFY(QMetaObject::invokeMethod(label, "textEdited"));
        QTRY_VERIFY(first.item("sourceSize", QSize(480, 300))); // of the picture
        QCOMPARE(first.context()->dirtyDocuments().size(), 2);
        first.click("Save"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!first.context()->hasLocalChanges(), patience);
        QTRY_VERIFY(!first.has("Unsaved changes"_s));

        QTRY_VERIFY_WITH_TIMEOUT(second.has(name + " II"_s), patience);
        QTRY_VERIFY_WITH_TIMEOUT(second.item("sourceSize", QSize(480, 300)), patience);
        QVERIFY(!second.context()->hasLocalChanges());
        QTRY_VERIFY_WITH_TIMEOUT(!second.context()->isBusy(), patience);
        QTest::qWait(100); // the links follow the documents
        const auto picture = second.window()->contentItem()->grabToImage();
        QVERIFY(picture);
        QTRY_VERIFY(!picture->image().isNull());
        QVERIFY(picture->saveToFile("twowindows.png"_s));
    }
};

QTEST_MAIN(tst_TwoWindows)
#include "tst_twowindows.moc"
