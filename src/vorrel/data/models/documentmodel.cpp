// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/documentmodel.h>

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/models/delayedrun_p.h>

#include <QtCore/QBasicTimer>
#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QTimerEvent>

#include <algorithm>

namespace vo::data {

/// It is the list behind `documents`, too.
struct DocumentModel::Private : EditableObjectList<Document>
{
    explicit Private(DocumentModel *model);

    [[nodiscard]] const QList<Document *> &objects() const override { return rows.objects(); }
    void append(Document *document) override;
    void clear() override;

    void follow(const Document *document);
    void setRows(const QList<Document *> &documents);
    void removeLostRows();
    void tellOfRow(int row);
    void tellOfSelection(Document *document);

    DocumentModel *const q;
    QBasicTimer batching; // runs from a clear to the update of the rows
    DocumentList rows;
    DocumentList pending; // while batching
    DocumentList selection;
    QPointer<Context> context;
};

DocumentModel::Private::Private(DocumentModel *model)
    : q(model)
    , rows(
          model, [this] { removeLostRows(); }, DocumentList::KeepPlaces)
    , selection(model, [model] { Q_EMIT model->selectionChanged(); })
{ }

void DocumentModel::Private::append(Document *document)
{
    if (batching.isActive()) {
        pending.append(document);
        return;
    }
    if (rows.objects().isEmpty() || !context) {
        follow(document);
    }
    const QPointer<DocumentModel> self(q);
    const int row = q->rowCount();
    q->beginInsertRows({}, row, row);
    rows.add(document);
    q->endInsertRows();
    if (self) {
        Q_EMIT q->documentsChanged();
    }
}

void DocumentModel::Private::clear()
{
    pending.clear();
    if (!batching.isActive()) {
        batching.start(int(tuning::modelBatchDelay.count()), Qt::CoarseTimer, q);
    }
}

void DocumentModel::Private::follow(const Document *document)
{
    if (document) {
        watchContext(context, document->context(), q, &DocumentModel::handleDocumentChanged);
    }
}

void DocumentModel::Private::setRows(const QList<Document *> &documents)
{
    const auto size = int(documents.size());
    const int formerSize = q->rowCount();
    // Of those that slots destroy, a null is left, since the number of rows is told by then.
    DocumentList next(nullptr, {}, DocumentList::KeepPlaces);
    next.assign(documents);
    if (size > formerSize) {
        q->beginInsertRows({}, formerSize, size - 1);
        rows.assign(next.objects());
        q->endInsertRows();
    } else if (size < formerSize) {
        q->beginRemoveRows({}, size, formerSize - 1);
        rows.assign(next.objects());
        q->endRemoveRows();
    } else {
        rows.assign(documents);
    }
}

void DocumentModel::Private::removeLostRows()
{
    const QPointer<DocumentModel> self(q);
    auto gap = rows.lastGap();
    if (gap.size == 0) {
        return;
    }
    while (gap.size > 0) {
        q->beginRemoveRows({}, gap.place, gap.place + gap.size - 1);
        rows.closeGap(gap);
        q->endRemoveRows();
        if (!self) {
            return;
        }
        gap = rows.lastGap();
    }
    Q_EMIT q->documentsChanged();
}

// Slots may have shortened the rows since the number was found out.
void DocumentModel::Private::tellOfRow(int row)
{
    const QModelIndex index = q->index(row);
    if (index.isValid()) {
        Q_EMIT q->dataChanged(index, index);
    }
}

void DocumentModel::Private::tellOfSelection(Document *document)
{
    const QPointer<DocumentModel> self(q);
    Q_EMIT q->selectionChanged();
    if (self) {
        tellOfRow(q->indexOf(document));
    }
}

DocumentModel::DocumentModel(QObject *parent)
    : QAbstractListModel(parent)
    , d(new Private(this))
{ }

DocumentModel::~DocumentModel() = default;

QQmlListProperty<Document> DocumentModel::documents()
{
    return d->property(this);
}

QList<Document *> DocumentModel::dataList() const
{
    return d->rows.objects();
}

QQmlListProperty<Document> DocumentModel::selection()
{
    return ReadOnlyObjectList<Document>::property(this, [](QObject *owner) {
        return static_cast<DocumentModel *>(owner)->d->selection.objects();
    });
}

int DocumentModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(d->rows.objects().size());
}

