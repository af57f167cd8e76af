// The maker of outlines that the tools get.
#pragma once

#include "Editor/HostObject.h"
#include "Editor/Model/HostProperty.h"
#include "Interfaces/Copper.h"

namespace Ketril::Editor {

class ContourMaker final : public HostObject<IPCB_ContourMaker> {
 public:
  KETRIL_HOST_PAIR(IPCB_ContourMaker, std::int32_t, ArcResolution, resolution_, void(resolution_ = value))
  Status MakeContour(IPCB_Primitive* primitive, TCoord expansion, TV7_Layer layer,
                     Ref<IPCB_GeometricPolygon>& outline) noexcept override;

 private:
  std::int32_t resolution_ = 1000;  // 0.1 mil
};

}  // namespace Ketril::Editor
