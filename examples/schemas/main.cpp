// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
// Builds a schema with a variable of each type, edits the values of a document with it, and saves
// both. With --picture FILE it does all that by itself, and draws the window into a PNG file.
//
//     schemas [--picture FILE] [URL of a database server with a database "sample"]

#include "exhibit.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QFileInfo>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

using namespace vo::data;

int main(int argc, char *argv[])
{
    const QGuiApplication app(argc, argv);
    const QCommandLineOption picture(QStringLiteral("picture"),
                                     QStringLiteral("Draw the window into a PNG file and end."),
                                     QStringLiteral("FILE"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(picture);
    parser.addPositionalArgument(QStringLiteral("URL"), QStringLiteral("The database server."));
    parser.process(app);
    const QString file = parser.value(picture);

    registerDocument<ExhibitValues>();
    registerDocument<Exhibit>();
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(QML_IMPORT_PATH));
    bool flawless = true;
    QObject::connect(&engine, &QQmlEngine::warnings, &app, [&flawless] { flawless = false; });
    engine.setInitialProperties({
        { QStringLiteral("serviceUrl"),
          QUrl(parser.positionalArguments().value(0, QStringLiteral("http://127.0.0.1:5984"))) },
        { QStringLiteral("picture"), file.isEmpty() ? file : QFileInfo(file).absoluteFilePath() },
    });
    engine.load(QUrl(QStringLiteral("qrc:/schemas/Main.qml")));
    if (engine.rootObjects().isEmpty()) {
        return EXIT_FAILURE;
    }
    const int result = QGuiApplication::exec();
    return flawless || file.isEmpty() ? result : EXIT_FAILURE;
}
