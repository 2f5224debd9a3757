// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/models/filters/accesslevelfiltercriterion.h>

#include <vorrel/data/core/document.h>

namespace vo::data {

namespace {

bool isWritable(const Document *document)
{
    return document->accessLevel() >= Document::WriteAccess;
}

} // namespace

AccessLevelFilterCriterion::~AccessLevelFilterCriterion() = default;

FilterFunction AccessLevelFilterCriterion::createFilterFunction() const
{
    return isWritable;
}

} // namespace vo::data

#include "moc_accesslevelfiltercriterion.cpp"