QVariant DocumentModel::data(const QModelIndex &index, int role) const
{
    const QList<Document *> &rows = d->rows.objects();
    if (index.row() < 0 || index.row() >= rows.size()) {
        return {};
    }
    Document *document = rows.at(index.row());
    switch (role) {
    case DocumentRole:
        return QVariant::fromValue(document);
    case LabelRole:
        return document ? document->label() : QString();
    case SelectedRole:
        return isSelected(document);
    default:
        return {};
    }
}

QHash<int, QByteArray> DocumentModel::roleNames() const
{
    static const QHash<int, QByteArray> names { { DocumentRole, "document" },
                                                { LabelRole, "label" },
                                                { SelectedRole, "selected" } };
    return names;
}

int DocumentModel::indexOf(Document *document) const
{
    return document ? int(d->rows.objects().indexOf(document)) : -1;
}

bool DocumentModel::isSelected(Document *document) const
{
    return d->selection.contains(document);
}

void DocumentModel::clearSelection()
{
    const QList<Document *> former = d->selection.objects();
    if (former.isEmpty()) {
        return;
    }
    const QPointer<DocumentModel> self(this);
    d->selection.assign({});
    Q_EMIT selectionChanged();
    if (!self) {
        return;
    }
    // To look for one after the other would take time with the square of the length.
    QHash<const Document *, int> firstRows;
    for (int row = rowCount() - 1; row >= 0; --row) {
        firstRows.insert(d->rows.objects().at(row), row);
    }
    firstRows.remove(nullptr);
    for (const Document *document : former) {
        const int row = firstRows.value(document, -1);
        if (self) {
            d->tellOfRow(row);
        }
    }
}

void DocumentModel::selectAll()
{
    const QPointer<DocumentModel> self(this);
    d->removeLostRows();
    if (!self || !d->selection.assign(d->rows.objects())) {
        return;
    }
    const int count = rowCount();
    Q_EMIT selectionChanged();
    for (int row = 0; self && row < count; ++row) {
        d->tellOfRow(row);
    }
}

void DocumentModel::selectDocument(Document *document)
{
    if (!isSelected(document)) {
        d->selection.add(document);
        d->tellOfSelection(document);
    }
}

void DocumentModel::deselectDocument(Document *document)
{
    if (d->selection.removeFirst(document)) {
        d->tellOfSelection(document);
    }
}

void DocumentModel::toggleDocumentSelected(Document *document)
{
    if (isSelected(document)) {
        deselectDocument(document);
    } else {
        selectDocument(document);
    }
}

void DocumentModel::reloadData()
{
    beginResetModel();
    endResetModel();
}

void DocumentModel::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == d->batching.timerId()) {
        performBatchUpdate();
    } else {
        QAbstractListModel::timerEvent(event);
    }
}

void DocumentModel::performBatchUpdate()
{
    if (!d->batching.isActive()) {
        qCritical("Error: performBatchUpdate() called without active batching. This is a bug!");
        return;
    }
    // Before the first signal: what a slot clears and appends is a batch of its own.
    d->batching.stop();
    const QList<Document *> former = d->rows.objects();
    const QList<Document *> documents = d->pending.objects();
    d->pending.clear();
    const auto first = std::find_if(documents.begin(), documents.end(),
                                    [](const Document *document) { return document != nullptr; });
    d->follow(first == documents.end() ? nullptr : *first);
    const QPointer<DocumentModel> self(this);
    d->setRows(documents);
    const auto kept = int(std::min(former.size(), documents.size()));
    for (int row = 0; self && row < kept; ++row) {
        if (documents.at(row) != former.at(row)) {
            d->tellOfRow(row);
        }
    }
    if (self) {
        Q_EMIT documentsChanged();
    }
}

void DocumentModel::handleDocumentChanged(Document *document)
{
    if (!d->rows.contains(document)) {
        return;
    }
    const QPointer<DocumentModel> self(this);
    int row = indexOf(document);
    while (self && row >= 0) {
        d->tellOfRow(row);
        if (self) {
            row = int(d->rows.objects().indexOf(document, row + 1));
        }
    }
}

} // namespace vo::data

#include "moc_documentmodel.cpp"
