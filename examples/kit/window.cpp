// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

#include "window.h"

#include <vorrel/data/module/registration.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QFileInfo>
#include <QtCore/QTextStream>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

namespace {

struct Arguments
{
    QString url;
    QString database;
    QString picture;
};

Arguments parseArguments(const QCoreApplication &app, const QString &description)
{
    const QCommandLineOption url(QStringLiteral("url"), QStringLiteral("The database server."),
                                 QStringLiteral("URL"), QStringLiteral("http://127.0.0.1:5984"));
    const QCommandLineOption database(QStringLiteral("database"),
                                      QStringLiteral("The database with the sample content."),
                                      QStringLiteral("NAME"), QStringLiteral("sample"));
    const QCommandLineOption picture(QStringLiteral("picture"),
                                     QStringLiteral("Draw the window into a PNG file and end."),
                                     QStringLiteral("FILE"));
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addHelpOption();
    parser.addOptions({ url, database, picture });
    parser.process(app);
    const QString file = parser.value(picture);
    return { parser.value(url), parser.value(database),
             file.isEmpty() ? file : QFileInfo(file).absoluteFilePath() };
}

} // namespace

int showWindow(int argc, char *argv[], const QString &name, const QString &description)
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(name);
    const Arguments arguments = parseArguments(app, description);

    _vo_data_registerTypesdata_core();
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(QML_IMPORT_PATH));
    bool flawless = true;
    QObject::connect(&engine, &QQmlEngine::warnings, &app, [&flawless] { flawless = false; });
    engine.setInitialProperties({
        { QStringLiteral("serviceUrl"), QUrl(arguments.url) },
        { QStringLiteral("database"), arguments.database },
        { QStringLiteral("picture"), arguments.picture },
    });
    engine.load(QUrl(QStringLiteral("qrc:/%1/Main.qml").arg(name)));
    if (engine.rootObjects().isEmpty()) {
        return EXIT_FAILURE;
    }
    const int result = QGuiApplication::exec();
    if (arguments.picture.isEmpty() || result != EXIT_SUCCESS) {
        return result;
    }
    if (!flawless) {
        QTextStream(stderr) << "The picture was drawn, but the window has errors\n";
        return EXIT_FAILURE;
    }
    QTextStream(stdout) << arguments.picture << '\n';
    return EXIT_SUCCESS;
}
