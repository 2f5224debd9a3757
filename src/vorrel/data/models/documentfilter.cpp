// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/documentfilter.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/models/filters/filtercriteria_p.h>

#include <QtCore/QPointer>
#include <QtCore/QTimerEvent>

#include <exception>
#include <vector>

namespace vo::data {

namespace {

/// One evaluation. Filter functions are code of others: it ends early when they destroy documents.
class Split
{
public:
    explicit Split(const QList<Document *> &documents) { m_documents.assign(documents); }

    /// False if documents were destroyed meanwhile; then the lists are of no use.
    bool run(const std::vector<FilterFunction> &functions)
    {
        const QList<Document *> documents = m_documents.objects();
        for (Document *document : documents) {
            (passes(document, functions) ? passing : failing).append(document);
            if (m_documents.hasShrunk()) {
                return false;
            }
        }
        return true;
    }

    QList<Document *> passing;
    QList<Document *> failing;

private:
    bool passes(const Document *document, const std::vector<FilterFunction> &functions)
    {
        try {
            return std::all_of(functions.begin(), functions.end(), [&](const auto &function) {
                return !m_documents.hasShrunk() && function(document);
            });
        } catch (const std::exception &failure) {
            if (!std::exchange(m_hasFailed, true)) {
                qCCritical(lcData, "A filter criterion cannot be evaluated: %s", failure.what());
            }
            return false;
        }
    }

    DocumentList m_documents;
    bool m_hasFailed = false;
};

FilterFunction functionOf(const FilterCriterion *criterion)
{
    const FilterFunction function = criterion->createFilterFunction();
    if (!criterion->inverted()) {
        return function;
    }
    return [function](const Document *document) { return !function(document); };
}

} // namespace

struct DocumentFilter::Private
{
    explicit Private(DocumentFilter *filter);

    void documentsAreOthers();
    void updateContext(Context *newContext);
    void stopTimer();
    [[nodiscard]] std::vector<FilterFunction> activeFunctions() const;

    DocumentFilter *const q;
    int timer = 0;
    int delay = int(tuning::filterDelay.count());
    bool busy = false;
    bool scheduled = false; // since the last evaluation began
    int runs = 0;           // evaluations
    QPointer<Context> context;
    DocumentList documents;
    DocumentList result;
    DocumentList filtered;
    FilterCriteria criteria;
};

DocumentFilter::Private::Private(DocumentFilter *filter)
    : q(filter)
    , documents(
          filter, [this] { documentsAreOthers(); }, DocumentList::NoNulls)
    , result(filter, [filter] { Q_EMIT filter->resultChanged(); })
    , filtered(filter, [filter] { Q_EMIT filter->filteredChanged(); })
    , criteria(
          filter, [filter] { Q_EMIT filter->criteriaChanged(); },
          [filter] { filter->scheduleUpdate(); })
{ }

void DocumentFilter::Private::documentsAreOthers()
{
    if (documents.objects().size() == 1) {
        updateContext(documents.objects().constFirst()->context());
    }
    Q_EMIT q->documentsChanged();
}

void DocumentFilter::Private::updateContext(Context *newContext)
{
    if (newContext == context) {
        return;
    }
    if (context) {
        context->disconnect(q);
    }
    context = newContext;
    connect(newContext, &Context::documentChanged, q, &DocumentFilter::handleDocumentChanged);
}

void DocumentFilter::Private::stopTimer()
{
    if (timer != 0) {
        q->killTimer(std::exchange(timer, 0));
    }
}

std::vector<FilterFunction> DocumentFilter::Private::activeFunctions() const
{
    const QList<FilterCriterion *> active = activeOf(criteria);
    std::vector<FilterFunction> functions;
    std::transform(active.begin(), active.end(), std::back_inserter(functions), functionOf);
    return functions;
}

DocumentFilter::DocumentFilter(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{
    connect(this, &DocumentFilter::criteriaChanged, this, &DocumentFilter::scheduleUpdate);
    connect(this, &DocumentFilter::documentsChanged, this, &DocumentFilter::scheduleUpdate);
}

DocumentFilter::~DocumentFilter() = default;

QQmlListProperty<Document> DocumentFilter::documents()
{
    return d->documents.property(this);
}

QQmlListProperty<Document> DocumentFilter::result()
{
    return ReadOnlyObjectList<Document>::property(
        this, [](QObject *owner) { return static_cast<DocumentFilter *>(owner)->resultList(); });
}

QList<Document *> DocumentFilter::resultList() const
{
    return d->result.objects();
}

QQmlListProperty<Document> DocumentFilter::filtered()
{
    return ReadOnlyObjectList<Document>::property(
        this, [](QObject *owner) { return static_cast<DocumentFilter *>(owner)->filteredList(); });
}

QList<Document *> DocumentFilter::filteredList() const
{
    return d->filtered.objects();
}

QQmlListProperty<FilterCriterion> DocumentFilter::criteria()
{
    return d->criteria.property(this);
}

int DocumentFilter::delay() const
{
    return d->delay;
}

void DocumentFilter::setDelay(int milliseconds)
{
    d->delay = milliseconds;
}

bool DocumentFilter::busy() const
{
    return d->busy;
}

void DocumentFilter::handleDocumentChanged(Document *doc)
{
    if (d->documents.contains(doc)) {
        scheduleUpdate();
    }
}

void DocumentFilter::scheduleUpdate()
{
    if (d->delay < 1) {
        applyFilter();
        return;
    }
    const QPointer<DocumentFilter> self(this);
    d->scheduled = true;
    d->stopTimer();
    if (!std::exchange(d->busy, true)) {
        Q_EMIT busyChanged();
    }
    if (self) {
        d->stopTimer(); // a slot may have started one
        d->timer = startTimer(d->delay, Qt::CoarseTimer);
    }
}

void DocumentFilter::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == d->timer) {
        d->stopTimer();
        applyFilter();
    } else {
        QObject::timerEvent(event);
    }
}

// Slots of each signal may change the configuration, destroy documents, or destroy this filter.
// Everything that a run found out is in the lists of the filter before the first one.
void DocumentFilter::applyFilter()
{
    const QPointer<DocumentFilter> self(this);
    d->scheduled = false;
    const int run = ++d->runs;
    bool hasOtherResult = false;
    bool hasOtherFiltered = false;
    const std::vector<FilterFunction> functions = d->activeFunctions();
    if (functions.empty()) {
        hasOtherResult = d->result.assign(d->documents.objects());
        hasOtherFiltered = hasOtherResult; // or it stays as it is
        if (hasOtherResult) {
            d->filtered.assign({});
        }
    } else {
        Split split(d->documents.objects());
        const bool isWhole = split.run(functions);
        if (!self || run != d->runs) {
            return; // or a newer evaluation would be undone
        }
        if (!isWhole) {
            scheduleUpdate();
            return;
        }
        hasOtherResult = d->result.assign(split.passing);
        hasOtherFiltered = d->filtered.assign(split.failing);
    }
    if (hasOtherResult) {
        Q_EMIT resultChanged();
    }
    if (self && hasOtherFiltered) {
        Q_EMIT filteredChanged();
    }
    // What a slot has scheduled is still to come.
    if (self && !d->scheduled && std::exchange(d->busy, false)) {
        Q_EMIT busyChanged();
    }
}

} // namespace vo::data

#include "moc_documentfilter.cpp"
