// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What undo costs: to record edits and take them back, against making them where nobody records.

#include "support/benchmark.h"

#include <vorrel/data/context/editcontext.h>
#include <vorrel/data/documents/location.h>

#include <QtCore/QCoreApplication>

#include <vector>

using namespace vo::benchmark;
using namespace vo::data;

namespace {

constexpr int steps = 50;
constexpr int documentsOfStep = 500;

std::vector<Location *> makeDocuments(Context *context)
{
    std::vector<Location *> documents;
    for (int number = 0; number < steps * documentsOfStep; ++number) {
        documents.push_back(
            qobject_cast<Location *>(context->createDocument(QStringLiteral("location"))));
    }
    return documents;
}

/// Edits every document, in steps. The groups mean nothing where nobody records.
void edit(const std::vector<Location *> &documents, const QString &text)
{
    for (std::size_t number = 0; number < documents.size(); ++number) {
        Location *document = documents[number];
        if (number % documentsOfStep == 0) {
            document->beginRecordChanges();
        }
        document->setAddress(text);
        document->setCity(text);
        document->setZipCode(text);
        document->setNotes(text);
        if ((number + 1) % documentsOfStep == 0) {
            document->endRecordChanges();
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("editing"), argc, argv);
    EditContext recording;
    Context plain;
    const std::vector<Location *> recorded = makeDocuments(&recording);
    const std::vector<Location *> others = makeDocuments(&plain);
    bool odd = false;
    report.compare(
        { QStringLiteral("Property edits, recorded and undone in 50 steps"),
          4 * steps * documentsOfStep, QStringLiteral("ns"), 0, QStringLiteral("made, no recorder"),
          0, 2.5 },
        [&] {
            edit(recorded, QStringLiteral("edited"));
            for (int step = 0; step < steps; ++step) {
                recording.undo();
            }
        },
        [&] {
            odd = !odd;
            edit(others, odd ? QStringLiteral("odd") : QStringLiteral("even"));
        });
    return 0;
}
