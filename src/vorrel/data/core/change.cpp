// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/change.h>

#include <vorrel/data/core/document.h>

namespace vo::data {

Change::Change(Document *document)
    : m_document(document)
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

Document *Change::document() const
{
    return m_document;
}

} // namespace vo::data
