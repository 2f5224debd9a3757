// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/documentsorter.h>

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/models/criterionlist_p.h>
#include <vorrel/data/models/delayedrun_p.h>
#include <vorrel/data/models/sortorder_p.h>

namespace vo::data {

namespace {

/// What is to be sorted: to clear it is a reason to sort even if it is empty.
class SorterDocuments : public EditableObjectList<Document>
{
public:
    SorterDocuments(QObject *owner, std::function<void()> changed, std::function<void()> edited)
        : m_list(owner, std::move(changed), DocumentList::NoNulls)
        , m_edited(std::move(edited))
    { }

    [[nodiscard]] const QList<Document *> &objects() const override { return m_list.objects(); }
    [[nodiscard]] bool contains(const Document *document) const
    {
        return m_list.contains(document);
    }

    void append(Document *document) override
    {
        if (document) {
            const auto edited = m_edited;
            m_list.append(document);
            edited();
        }
    }

    void clear() override
    {
        const auto edited = m_edited;
        m_list.clear();
        edited();
    }

private:
    DocumentList m_list;
    const std::function<void()> m_edited;
};

} // namespace

struct DocumentSorter::Private
{
    explicit Private(DocumentSorter *sorter);

    void documentsAreOthers();
    [[nodiscard]] std::vector<CompareFunction> functions() const;

    DocumentSorter *const q;
    DelayedRun run;
    QPointer<Context> context;
    SorterDocuments documents;
    DocumentList result;
    CriterionList<SortCriterion> criteria;

    // What was sorted last, which helps as long as the criteria stay as they are.
    SortOrder order;
    bool orderIsGood = false;
    QSet<const Document *> changed; // since then
};

DocumentSorter::Private::Private(DocumentSorter *sorter)
    : q(sorter)
    , run(sorter, tuning::sorterDelay, [sorter] { Q_EMIT sorter->busyChanged(); })
    , documents(
          sorter, [this] { documentsAreOthers(); },
          [guard = QPointer<DocumentSorter>(sorter)] {
              if (guard) {
                  guard->scheduleUpdate();
              }
          })
    , result(sorter, [sorter] { Q_EMIT sorter->resultChanged(); })
    , criteria(
          sorter, [sorter] { Q_EMIT sorter->criteriaChanged(); },
          [this, sorter] {
              orderIsGood = false;
              sorter->scheduleUpdate();
          })
{ }

void DocumentSorter::Private::documentsAreOthers()
{
    if (documents.objects().size() == 1) {
        watchContext(context, documents.objects().constFirst()->context(), q,
                     &DocumentSorter::handleDocumentChanged);
    }
    Q_EMIT q->documentsChanged();
}

std::vector<CompareFunction> DocumentSorter::Private::functions() const
{
    std::vector<CompareFunction> functions;
    for (const SortCriterion *criterion : criteria.objects()) {
        if (criterion->enabled()) {
            functions.push_back(criterion->createCompareFunction());
        }
    }
    return functions;
}

DocumentSorter::DocumentSorter(QObject *parent)
    : QObject(parent)
    , d(new Private(this))
{
    const auto forgetOrder = [this] { d->orderIsGood = false; };
    connect(this, &DocumentSorter::criteriaChanged, this, forgetOrder);
    connect(this, &DocumentSorter::documentsChanged, this, forgetOrder); // addresses come again
    connect(this, &DocumentSorter::criteriaChanged, this, &DocumentSorter::scheduleUpdate);
    connect(this, &DocumentSorter::documentsChanged, this, &DocumentSorter::scheduleUpdate);
}

DocumentSorter::~DocumentSorter() = default;

QQmlListProperty<Document> DocumentSorter::documents()
{
    return d->documents.property(this);
}

QQmlListProperty<Document> DocumentSorter::result()
{
    return ReadOnlyObjectList<Document>::property(
        this, [](QObject *owner) { return static_cast<DocumentSorter *>(owner)->resultList(); });
}

QList<Document *> DocumentSorter::resultList() const
{
    return d->result.objects();
}

QQmlListProperty<SortCriterion> DocumentSorter::criteria()
{
    return d->criteria.property(this);
}

int DocumentSorter::delay() const
{
    return d->run.delay();
}

void DocumentSorter::setDelay(int milliseconds)
{
    if (milliseconds != d->run.delay()) {
        d->run.setDelay(milliseconds);
        Q_EMIT delayChanged();
    }
}

bool DocumentSorter::busy() const
{
    return d->run.isBusy();
}

void DocumentSorter::handleDocumentChanged(Document *doc)
{
    if (d->documents.contains(doc)) {
        d->changed.insert(doc);
        scheduleUpdate();
    }
}

void DocumentSorter::scheduleUpdate()
{
    d->run.cancel();
    if (d->run.isAtOnce()) {
        sort();
    } else {
        d->run.schedule();
    }
}

void DocumentSorter::timerEvent(QTimerEvent *event)
{
    if (d->run.isDue(*event)) {
        sort();
    } else {
        QObject::timerEvent(event);
    }
}

void DocumentSorter::sort()
{
    const QPointer<DocumentSorter> self(this);
    d->run.begin();
    const QSet<const Document *> changed = std::exchange(d->changed, {});
    const QList<Document *> documents = d->documents.objects();
    if (d->criteria.objects().isEmpty()) {
        d->result.assign(documents);
    } else {
        if (std::exchange(d->orderIsGood, true) && d->order.documents() == documents) {
            d->order.update(changed);
        } else {
            d->order.sort(documents, d->functions());
        }
        d->result.assign(d->order.result());
    }
    Q_EMIT resultChanged();
    if (self) {
        d->run.end();
    }
}

} // namespace vo::data

#include "moc_documentsorter.cpp"
