// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/testdocuments.h"

#include "support/literals.h"

#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/documentregistration.h>

namespace vo::test {

namespace {

class TestAccess : public data::AccessController
{
public:
    using AccessController::AccessController;

    [[nodiscard]] data::Document::AccessLevel accessLevel() const override
    {
        return context()->levels.value(document()->id(), context()->defaultLevel);
    }

    [[nodiscard]] QJsonValue parameters() const override { return m_parameters; }

    bool setParameters(const QJsonValue &parameters) override
    {
        if (parameters == m_parameters || !parameters.isDouble()) {
            return false;
        }
        m_parameters = parameters;
        context()->levels.insert(document()->id(), data::Document::AccessLevel(parameters.toInt()));
        return true;
    }

protected:
    [[nodiscard]] QJsonValue sanitizeParameters(const QJsonValue &parameters) const override
    {
        return qBound(0, parameters.toInt(), 2);
    }

private:
    TestContext *context() const { return static_cast<TestContext *>(document()->context()); }

    QJsonValue m_parameters;
};

} // namespace

TestContext::TestContext()
{
    data::registerDocument<Station>();
    data::registerDocument<Note>();
}

data::AccessController *TestContext::createAccessController(data::LinkedDocument *document)
{
    return new TestAccess(document);
}

data::DocumentNode *TestContext::store(const QString &id, QJsonObject data)
{
    data.insert("_id"_s, id);
    data.insert("_rev"_s, "1-a"_s);
    if (!data.contains("type"_s)) {
        data.insert("type"_s, "station"_s);
    }
    return addDocumentNode(id.toLatin1(), data);
}

Station *TestContext::load(const QString &id, const QJsonObject &data)
{
    return static_cast<Station *>(store(id, data)->document());
}

Station *TestContext::find(const QString &id) const
{
    return qobject_cast<Station *>(loadedDocument(id));
}

void TestContext::setLevel(const QString &id, data::Document::AccessLevel level)
{
    levels.insert(id.toLatin1(), level);
    static_cast<data::LinkedDocument *>(loadedDocument(id))->scheduleAccessLevelUpdate();
}

bool TestContext::recordChange(data::Change *change)
{
    changes.emplace_back(change);
    return true;
}

// A slot of a change may destroy this object.

void TestContext::undo()
{
    const QPointer<TestContext> self(this);
    recording = false;
    for (auto i = changes.size(); self && i > 0; --i) {
        changes[i - 1]->unapply();
    }
}

void TestContext::redo()
{
    const QPointer<TestContext> self(this);
    recording = false;
    for (std::size_t i = 0; self && i < changes.size(); ++i) {
        changes[i]->apply();
    }
}

Note::Note(data::Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{ }

Note::~Note() = default;

VO_DEFINE_PROPERTY(Note, QString, text, setText)
VO_DEFINE_PROPERTY(Note, vo::test::Station *, station, setStation)

Station::Station(data::Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

Station::~Station() = default;

VO_DEFINE_PROPERTY(Station, int, number, setNumber)
VO_DEFINE_PROPERTY(Station, QString, text, setText)
VO_DEFINE_PROPERTY(Station, QDateTime, moment, setMoment)
VO_DEFINE_PROPERTY(Station, QString, title, setTitle)
VO_DEFINE_PROPERTY(Station, QString, story, setStory)
VO_DEFINE_PROPERTY(Station, vo::test::Station *, next, setNext)

Note *Station::newNote(const QString &text)
{
    auto *note = static_cast<Note *>(data::InlineDocument::create("note"_s, this));
    note->setText(text);
    return note;
}

QString Station::noteTexts() const
{
    QStringList texts;
    for (const Note *note : d->notes.get()) {
        texts.append(note->text());
    }
    return texts.join(QLatin1Char(' '));
}

QString Station::exitTexts() const
{
    QStringList texts;
    const QMap<QString, Station *> exits = d->exits.get();
    for (const QString &key : exits.keys()) {
        texts.append(key + QLatin1Char(':') + exits.value(key)->documentId());
    }
    return texts.join(QLatin1Char(' '));
}

void reload(Station *station, QJsonObject data)
{
    data.insert("_id"_s, station->documentId());
    data.insert("_rev"_s, station->revision());
    station->assignData(data);
}

} // namespace vo::test
