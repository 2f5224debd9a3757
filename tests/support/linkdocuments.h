// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/change.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/core/ichangerecorder.h>
#include <vorrel/data/properties/inlinedocumentlistproperty.h>
#include <vorrel/data/properties/inlinedocumentproperty.h>
#include <vorrel/data/properties/langstringproperty.h>
#include <vorrel/data/properties/linkeddocumentmapproperty.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/properties/propertymacros.h>

#include <QtCore/QJsonDocument>

#include <functional>
#include <vector>

namespace vo::test {

/// "text"_q is a QString, "{…}"_o a JSON object.
inline QString operator""_q(const char *text, size_t size)
{
    return QString::fromUtf8(text, int(size));
}

inline QJsonObject operator""_o(const char *text, size_t size)
{
    return QJsonDocument::fromJson(QByteArray(text, int(size))).object();
}

class Station;

/// A Context without a server whose stations have the access that a test says, and that keeps the
/// changes while it is recording.
class GraphContext : public data::Context, public data::IChangeRecorder
{
    Q_OBJECT
    Q_INTERFACES(vo::data::IChangeRecorder)
public:
    explicit GraphContext(QObject *parent = nullptr);

    data::Document::AccessLevel defaultLevel = data::Document::WriteAccess;
    QHash<QByteArray, data::Document::AccessLevel> levels; // by id
    bool recording = false;
    std::vector<std::unique_ptr<data::Change>> changes;

    /// A new station.
    Station *station(const QString &id);

    /// A stored one that is not built; \p data with id, type and revision added.
    data::DocumentNode *store(const QString &id, QJsonObject data = {});

    /// The stored one, built.
    Station *built(const QString &id, const QJsonObject &data = {});

    /// The station of that id; null if there is none.
    [[nodiscard]] Station *find(const QString &id) const;
    [[nodiscard]] bool isBuilt(const QString &id) const;

    /// The policy gives another answer from now on; the document learns it in a later turn.
    void setLevel(const QString &id, data::Document::AccessLevel level);

    void undo();
    void redo();

    data::AccessController *createAccessController(data::LinkedDocument *document) override;

    [[nodiscard]] bool canUndo() const override { return !changes.empty(); }
    [[nodiscard]] bool canRedo() const override { return false; }
    bool recordChange(data::Change *change) override;
    [[nodiscard]] bool changeRecordingActive() const override { return recording; }
    void beginRecordChanges() override { recording = true; }
    void endRecordChanges() override { recording = false; }
    void rollbackChanges() override { undo(); }
    void clearChanges() override { changes.clear(); }
};

/// An inline document that points at a station and holds further ones of its kind.
class Note : public data::InlineDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "note")
    VO_PROPERTY(QString, text, setText)
    VO_PROPERTY(vo::test::Station *, station, setStation)
    Q_PROPERTY(QString notes READ text NOTIFY notesChanged)
public:
    explicit Note(data::Document *parent);
    ~Note() override;

    struct Private;
    const std::unique_ptr<Private> d;

Q_SIGNALS:
    void notesChanged();
};

/// Another inline class.
class Remark : public data::InlineDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "remark")
public:
    using InlineDocument::InlineDocument;
};

/// A linked document with a property of each kind that holds documents. Its private record is
/// open, so that tests reach the properties themselves.
class Station : public data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "station")
    VO_PROPERTY(vo::test::Station *, next, setNext)
    VO_PROPERTY(QString, title, setTitle)
    VO_PROPERTY(QString, story, setStory)
    Q_PROPERTY(QString note READ title NOTIFY noteChanged)
    Q_PROPERTY(QString notes READ title NOTIFY notesChanged)
    Q_PROPERTY(QString exits READ title NOTIFY exitsChanged)
public:
    explicit Station(data::Context *context);
    ~Station() override;

    /// A new note that no property holds yet.
    Note *newNote(const QString &text);

    /// The texts of the notes, with blanks between them; likewise keys and ids of the exits.
    [[nodiscard]] QString noteTexts() const;
    [[nodiscard]] QString exitTexts() const;

    struct Private;
    const std::unique_ptr<Private> d;

    using LinkedDocument::setUseLocale;

Q_SIGNALS:
    void noteChanged();
    void notesChanged();
    void exitsChanged();
};

struct Note::Private
{
    Note *const q;
    data::Property<QString> text { "text", q };
    data::LinkedDocumentProperty<Station> station { "station", q };
    data::InlineDocumentListProperty<Note> notes { "notes", q };
};

struct Station::Private
{
    Station *const q;
    data::LinkedDocumentProperty<Station> next { "next", q };
    data::LangStringProperty title { "title", q };
    data::LangStringProperty story { "story", q, true };
    data::InlineDocumentProperty<Note> note { "note", q };
    data::InlineDocumentListProperty<Note> notes { "notes", q };
    data::LinkedDocumentMapProperty<Station> exits { "exits", q };
};

/// Calls a function inside the signal \p name of \p sender.
class SignalTrap : public QObject
{
    Q_OBJECT
public:
    SignalTrap(const QObject *sender, const QByteArray &name, std::function<void()> function);

private Q_SLOTS:
    void spring() { m_function(); }

private:
    const std::function<void()> m_function;
};

/// Gives a station newer stored data, under its id.
void reload(Station *station, QJsonObject data);

/// Turns the event loop until deferred work is done, and deletes what is to be deleted later.
void settle();

} // namespace vo::test
