// What a tool makes of the host and closes again: iterators, edits, progress and the like.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Ketril::Tests {

// The first opening call of the record (Editor/HostCall.h) that no closing call followed, "" for none. The
// failed calls count from 1, 0 for none: an opening that failed opened nothing, a closing that failed counts.
std::string UnclosedPair(const std::vector<std::string>& calls, std::int64_t first_failed,
                         std::int64_t second_failed);

}  // namespace Ketril::Tests
