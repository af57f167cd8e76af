#include "DLLs/Tools/Frame/WrapperMemory.h"

#include <array>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace Ketril::Tools {

#if defined(__SANITIZE_ADDRESS__)
#define KETRIL_PLAIN_HEAP 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KETRIL_PLAIN_HEAP 1
#endif
#endif

#if defined(KETRIL_PLAIN_HEAP)

void* TakeWrapperMemory(std::size_t size) {
  return ::operator new(size);
}
void ReturnWrapperMemory(void* memory, std::size_t) noexcept {
  ::operator delete(memory);
}

#else

namespace {

constexpr std::size_t kStep = 16;       // sizes are rounded up to multiples of this
constexpr std::size_t kLargest = 256;   // beyond it the heap serves
constexpr std::size_t kSlab = 1 << 16;  // bytes taken from the heap at a time

// Blocks of one size: those that were returned, in a chain through themselves, and the rest of a slab.
class BlockStore {
 public:
  void* Take(std::size_t block) {
    if (Returned* const first = returned_) {
      returned_ = first->next;
      return first;
    }
    if (left_ < block) {
      slabs_.push_back(std::make_unique<std::byte[]>(kSlab));
      next_ = slabs_.back().get();
      left_ = kSlab;
    }
    left_ -= block;
    return std::exchange(next_, next_ + block);
  }

  void Return(void* memory) noexcept { returned_ = ::new (memory) Returned{returned_}; }

 private:
  struct Returned {
    Returned* next;
  };
  Returned* returned_ = nullptr;
  std::byte* next_ = nullptr;
  std::size_t left_ = 0;
  std::vector<std::unique_ptr<std::byte[]>> slabs_;
};

std::array<BlockStore, kLargest / kStep> Stores;

}  // namespace

void* TakeWrapperMemory(std::size_t size) {
  if (size > kLargest) return ::operator new(size);
  const std::size_t steps = (size + kStep - 1) / kStep;
  return Stores[steps - 1].Take(steps * kStep);
}

void ReturnWrapperMemory(void* memory, std::size_t size) noexcept {
  if (size > kLargest) {
    ::operator delete(memory);
  } else {
    Stores[(size + kStep - 1) / kStep - 1].Return(memory);
  }
}

#endif

}  // namespace Ketril::Tools
