// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/accesscontroller.h>
#include <vorrel/data/core/linkeddocument.h>

namespace vo::test {

/// Access as a test says. The parameters are the level as a number, mended to what there is.
class SettableAccess : public vo::data::AccessController
{
public:
    SettableAccess(vo::data::LinkedDocument *document, vo::data::Document::AccessLevel initialLevel)
        : AccessController(document)
        , level(initialLevel)
    { }

    vo::data::Document::AccessLevel level;
    QList<vo::data::Document *> targets; // what the document points at, as it was told

    [[nodiscard]] vo::data::Document::AccessLevel accessLevel() const override { return level; }
    [[nodiscard]] QJsonValue parameters() const override { return m_parameters; }

    bool setParameters(const QJsonValue &parameters) override
    {
        if (parameters == m_parameters || !parameters.isDouble()) {
            return false;
        }
        m_parameters = parameters;
        level = vo::data::Document::AccessLevel(parameters.toInt());
        return true;
    }

    void attachDocument(vo::data::Document *target) override { targets.append(target); }
    void detachDocument(vo::data::Document *target) override { targets.removeOne(target); }

protected:
    [[nodiscard]] QJsonValue sanitizeParameters(const QJsonValue &parameters) const override
    {
        return qBound(0, parameters.toInt(), 2);
    }

private:
    QJsonValue m_parameters;
};

/// A Context without server and database, whose documents have the access that a test gives them.
class AccessContext : public vo::data::Context
{
    Q_OBJECT
public:
    using Context::Context;

    /// What documents begin with.
    vo::data::Document::AccessLevel initialLevel = vo::data::Document::WriteAccess;

    vo::data::AccessController *createAccessController(vo::data::LinkedDocument *document) override
    {
        return new SettableAccess(document, initialLevel);
    }

    static SettableAccess &access(const vo::data::LinkedDocument *document)
    {
        return static_cast<SettableAccess &>(*document->accessController());
    }

    /// The policy gives another answer from now on; the document learns it in a later turn.
    static void setLevel(vo::data::LinkedDocument *document, vo::data::Document::AccessLevel level)
    {
        access(document).level = level;
        document->scheduleAccessLevelUpdate();
    }
};

} // namespace vo::test
