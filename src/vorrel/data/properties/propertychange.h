// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/change.h>
#include <vorrel/data/properties/propertybase.h>

namespace vo::data {

/// The edit of a property that holds a value of type \a V: keeps the old and the new value and
/// gives them to Property::assign(). Edits of one property merge.
template <typename PropertyT, typename V>
class PropertyChange : public Change
{
public:
    PropertyChange(PropertyT *property, Document *document, const V &oldValue, const V &newValue)
        : Change(document)
        , m_property(property)
        , m_oldValue(oldValue)
        , m_newValue(newValue)
    { }

    void apply() override { assign(m_newValue); }
    void unapply() override { assign(m_oldValue); }

    [[nodiscard]] int type() const override { return typeNumber(); }

    /// The property itself may have gone.
    [[nodiscard]] quint64 uniqueKey() const override
    {
        return (quint64(quint32(typeNumber())) << 32)
            | foldedAddress(static_cast<const PropertyBase *>(m_property));
    }

    /// The key folds an address, and an address may be used again after its document has gone: so
    /// the property and the document have to be the same, too. And a change of another kind may
    /// have the same key by chance.
    [[nodiscard]] bool canMergeWith(const Change *other) const override
    {
        if (!Change::canMergeWith(other) || other->type() != type()) {
            return false;
        }
        const auto *change = static_cast<const PropertyChange *>(other);
        return change->m_property == m_property && document() && change->document() == document();
    }

    void mergeWith(const Change *other) override
    {
        m_newValue = static_cast<const PropertyChange *>(other)->m_newValue;
    }

    /// A change dies with its document.
    [[nodiscard]] bool isValid() const override { return document() != nullptr; }

private:
    static int typeNumber()
    {
        static const int number = Change::createType();
        return number;
    }

    void assign(const V &value)
    {
        if (document()) {
            m_property->assign(value);
        }
    }

    PropertyT *const m_property;
    V m_oldValue;
    V m_newValue;
};

} // namespace vo::data
