// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>

namespace vo::data {

class Context;
class DocumentNode;
class LinkedDocument;

/// Says that the document of \a source refers to the document of \a target. Owned by the Context,
/// listed by both nodes.
struct DocumentEdge
{
    DocumentNode *source;
    DocumentNode *target;
};

/// The place of one document in a Context: its JSON until somebody asks for the object, then the
/// object. There is exactly one node for each known id; the Context makes, owns and deletes it,
/// and the node deletes its document.
class VORREL_DATACORE_EXPORT DocumentNode
{
public:
    /// A document that is not built yet, under the id \p id.
    DocumentNode(Context *context, const QByteArray &id, const QJsonObject &data);

    /// A document made here.
    explicit DocumentNode(LinkedDocument *document);
    ~DocumentNode();
    Q_DISABLE_COPY_MOVE(DocumentNode)

    [[nodiscard]] const QByteArray &id() const { return m_id; }
    [[nodiscard]] bool isInstantiated() const { return m_document != nullptr; }

    /// The document, built on first use. Null if no class fits its type (critical log line,
    /// "Creating unknown document: %s"), and once the document has been destroyed.
    [[nodiscard]] LinkedDocument *document() const;

    /// Builds the document now, unless that has been tried. Its JSON is given up: it is held in one
    /// place only.
    void instantiate();

    [[nodiscard]] const QList<DocumentEdge *> &incoming() const { return m_incoming; }
    [[nodiscard]] const QList<DocumentEdge *> &outgoing() const { return m_outgoing; }

private:
    friend class Context;

    /// Leaves the document to its parent.
    void release() { m_document = nullptr; }
    void addIncomingEdge(DocumentEdge *edge) { m_incoming.append(edge); }
    void addOutgoingEdge(DocumentEdge *edge) { m_outgoing.append(edge); }
    void removeIncomingEdge(DocumentEdge *edge) { m_incoming.removeOne(edge); }
    void removeOutgoingEdge(DocumentEdge *edge) { m_outgoing.removeOne(edge); }

    QJsonObject m_data;
    QByteArray m_id;
    Context *m_context;
    LinkedDocument *m_document = nullptr;
    QList<DocumentEdge *> m_incoming;
    QList<DocumentEdge *> m_outgoing;
};

} // namespace vo::data
