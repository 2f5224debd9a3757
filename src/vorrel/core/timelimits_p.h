// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

/// How long an exchange may rest without a sign of life, in either direction, before it fails.
/// They are no limits of its whole duration. Longer forgives slow servers and makes a dead one
/// block what waits for it by as much.
namespace vo::timelimits {

using namespace std::chrono_literals;

/// Exchanges of JSON: GET, HEAD, POST.
constexpr std::chrono::milliseconds answer = 60s;

/// Content: PUT, and GET into a data sink.
constexpr std::chrono::milliseconds transfer = 120s;

/// For the int of Request::timeout().
constexpr int milliseconds(std::chrono::milliseconds limit)
{
    return int(limit.count());
}

} // namespace vo::timelimits
