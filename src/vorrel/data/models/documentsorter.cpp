// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/documentsorter.h>

#include <vorrel/data/base/tuning_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/core/document.h>
#include <vorrel/data/core/documentlist_p.h>
#include <vorrel/data/models/criterionlist_p.h>
#include <vorrel/data/models/sortorder_p.h>

#include <QtCore/QPointer>
#include <QtCore/QTimerEvent>

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
    void updateContext(Context *newContext);
    void stopTimer();
    [[nodiscard]] std::vector<CompareFunction> functions() const;

    DocumentSorter *const q;
    int timer = 0;
    int delay = int(tuning::sorterDelay.count());
    bool busy = false;
    QPointer<Context> context;
    SorterDocuments documents;
    DocumentList result;
    CriterionList<SortCriterion> criteria;
    QMetaObject::Connection contextConnection;

    // What was sorted last, which helps as long as the criteria stay as they are.
    SortOrder order;
    bool orderIsGood = false;
    QSet<const Document *> changed; // since then
};

DocumentSorter::Private::Private(DocumentSorter *sorter)
    : q(sorter)
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
        updateContext(documents.objects().constFirst()->context());
    }
    Q_EMIT q->documentsChanged();
}

void DocumentSorter::Private::updateContext(Context *newContext)
{
    if (newContext != context) {
        QObject::disconnect(contextConnection);
        context = newContext;
        contextConnection = QObject::connect(newContext, &Context::documentChanged, q,
                                             &DocumentSorter::handleDocumentChanged);
    }
}

void DocumentSorter::Private::stopTimer()
{
    if (timer != 0) {
        q->killTimer(std::exchange(timer, 0));
    }
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
    return d->delay;
}

void DocumentSorter::setDelay(int milliseconds)
{
    if (milliseconds != d->delay) {
        d->delay = milliseconds;
        Q_EMIT delayChanged();
    }
}

bool DocumentSorter::busy() const
{
    return d->busy;
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
    d->stopTimer();
    if (d->delay < 1) {
        sort();
        return;
    }
    const QPointer<DocumentSorter> self(this);
    if (!std::exchange(d->busy, true)) {
        Q_EMIT busyChanged();
    }
    if (self) {
        d->stopTimer(); // a slot may have started one
        d->timer = startTimer(d->delay, Qt::CoarseTimer);
    }
}

void DocumentSorter::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == d->timer) {
        d->stopTimer();
        sort();
    } else {
        QObject::timerEvent(event);
    }
}

void DocumentSorter::sort()
{
    const QPointer<DocumentSorter> self(this);
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
    // A slot may have scheduled the next run.
    if (self && d->timer == 0 && std::exchange(d->busy, false)) {
        Q_EMIT busyChanged();
    }
}

} // namespace vo::data

#include "moc_documentsorter.cpp"
