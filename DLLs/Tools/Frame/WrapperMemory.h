// Memory of wrappers. A run makes and frees a wrapper for each object that it looks at, up to a million, all
// of a few small sizes; giving that memory back to the system after each run and asking for it again costs
// more than the run. So freed blocks are kept for the next wrappers, until the library is unloaded.
//
// Under the address sanitizer every block comes from the heap, so that a use after free is seen.
#pragma once

#include <cstddef>

namespace Ketril::Tools {

// A block for an object of that size, aligned for any type; raises std::bad_alloc.
void* TakeWrapperMemory(std::size_t size);
// `size` as it was taken.
void ReturnWrapperMemory(void* memory, std::size_t size) noexcept;

}  // namespace Ketril::Tools
