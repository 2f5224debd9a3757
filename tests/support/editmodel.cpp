// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/editmodel.h"

#include "support/literals.h"

#include <vorrel/data/base/clock_p.h>

#include <tuple>

namespace vo::test {

using data::Context;
using data::Document;

namespace {

constexpr int population = 8;
constexpr int highest = 40; // number
constexpr qint64 mergeWindow = 500;
constexpr int longestStack = 70;

/// One edit of one station. It names itself if it changes anything.
struct Edit
{
    QRandomGenerator &random;
    EditModel &model;
    Context *context;
    QString id;
    PlainStation &plain;
    Station *station;

    [[nodiscard]] QString word() const { return "w%1"_s.arg(random.bounded(4)); }

    /// A younger one, or none.
    [[nodiscard]] QString target() const
    {
        const QStringList ids = model.now.keys();
        const int own = int(ids.indexOf(id));
        return ids.value(own + 1 + random.bounded(int(ids.size()) - own));
    }

    template <typename T>
    void assign(T &field, const T &value, const char *name) const
    {
        if (field != value) {
            field = value;
            model.edits.append(*name ? id + QLatin1String(name) : QString());
        }
    }

    void editNumber() const
    {
        const int value = random.bounded(2 * highest);
        // Cutting is an edit, too: it may lead back to where the number was.
        if (plain.number != value) {
            plain.number = std::min(value, highest);
            model.edits.append(id + "/number"_s);
        }
        station->setNumber(value);
    }

    void editText() const
    {
        const QString value = word();
        assign(plain.text, value, "/text");
        station->setText(value);
    }

    void editTitle() const
    {
        const QString value = word();
        const bool isFirst = plain.title.isEmpty();
        assign(plain.title, value, isFirst ? "" : "/title");
        station->setTitle(value);
    }

    void editPrice() const
    {
        const QString key = word();
        const double value = random.bounded(3);
        if (!plain.prices.contains(key) || plain.prices.value(key) != value) {
            plain.prices.insert(key, value);
            model.edits.append(id + "/prices"_s);
        }
        station->d->prices.set(key, value);
    }

    void editField() const
    {
        const QString other = random.bounded(2) ? target() : QString();
        const QString value = other.isEmpty() ? word() : "$ref(0,%1)"_s.arg(other);
        const bool mayMerge = station->hasStruct("s"_s) && !Station::isReference(plain.field)
            && !Station::isReference(value);
        assign(plain.field, value, mayMerge ? "/field" : "");
        station->setStructValue("s"_s, "f"_s, value);
    }

    void editNext() const
    {
        const QString value = target();
        assign(plain.next, value, "");
        station->setNext(qobject_cast<Station *>(context->loadedDocument(value)));
    }

    void addNote() const
    {
        const QString text = word();
        const int place = random.bounded(int(plain.notes.size()) + 1);
        plain.notes.insert(place, text);
        model.edits.append(QString());
        station->d->notes.insert(station->newNote(text), place);
    }

    void moveNote() const
    {
        if (plain.notes.isEmpty()) {
            return;
        }
        const int from = random.bounded(int(plain.notes.size()));
        const int to = random.bounded(int(plain.notes.size()));
        if (from != to) {
            plain.notes.move(from, to);
            model.edits.append(QString());
        }
        station->d->notes.move(from, to);
    }

    void takeNote() const
    {
        if (!plain.notes.isEmpty()) {
            const int place = random.bounded(int(plain.notes.size()));
            plain.notes.removeAt(place);
            model.edits.append(QString());
            station->d->notes.remove(station->d->notes.at(place));
        }
    }

    void remove() const
    {
        const QString reference = "$ref(0,%1)"_s.arg(id);
        model.now.remove(id);
        for (PlainStation &other : model.now) {
            other.next = other.next == id ? QString() : other.next;
            other.field = other.field == reference ? QString() : other.field;
        }
        model.edits.append(QString());
        station->remove();
    }
};

void create(EditModel &model, Context *context)
{
    const QString id = "%1"_s.arg(++model.made, 6, 10, QLatin1Char('0'));
    model.now.insert(id, {});
    model.edits.append(QString());
    auto *station = qobject_cast<Station *>(context->createDocumentWithId("station"_s, id));
    QObject::connect(station, &Station::numberChanged, station,
                     [station] { station->setNumber(std::min(station->number(), highest)); });
}

} // namespace

bool PlainStation::operator==(const PlainStation &other) const
{
    const auto all = [](const PlainStation &s) {
        return std::tie(s.number, s.text, s.title, s.next, s.field, s.prices, s.notes);
    };
    return all(*this) == all(other);
}

World worldOf(const Context *context)
{
    World world;
    const QList<Document *> documents = context->documents();
    for (const Document *document : documents) {
        const auto *station = qobject_cast<const Station *>(document);
        if (!station || station->deleted()) {
            continue;
        }
        PlainStation &plain = world[station->documentId()];
        plain.number = station->number();
        plain.text = station->text();
        plain.title = station->title();
        plain.next = station->next() ? station->next()->documentId() : QString();
        plain.field = station->getStructValue("s"_s, "f"_s).toString();
        plain.prices = station->d->prices.get();
        plain.notes = station->noteTexts().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }
    return world;
}

void EditModel::begin()
{
    if (levels.isEmpty()) {
        time = data::Clock::instance().currentMSecsSinceEpoch();
        edits.clear();
    }
    levels.append({ now, int(edits.size()) });
}

void EditModel::end()
{
    const World before = levels.takeLast().world;
    if (!levels.isEmpty() || edits.isEmpty()) {
        return;
    }
    edits.removeDuplicates();
    stack = stack.mid(0, position + 1);
    if (!stack.isEmpty() && stack.last().edits == edits && !edits.contains(QString())
        && time - stack.last().time <= mergeWindow) {
        stack.last().after = now;
        return;
    }
    stack.append({ before, now, edits, time });
    if (stack.size() > longestStack) {
        stack.removeFirst();
    }
    position = int(stack.size()) - 1;
}

void EditModel::rollback()
{
    if (!levels.isEmpty()) {
        now = levels.constLast().world;
        edits = edits.mid(0, levels.constLast().edits);
    }
}

void EditModel::move(int distance)
{
    const int place = distance < 0 ? position : position + 1;
    if (levels.isEmpty() && place >= 0 && place < stack.size()) {
        now = distance < 0 ? stack.at(place).before : stack.at(place).after;
        position += distance;
    }
}

void EditModel::clear()
{
    while (!levels.isEmpty()) {
        end();
    }
    stack.clear();
    position = -1;
}

void randomEdit(QRandomGenerator &random, EditModel &model, Context *context)
{
    const QStringList ids = model.now.keys();
    if (ids.isEmpty() || (ids.size() < population && random.bounded(10) == 0)) {
        create(model, context);
        return;
    }
    void (Edit::*const edits[])() const {
        &Edit::editNumber, &Edit::editNumber, &Edit::editText, &Edit::editTitle,
        &Edit::editPrice,  &Edit::editField,  &Edit::editNext, &Edit::addNote,
        &Edit::moveNote,   &Edit::takeNote,   &Edit::remove,
    };
    // Users edit the same thing again and again.
    if (random.bounded(2) || !ids.contains(model.lastId)) {
        model.lastId = ids.at(random.bounded(int(ids.size())));
        model.lastEdit = random.bounded(int(std::size(edits)));
    }
    const QString id = model.lastId;
    const Edit edit { random, model,         context,
                      id,     model.now[id], qobject_cast<Station *>(context->loadedDocument(id)) };
    (edit.*edits[model.lastEdit])();
}

} // namespace vo::test
