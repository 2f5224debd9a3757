// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/context/networkerror.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtQml/QQmlListProperty>
#include <QtQml/qqml.h>

#include <memory>

namespace vo::data {

class Context;
class Document;

/// A live list of documents, the newest first: what a view of the database names, and documents
/// that only exist here so far. It follows its Context: documents that are made, edited, deleted or
/// lose their access come and go by themselves.
///
/// Deleted documents, those without ReadAccess and those that are readable only because another one
/// refers to them are left out. Bursts of changes are gathered: a query is sent 100 ms after the
/// last reason for one, and the list is made anew once in a turn of the event loop. While a query
/// fails, its error shows on the Context and the list stays as it is. A document that is destroyed
/// leaves the list at once; documentsChanged() follows.
///
/// Belongs to whoever makes it. Log lines are in "vorrel.listing", at debug.
class VORREL_DATACORE_EXPORT Listing : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Listing)
    QML_UNCREATABLE("Use one of the kinds of listing")
    Q_MOC_INCLUDE("vorrel/data/context/context.h")
    Q_MOC_INCLUDE("vorrel/data/core/document.h")
    Q_PROPERTY(vo::data::Context *context READ context WRITE setContext NOTIFY contextChanged)
    Q_PROPERTY(int queryLimit READ queryLimit WRITE setQueryLimit NOTIFY queryLimitChanged)
    Q_PROPERTY(
        QQmlListProperty<vo::data::Document> documents READ documents NOTIFY documentsChanged)
    Q_PROPERTY(vo::data::Listing::Status status READ status NOTIFY statusChanged)

public:
    enum Status {
        Loaded = 0,   ///< no query runs; documents of the last one may still be loading
        Updating = 1, ///< also while a query fails and is tried again
        Error = 2,
    };
    Q_ENUM(Status)

    ~Listing() override;

    [[nodiscard]] Context *context() const;

    /// Not owned. The list starts anew.
    void setContext(Context *context);

    /// How many documents the database is asked for at most; -1, the initial one, is no limit.
    [[nodiscard]] int queryLimit() const;
    void setQueryLimit(int limit);

    [[nodiscard]] QList<Document *> documentList() const;
    [[nodiscard]] QQmlListProperty<Document> documents();
    [[nodiscard]] Status status() const;

protected:
    explicit Listing(Context *context);

    /// The view and what it is asked for; invalid if there is nothing to ask for yet.
    [[nodiscard]] virtual QUrl queryUrl() const = 0;

    /// Whether a document that the database has never seen belongs here. False here.
    [[nodiscard]] virtual bool includeLocalDocument(Document *document) const;

public Q_SLOTS:
    virtual void documentAdded(vo::data::Document *document);

protected:
    virtual void removeFromList(Document *document);

public Q_SLOTS:
    virtual void documentChanged(vo::data::Document *document);
    void documentRemoved(vo::data::Document *document);

    /// Asks the database anew, a little later.
    void update();

    /// Empties the list, too.
    void reset();

protected:
    void addToList(Document *document);

Q_SIGNALS:
    void statusChanged();
    void contextChanged();
    void queryLimitChanged(int queryLimit);
    void documentsChanged();

private Q_SLOTS:
    void updateResult();

private:
    friend class ListingPrivate;

    const std::unique_ptr<class ListingPrivate> d;
};

/// A listing could not be brought up to date. It is fixed when that has worked. For applications
/// that want such an error of their own; a listing makes none.
class VORREL_DATACORE_EXPORT ListingUpdateError : public vo::data::NetworkError
{
    Q_OBJECT

public:
    /// \pre \p listing is not null
    ListingUpdateError(Severity severity, int statusCode, QNetworkReply::NetworkError error,
                       Listing *listing, QObject *parent = nullptr);
    ~ListingUpdateError() override;

    void tryFix() override;

private:
    const QPointer<Listing> m_listing;
};

} // namespace vo::data
