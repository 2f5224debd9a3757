// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/properties/inlinedocumentlistproperty.h>

#include <vorrel/data/core/documentstore_p.h>

#include <algorithm>

namespace vo::data {

InlineDocumentListPropertyBase::InlineDocumentListPropertyBase(const char *name, Document *document)
    : DocumentListPropertyBase(name, document)
{ }

// The elements are children of the document and go with it, a little later.
InlineDocumentListPropertyBase::~InlineDocumentListPropertyBase()
{
    for (InlineDocument *element : std::as_const(m_elements)) {
        disown(element);
    }
}

void InlineDocumentListPropertyBase::inlineDocumentDestroyed(InlineDocument *document)
{
    m_elements.removeOne(document);
}

// Stored data

void InlineDocumentListPropertyBase::fromJson(const QJsonValue &json)
{
    const QPointer<Document> guard(d_());
    dropLoader();
    const QJsonArray array = json.toArray();
    if (array.isEmpty()) {
        if (!m_elements.isEmpty() && replace({}) && guard) {
            notify();
        }
        return;
    }
    m_loader = Loader { array, 0, {} };
    store().incubate(this);
}

bool InlineDocumentListPropertyBase::incubate(Context * /*context*/)
{
    const QPointer<Document> guard(d_());
    if (m_loader) {
        makeNext();
    }
    if (guard && !m_loader) {
        deliverNotification();
    }
    return guard && m_loader;
}

void InlineDocumentListPropertyBase::makeNext()
{
    const QPointer<Document> guard(d_());
    const int position = m_loader->next++;
    const QJsonObject object = m_loader->array.at(position).toObject();
    InlineDocument *element = createInlineDocument(object);
    if (!guard || !m_loader) {
        return;
    }
    if (element && accepts(element)) {
        m_loader->made.append(element);
    } else if (element) {
        discard(element);
    }
    if (m_loader && m_loader->next >= m_loader->array.size()) {
        commit();
    }
}

void InlineDocumentListPropertyBase::commit()
{
    const QList<QPointer<InlineDocument>> made(m_loader->made.cbegin(), m_loader->made.cend());
    m_loader.reset();
    if (replace(made)) {
        notifyLater();
    }
}

void InlineDocumentListPropertyBase::dropLoader()
{
    if (m_loader) {
        for (InlineDocument *element : std::as_const(m_loader->made)) {
            discard(element);
        }
        m_loader.reset();
    }
}

// False when a slot destroyed the document.
bool InlineDocumentListPropertyBase::finishLoading() const
{
    auto *self = const_cast<InlineDocumentListPropertyBase *>(this);
    const QPointer<Document> guard(d_());
    while (guard && m_loader) {
        self->makeNext();
    }
    return !guard.isNull();
}

InlineDocumentListPropertyBase::Elements InlineDocumentListPropertyBase::elements() const
{
    return finishLoading() ? m_elements : Elements();
}

// False when a slot destroyed the document.
bool InlineDocumentListPropertyBase::replace(const QList<QPointer<InlineDocument>> &elements)
{
    // Whatever this property owns stands in the list at any time: slots may destroy elements, or
    // the document with this property.
    const QPointer<Document> guard(d_());
    for (auto count = m_elements.size(); count > 0 && !m_elements.isEmpty(); --count) {
        const QPointer<InlineDocument> element(m_elements.takeLast());
        release(element);
        if (element) {
            discard(element);
        }
        if (!guard) {
            return false;
        }
    }
    for (const QPointer<InlineDocument> &element : elements) {
        if (element && !element->ownerDocument()) {
            m_elements.append(element);
            adopt(element);
        }
        if (!guard) {
            return false;
        }
    }
    return true;
}

QJsonValue InlineDocumentListPropertyBase::toJson() const
{
    if (m_loader) {
        return m_loader->array; // what is not made yet is stored as it came
    }
    QJsonArray array;
    for (const InlineDocument *element : m_elements) {
        array.append(element->serialize());
    }
    return array;
}

void InlineDocumentListPropertyBase::aggregateReferences(QSet<QString> &ids) const
{
    const Elements all = elements();
    const QList<QPointer<InlineDocument>> guarded(all.cbegin(), all.cend());
    for (const QPointer<InlineDocument> &element : guarded) {
        if (element) {
            element->aggregateReferences(ids);
        }
    }
}

// Reading

int InlineDocumentListPropertyBase::count() const
{
    return int(elements().size());
}

Document *InlineDocumentListPropertyBase::at(int index) const
{
    return elements().value(index);
}

int InlineDocumentListPropertyBase::indexOf(Document *document) const
{
    const Elements all = elements();
    const auto found = std::find(all.begin(), all.end(), document);
    return found == all.end() ? -1 : int(found - all.begin());
}

bool InlineDocumentListPropertyBase::isComplete() const
{
    return !m_loader;
}

QList<Document *> InlineDocumentListPropertyBase::referencedDocuments() const
{
    QList<Document *> documents;
    const Elements all = elements();
    for (InlineDocument *element : all) {
        documents.append(element);
    }
    return documents;
}

// Editing

bool InlineDocumentListPropertyBase::insert(Document *document, int index)
{
    auto *element = qobject_cast<InlineDocument *>(document);
    if (!canWrite() || !element || !accepts(element) || !acceptsContext(element)
        || liesWithin(element) || d_()->performCycleCheck(element) || !finishLoading()) {
        return false;
    }
    const int present = indexOf(element);
    if (present >= 0) {
        return move(present, index < 0 ? count() - 1 : index);
    }
    if (element->ownerDocument()) {
        return false; // it stands in another property
    }
    const int place = index < 0 || index > count() ? count() : index;
    applyEdit([this, hold = InlineDocumentHold(element), place](bool forward) {
        return forward ? insertAt(hold.document(), place) : removeElement(hold.document());
    });
    return true;
}

bool InlineDocumentListPropertyBase::remove(Document *document)
{
    const int place = finishLoading() ? indexOf(document) : -1;
    if (place < 0 || !canWrite()) {
        return false;
    }
    applyEdit([this, hold = InlineDocumentHold(m_elements.at(place)), place](bool forward) {
        return forward ? removeElement(hold.document()) : insertAt(hold.document(), place);
    });
    return true;
}

bool InlineDocumentListPropertyBase::move(int from, int to)
{
    if (!finishLoading()) {
        return false;
    }
    const int size = count();
    const auto inRange = [size](int index) { return index >= 0 && index < size; };
    if (!canWrite() || from == to || !inRange(from) || !inRange(to)) {
        return false;
    }
    applyEdit([this, from, to](bool forward) {
        return forward ? moveElement(from, to) : moveElement(to, from);
    });
    return true;
}

void InlineDocumentListPropertyBase::clear()
{
    if (!finishLoading() || !canWrite() || m_elements.isEmpty()) {
        return;
    }
    std::vector<InlineDocumentHold> holds;
    for (InlineDocument *element : std::as_const(m_elements)) {
        holds.emplace_back(element);
    }
    applyEdit([this, holds](bool forward) {
        QList<QPointer<InlineDocument>> restored;
        for (const InlineDocumentHold &hold : holds) {
            if (!forward && hold.document()) {
                restored.append(hold.document());
            }
        }
        return replace(restored) && notify();
    });
}

void InlineDocumentListPropertyBase::copy(PropertyBase *source)
{
    const auto *other = static_cast<InlineDocumentListPropertyBase *>(source);
    const Elements originals = other->canRead() ? other->elements() : Elements();
    const QPointer<Document> guard(d_());
    clear();
    for (InlineDocument *original : originals) {
        InlineDocument *element = guard && canWrite() ? original->copy(d_()) : nullptr;
        if (element && guard && !insert(element, -1)) {
            discard(element);
        }
    }
}

void InlineDocumentListPropertyBase::removeDocument(Document *document)
{
    remove(document);
}

// What edits do, in both directions. False when nothing changed or a slot destroyed the document.

bool InlineDocumentListPropertyBase::insertAt(InlineDocument *document, int index)
{
    if (!document || document->ownerDocument()) {
        return false;
    }
    const QPointer<Document> guard(d_());
    m_elements.insert(std::min(index, int(m_elements.size())), document);
    adopt(document);
    return guard && notify();
}

bool InlineDocumentListPropertyBase::removeElement(InlineDocument *document)
{
    const int index = indexOf(document);
    if (index < 0) {
        return false;
    }
    const QPointer<Document> guard(d_());
    m_elements.removeAt(index);
    release(document);
    return guard && notify();
}

bool InlineDocumentListPropertyBase::moveElement(int from, int to)
{
    const int size = count();
    if (from >= size || to >= size) {
        return false;
    }
    m_elements.move(from, to);
    return notify();
}

} // namespace vo::data
