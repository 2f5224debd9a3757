// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Shows main.qml. An argument is the server's URL.

#include <vorrel/data/module/registration.h>

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    _vo_data_registerTypesdata_core();
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(QML_IMPORT_PATH));
    if (app.arguments().size() > 1) {
        engine.setInitialProperties({ { QStringLiteral("serviceUrl"), app.arguments().at(1) } });
    }
    engine.load(QStringLiteral(MAIN_QML));
    return engine.rootObjects().isEmpty() ? EXIT_FAILURE : app.exec();
}
