#include "Editor/Copper/ContourMaker.h"

#include <algorithm>

#include "Editor/Copper/Outline.h"

namespace Ketril::Editor {

Status ContourMaker::MakeContour(IPCB_Primitive* primitive, TCoord expansion, TV7_Layer layer,
                                 Ref<IPCB_GeometricPolygon>& outline) noexcept {
  return HostCall("IPCB_ContourMaker.MakeContour", [&] {
    const Primitive* object = FromInterface(primitive);
    if (!object) return Status::InvalidArgument;
    outline =
        MakeHost<GeometricPolygon>(Outline(FormsOf(*object, layer), expansion, std::max(resolution_, 1)));
    return Status::Ok;
  });
}

}  // namespace Ketril::Editor
