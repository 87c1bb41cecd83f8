#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/event_list.h"

namespace orvalis {

/// Whether the text of `event` has every word of `filter`, in upper or lower case.
[[nodiscard]] bool Matches(const Event& event, std::string_view filter);

/// `events`, one a line with date and time, for a file. A text of several lines becomes one.
[[nodiscard]] std::string EventFile(const std::deque<Event>& events, const TimeStyle& style);

}  // namespace orvalis
