// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/naiverows.h"

#include <vorrel/data/core/document.h>

#include <QtCore/QCollator>

#include <algorithm>
#include <optional>

using namespace vo::data;

namespace vo::test {

namespace {

/// What a criterion says of a document; nothing if it does not count.
std::optional<bool> verdict(QObject *criterion, const QObject *document, bool inGroup = false)
{
    const QVariant part = criterion->property("contains");
    const QVariant requirement = criterion->property("matchRequirement");
    QList<bool> answers;
    if (requirement.isValid()) {
        for (QObject *member : listed(criterion, "criteria")) {
            const auto answer = verdict(member, document, true);
            answers += answer ? QList<bool> { *answer } : QList<bool>();
        }
    } else if (!part.isValid()) {
        answers << (document->property("number").toInt() == criterion->property("value").toInt());
    } else if (!part.toString().isEmpty()) {
        const QString text = document->property("text").toString();
        answers << text.contains(part.toString(), Qt::CaseInsensitive);
    }
    if (answers.isEmpty() || !criterion->property("enabled").toBool()) {
        return {};
    }
    const auto passed = answers.count(true);
    const bool passes[] = { passed > 0, passed == answers.size(), passed == 1 };
    return passes[requirement.toInt()] != (!inGroup && criterion->property("inverted").toBool());
}

/// Negative if the criterion wants the first one before the second.
int order(const QObject *criterion, const Document *a, const Document *b)
{
    static QCollator collator;
    collator.setNumericMode(true);
    const auto text = [](const auto *document) { return document->property("text").toString(); };
    const bool byText = criterion->inherits("vo::data::StringSortCriterion");
    const int result = byText ? collator.compare(text(a), text(b)) : a->type().compare(b->type());
    const int sign = criterion->property("descending").toBool() ? -1 : 1;
    return criterion->property("enabled").toBool() ? sign * result : 0;
}

} // namespace

QString idsOf(QObject *object, const char *property)
{
    QString ids = QStringLiteral("|");
    for (const auto *document : listed<Document>(object, property)) {
        ids += document ? document->documentId() : QStringLiteral("0");
    }
    return ids;
}

void append(QObject *owner, const QList<Document *> &documents)
{
    QQmlListReference list(owner, "documents");
    for (Document *document : documents) {
        list.append(document);
    }
}

void refill(QObject *owner, const QList<Document *> &documents)
{
    QQmlListReference(owner, "documents").clear();
    append(owner, documents);
}

QList<Document *> naiveRows(DocumentFilter *filter, DocumentSorter *sorter)
{
    const auto documents = listed<Document>(filter, "documents");
    const auto filters = listed(filter, "criteria");
    const auto sorters = listed(sorter, "criteria");
    QList<Document *> rows;
    const auto passes = [&filters](const Document *document) {
        return std::all_of(filters.begin(), filters.end(), [document](QObject *criterion) {
            return verdict(criterion, document).value_or(true);
        });
    };
    const auto isBefore = [&sorters](const Document *a, const Document *b) {
        int result = 0;
        for (int i = 0; result == 0 && i < sorters.size(); ++i) {
            result = order(sorters.at(i), a, b);
        }
        return result < 0 || (result == 0 && a->documentId() < b->documentId());
    };
    std::copy_if(documents.begin(), documents.end(), std::back_inserter(rows), passes);
    if (!sorters.isEmpty()) {
        std::stable_sort(rows.begin(), rows.end(), isBefore);
    }
    return rows;
}

} // namespace vo::test
