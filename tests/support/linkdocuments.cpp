// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/linkdocuments.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaMethod>

namespace vo::test {

namespace {

class LevelByContext : public data::AccessController
{
public:
    using AccessController::AccessController;

    [[nodiscard]] data::Document::AccessLevel accessLevel() const override
    {
        const auto *context = static_cast<const GraphContext *>(document()->context());
        return context->levels.value(document()->id(), context->defaultLevel);
    }
};

} // namespace

GraphContext::GraphContext(QObject *parent)
    : Context(parent)
{
    setChangeFeedMonitorType(NullMonitor);
    static const bool registered = [] {
        data::registerDocument<Station>();
        data::registerDocument<Note>();
        data::registerDocument<Remark>();
        return true;
    }();
    Q_UNUSED(registered)
}

data::AccessController *GraphContext::createAccessController(data::LinkedDocument *document)
{
    return new LevelByContext(document);
}

Station *GraphContext::station(const QString &id)
{
    return static_cast<Station *>(createDocumentWithId("station"_q, id));
}

data::DocumentNode *GraphContext::store(const QString &id, QJsonObject data)
{
    data.insert("_id"_q, id);
    data.insert("_rev"_q, "1-a"_q);
    if (!data.contains("type"_q)) {
        data.insert("type"_q, "station"_q);
    }
    return addDocumentNode(id.toLatin1(), data);
}

Station *GraphContext::built(const QString &id, const QJsonObject &data)
{
    return static_cast<Station *>(store(id, data)->document());
}

Station *GraphContext::find(const QString &id) const
{
    return qobject_cast<Station *>(loadedDocument(id));
}

bool GraphContext::isBuilt(const QString &id) const
{
    const data::DocumentNode *node = documentNode(id.toLatin1());
    return node && node->isInstantiated();
}

void GraphContext::setLevel(const QString &id, data::Document::AccessLevel level)
{
    levels.insert(id.toLatin1(), level);
    static_cast<data::LinkedDocument *>(loadedDocument(id))->scheduleAccessLevelUpdate();
}

bool GraphContext::recordChange(data::Change *change)
{
    changes.emplace_back(change);
    return true;
}

// A change may end with everything that destroys this object.

void GraphContext::undo()
{
    const QPointer<GraphContext> self(this);
    const bool was = std::exchange(recording, false);
    for (auto i = changes.size(); self && i > 0; --i) {
        changes[i - 1]->unapply();
    }
    if (self) {
        recording = was;
    }
}

void GraphContext::redo()
{
    const QPointer<GraphContext> self(this);
    const bool was = std::exchange(recording, false);
    for (std::size_t i = 0; self && i < changes.size(); ++i) {
        changes[i]->apply();
    }
    if (self) {
        recording = was;
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

VO_DEFINE_PROPERTY(Station, vo::test::Station *, next, setNext)
VO_DEFINE_PROPERTY(Station, QString, title, setTitle)
VO_DEFINE_PROPERTY(Station, QString, story, setStory)

Note *Station::newNote(const QString &text)
{
    auto *note = static_cast<Note *>(data::InlineDocument::create("note"_q, this));
    note->setText(text);
    return note;
}

QString Station::noteTexts() const
{
    QStringList texts;
    const QList<Note *> notes = d->notes.get();
    for (const Note *note : notes) {
        texts.append(note->text());
    }
    return texts.join(QLatin1Char(' '));
}

QString Station::exitTexts() const
{
    QStringList texts;
    const QMap<QString, Station *> exits = d->exits.get();
    for (auto it = exits.begin(); it != exits.end(); ++it) {
        texts.append(it.key() + QLatin1Char(':') + it.value()->documentId());
    }
    return texts.join(QLatin1Char(' '));
}

SignalTrap::SignalTrap(const QObject *sender, const QByteArray &name,
                       std::function<void()> function)
    : m_function(std::move(function))
{
    const QMetaObject *meta = sender->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        if (meta->method(i).name() == name) {
            connect(sender, meta->method(i), this,
                    metaObject()->method(metaObject()->indexOfSlot("spring()")));
            return;
        }
    }
    qFatal("No signal %s", name.constData());
}

void reload(Station *station, QJsonObject data)
{
    data.insert("_id"_q, station->documentId());
    data.insert("_rev"_q, station->revision());
    station->assignData(data);
}

void settle()
{
    constexpr int turns = 20;
    for (int turn = 0; turn < turns; ++turn) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace vo::test
