// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/document.h>

#include <QtCore/QJsonValue>

namespace vo::data {

class LinkedDocument;

/// Says who may read and change one document, by parameters that are stored with it under the
/// key "accessControl". Context::createAccessController() makes it on first demand; the document
/// owns it. Subclasses bring the policy of an application.
class VORREL_DATACORE_EXPORT AccessController
{
public:
    explicit AccessController(LinkedDocument *document);

protected:
    /// Mends parameters before they are set by update().
    [[nodiscard]] virtual QJsonValue sanitizeParameters(const QJsonValue &parameters) const;

public:
    virtual ~AccessController();
    Q_DISABLE_COPY_MOVE(AccessController)

    [[nodiscard]] virtual Document::AccessLevel accessLevel() const = 0;

    /// What is stored with the document; JSON null stores nothing.
    [[nodiscard]] virtual QJsonValue parameters() const;

    /// Takes stored parameters and returns whether they differ from the present ones.
    virtual bool setParameters(const QJsonValue &parameters);

    /// The document has come to point at, or ceased to point at, \p target.
    virtual void attachDocument(Document *target);
    virtual void detachDocument(Document *target);

    [[nodiscard]] LinkedDocument *document() const;

    /// An edit of the parameters: recorded for undo, marks the document dirty and recomputes its
    /// access level. Does nothing below WriteAccess or when nothing changes.
    void update(const QJsonValue &parameters);

protected:
    void markDirty();
    void notifyChange();

private:
    friend class AccessParameterChange;

    void assign(const QJsonValue &parameters);
    void finishEdit();

    LinkedDocument *const m_document;
};

/// Everybody may do everything.
class VORREL_DATACORE_EXPORT DefaultAccessController : public AccessController
{
public:
    using AccessController::AccessController;
    [[nodiscard]] Document::AccessLevel accessLevel() const override;
};

} // namespace vo::data
