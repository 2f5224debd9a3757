// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/change.h>

#include <functional>

namespace vo::data {

/// A change made of a function: called with true to apply and with false to take back. It does
/// nothing once the document has gone.
class VORREL_DATACORE_EXPORT GenericChange : public Change
{
public:
    GenericChange(Document *document, std::function<void(bool forward)> function);
    ~GenericChange() override;

    void apply() override;
    void unapply() override;
    [[nodiscard]] bool isValid() const override;

private:
    void call(bool forward);

    const std::function<void(bool)> m_function;
};

} // namespace vo::data
