#include <malloc.h>

#include "DLLs/Tools/Frame/CountedObject.h"
#include "DLLs/Tools/Frame/ObjectScope.h"
#include "Interfaces/Tools.h"

namespace Ketril {

namespace Tools {
namespace {

// The allocator's own figures: its heap, and the large blocks that it takes from the system one by one.
class TServerMemoryInfo final : public CountedObject<IServerMemoryInfo> {
 public:
  Status GetState_AllocatedBytes(std::uint64_t& value) noexcept override {
    const struct mallinfo2 heap = mallinfo2();
    value = heap.uordblks + heap.hblkhd;
    return Status::Ok;
  }
  Status GetState_ReservedBytes(std::uint64_t& value) noexcept override {
    const struct mallinfo2 heap = mallinfo2();
    value = heap.arena + heap.hblkhd;
    return Status::Ok;
  }
  Status GetState_WrapperCount(std::int32_t& value) noexcept override {
    value = PrimitiveRegistry ? static_cast<std::int32_t>(PrimitiveRegistry->size()) : 0;
    return Status::Ok;
  }
};

}  // namespace
}  // namespace Tools

std::int32_t GetMemoryInfo(Ref<IServerMemoryInfo>& AInfo) {
  AInfo = Tools::MakeCounted<Tools::TServerMemoryInfo>();
  return 0;
}

}  // namespace Ketril
