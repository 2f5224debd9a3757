// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/documentfilter.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/models/delayedrun_p.h>
#include <vorrel/data/models/filters/filtercriteria_p.h>

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
    [[nodiscard]] std::vector<FilterFunction> activeFunctions() const;

    DocumentFilter *const q;
    DelayedRun run;
    int runs = 0; // evaluations
    QPointer<Context> context;
    DocumentList documents;
    DocumentList result;
    DocumentList filtered;
    FilterCriteria criteria;
};

DocumentFilter::Private::Private(DocumentFilter *filter)
    : q(filter)
    , run(filter, tuning::filterDelay, [filter] { Q_EMIT filter->busyChanged(); })
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
        watchContext(context, documents.objects().constFirst()->context(), q,
                     &DocumentFilter::handleDocumentChanged);
    }
    Q_EMIT q->documentsChanged();
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
    return d->run.delay();
}

void DocumentFilter::setDelay(int milliseconds)
{
    d->run.setDelay(milliseconds);
}

bool DocumentFilter::busy() const
{
    return d->run.isBusy();
}

void DocumentFilter::handleDocumentChanged(Document *doc)
{
    if (d->documents.contains(doc)) {
        scheduleUpdate();
    }
}

void DocumentFilter::scheduleUpdate()
{
    if (d->run.isAtOnce()) {
        applyFilter();
    } else {
        d->run.schedule();
    }
}

void DocumentFilter::timerEvent(QTimerEvent *event)
{
    if (d->run.isDue(*event)) {
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
    d->run.begin();
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
    if (self) {
        d->run.end();
    }
}

} // namespace vo::data

#include "moc_documentfilter.cpp"
