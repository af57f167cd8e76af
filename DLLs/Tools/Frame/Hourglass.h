// The wait cursor while something runs that the user cannot interrupt.
#pragma once

#include "Platform/Messages.h"

namespace Ketril::Tools {

// The hourglass for the length of a block; the arrow afterwards, whatever the cursor was before.
class THourglass {
 public:
  THourglass() { Platform::SetCursor(Platform::TCursor::Hourglass); }
  ~THourglass() { Platform::SetCursor(Platform::TCursor::Arrow); }
  THourglass(const THourglass&) = delete;
  THourglass& operator=(const THourglass&) = delete;
};

}  // namespace Ketril::Tools
