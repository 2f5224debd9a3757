// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/change.h>

namespace vo::data {

/// Records that a document was made: taking it back deletes the document, also where the access
/// level has fallen below WriteAccess since.
class VORREL_DATACORE_EXPORT DocumentCreateChange : public Change
{
public:
    explicit DocumentCreateChange(Document *document);
    ~DocumentCreateChange() override;

    void apply() override;
    void unapply() override;
    [[nodiscard]] bool isValid() const override;
};

} // namespace vo::data
