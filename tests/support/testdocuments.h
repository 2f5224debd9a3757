// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/change.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/ichangerecorder.h>
#include <vorrel/data/properties/attachmentproperty.h>
#include <vorrel/data/properties/inlinedocumentlistproperty.h>
#include <vorrel/data/properties/inlinedocumentproperty.h>
#include <vorrel/data/properties/langstringproperty.h>
#include <vorrel/data/properties/linkeddocumentmapproperty.h>
#include <vorrel/data/properties/linkeddocumentproperty.h>
#include <vorrel/data/properties/listproperty.h>
#include <vorrel/data/properties/mapproperty.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/properties/propertymacros.h>
#include <vorrel/data/properties/uistringproperty.h>

namespace vo::test {

class Station;

/// A Context without a server, whose documents have the access that a test says. It keeps the
/// changes of its documents while it is recording.
class TestContext : public data::Context, public data::IChangeRecorder
{
    Q_OBJECT
    Q_INTERFACES(vo::data::IChangeRecorder)
public:
    TestContext();

    data::Document::AccessLevel defaultLevel = data::Document::WriteAccess;
    QHash<QByteArray, data::Document::AccessLevel> levels; // by id
    bool recording = false;
    std::vector<std::unique_ptr<data::Change>> changes;

    /// A new document; dirty, since it was never stored.
    template <typename T = Station>
    T *create(const QString &id = {})
    {
        const QString type = data::Document::typeOf(T::staticMetaObject);
        return qobject_cast<T *>(data::LinkedDocument::create(type, id, this));
    }

    /// A document as the database holds it, not built: \p data with the id, a revision and, if
    /// there is none, the type of stations.
    data::DocumentNode *store(const QString &id, QJsonObject data = {});

    /// The same, built; clean.
    Station *load(const QString &id, const QJsonObject &data = {});

    /// The station of that id; null if there is none.
    [[nodiscard]] Station *find(const QString &id) const;
    [[nodiscard]] bool isBuilt(const QByteArray &id) const
    {
        return documentNode(id)->isInstantiated();
    }

    /// The policy gives another answer from now on; the document learns it in a later turn.
    void setLevel(const QString &id, data::Document::AccessLevel level);

    /// Takes all changes back, the last one first, or makes them again. Neither is recorded.
    void undo();
    void redo();

    /// The level of its id. The parameters set it, as a number.
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

/// A linked document with a property of each kind. Its private record is open, so that tests reach
/// the properties themselves; some of them can be reached in no other way.
class Station : public data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "station")
    VO_PROPERTY(int, number, setNumber)
    VO_PROPERTY(QString, text, setText)
    VO_PROPERTY(QDateTime, moment, setMoment)
    VO_PROPERTY(QString, title, setTitle)
    VO_PROPERTY(QString, story, setStory)
    VO_PROPERTY(vo::test::Station *, next, setNext)
    Q_PROPERTY(QString palette READ text NOTIFY paletteChanged)
    Q_PROPERTY(QString prices READ text NOTIFY pricesChanged)
    Q_PROPERTY(QString caption READ text NOTIFY captionChanged)
    Q_PROPERTY(QString note READ text NOTIFY noteChanged)
    Q_PROPERTY(QString notes READ text NOTIFY notesChanged)
    Q_PROPERTY(QString exits READ text NOTIFY exitsChanged)
    Q_PROPERTY(QString photo READ text NOTIFY photoChanged)
    Q_PROPERTY(QString film READ text NOTIFY filmChanged)
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
    void paletteChanged();
    void pricesChanged();
    void captionChanged();
    void noteChanged();
    void notesChanged();
    void exitsChanged();
    void photoChanged();
    void filmChanged();
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
    data::Property<int> number { "number", 7, q };
    data::Property<QString> text { "text", q };
    data::Property<QString> nameless { "nameless", q }; // there is no Qt property of this name
    data::Property<QDateTime> moment { "moment", q };
    data::ListProperty<QColor> palette { "palette", q };
    data::MapProperty<double> prices { "prices", q };
    data::UiStringProperty caption { "caption", q };
    data::LangStringProperty title { "title", q };
    data::LangStringProperty story { "story", q, true };
    data::LinkedDocumentProperty<Station> next { "next", q };
    data::InlineDocumentProperty<Note> note { "note", q };
    data::InlineDocumentListProperty<Note> notes { "notes", q };
    data::LinkedDocumentMapProperty<Station> exits { "exits", q };
    data::AttachmentProperty photo { "photo", q };
    data::AttachmentProperty film { "film", q };
};

/// Gives a station newer stored data, under its id.
void reload(Station *station, QJsonObject data);

} // namespace vo::test
