// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/genericchange.h>

#include <vorrel/data/core/document.h>

namespace vo::data {

GenericChange::GenericChange(Document *document, std::function<void(bool forward)> function)
    : Change(document)
    , m_function(std::move(function))
{ }

GenericChange::~GenericChange() = default;

void GenericChange::apply()
{
    call(true);
}

void GenericChange::unapply()
{
    call(false);
}

bool GenericChange::isValid() const
{
    return document() != nullptr;
}

void GenericChange::call(bool forward)
{
    if (document()) {
        // A copy: what the function emits may make the recorder delete this change.
        const std::function<void(bool)> function = m_function;
        function(forward);
    }
}

} // namespace vo::data
