// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QPointer>
#include <QtCore/QtGlobal>

namespace vo::data {

class Document;

/// One local edit of one document, which can be applied and taken back. Setters make it, apply it
/// and hand it to the change recorder of the Context, which then owns it.
class VORREL_DATACORE_EXPORT Change
{
public:
    explicit Change(Document *document);
    virtual ~Change();
    Q_DISABLE_COPY_MOVE(Change)

    virtual void apply() = 0;
    virtual void unapply() = 0;

    /// A number per kind of change, from createType(); -1 for kinds that never merge.
    [[nodiscard]] virtual int type() const;

    /// Whether \p other, made later, edits the same thing in the same way. The base compares
    /// uniqueKey(); 0 never merges.
    [[nodiscard]] virtual bool canMergeWith(const Change *other) const;

    /// Takes the newer state of \p other. \pre canMergeWith(other)
    virtual void mergeWith(const Change *other);

    /// False once the change can no longer be applied; such a change is dropped.
    [[nodiscard]] virtual bool isValid() const;

    /// Names the edited thing; 0 if this change stands alone.
    [[nodiscard]] virtual quint64 uniqueKey() const;

    /// Larger than that of every change that was made before.
    [[nodiscard]] quint64 number() const { return m_number; }

    /// The next free type number.
    static int createType();

    /// An address, folded to 32 bits.
    [[nodiscard]] static quint32 foldedAddress(const void *address);

protected:
    /// The edited document, null once it has gone.
    [[nodiscard]] Document *document() const;

private:
    const QPointer<Document> m_document;
    const quint64 m_number;
};

} // namespace vo::data
