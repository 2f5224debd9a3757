// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What it costs to record edits and take them back, against making them where nobody records.

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
    for (std::size_t first = 0; first < documents.size(); first += documentsOfStep) {
        documents[first]->beginRecordChanges();
        for (std::size_t number = first; number < first + documentsOfStep; ++number) {
            documents[number]->setAddress(text);
            documents[number]->setCity(text);
            documents[number]->setZipCode(text);
            documents[number]->setNotes(text);
        }
        documents[first]->endRecordChanges();
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
    report.compare(
        { QStringLiteral("Property edits, recorded and undone in 50 steps"),
          4 * steps * documentsOfStep, QStringLiteral("ns"), 0, QStringLiteral("made, no recorder"),
          0, 2.5 },
        [&] {
            edit(recorded, QString::number(steps));
            for (int step = 0; step < steps; ++step) {
                recording.undo();
            }
        },
        [&, run = 0]() mutable { edit(others, QString::number(++run)); });
    return 0;
}
