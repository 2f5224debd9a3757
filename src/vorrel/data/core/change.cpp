// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/change.h>

#include <vorrel/data/core/document.h>

namespace vo::data {

namespace {

quint64 nextNumber()
{
    static quint64 last = 0;
    return ++last;
}

} // namespace

Change::Change(Document *document)
    : m_document(document)
    , m_number(nextNumber())
{ }

Change::~Change() = default;

int Change::type() const
{
    return -1;
}

bool Change::canMergeWith(const Change *other) const
{
    return uniqueKey() != 0 && other->uniqueKey() == uniqueKey();
}

void Change::mergeWith(const Change * /*other*/) { }

bool Change::isValid() const
{
    return true;
}

quint64 Change::uniqueKey() const
{
    return 0;
}

int Change::createType()
{
    static int last = 0;
    return ++last;
}

quint32 Change::foldedAddress(const void *address)
{
    const auto number = quint64(reinterpret_cast<quintptr>(address));
    return quint32(number >> 32) ^ quint32(number);
}

Document *Change::document() const
{
    return m_document;
}

} // namespace vo::data
