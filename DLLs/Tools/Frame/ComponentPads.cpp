#include "DLLs/Tools/Frame/ComponentPads.h"

#include <algorithm>

namespace Ketril::Tools {

TCoordPoint MiddleOfPads(TComp* component) {
  constexpr TCoord kBeyond = 999990000;
  TCoordRect box{kBeyond, kBeyond, -kBeyond, -kBeyond};
  component->ProcessItems(
      [&](TPrimitive* pad) {
        const TCoord x = pad->GetState_X(), y = pad->GetState_Y();
        box = {std::min(box.x1, x), std::min(box.y1, y), std::max(box.x2, x), std::max(box.y2, y)};
      },
      {ePadObject});
  const auto middle = [](std::int64_t low, std::int64_t high) {
    return static_cast<TCoord>((low + high) / 2);
  };
  return {middle(box.x1, box.x2), middle(box.y1, box.y2)};
}

}  // namespace Ketril::Tools
