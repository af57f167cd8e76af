// A room: components are confined to it, or kept out of it.
#pragma once

#include <memory>

#include "DLLs/Tools/Frame/Rule_Abstract.h"
#include "DLLs/Tools/Geometry/PolyTools.h"

namespace Ketril::Tools {

class TConfinementConstraint;

// The area of a room. It reads the region of the rule that owns it, and goes with it.
class TConfinementRegion {
 public:
  explicit TConfinementRegion(TConfinementConstraint* AOwner);
  TRule* Owner() const;
  TPolygonalShape* Polyshape() { return &FPolyshape; }
  // The host has it in the older numbering of layers.
  TV7_Layer Layer() const;

 private:
  TConfinementConstraint* FOwner;
  TPolygonalShape FPolyshape;
};

class TConfinementConstraint : public TWrapper<TConfinementConstraint, TRule> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_ConfinementConstraint2> IConfinementConstraint() const {
    return CheckedCast<IPCB_ConfinementConstraint2>(FPrimitive);
  }

  void Init() override { FRegion = std::make_unique<TConfinementRegion>(this); }
  void Clean() override { FRegion = nullptr; }

  TConfinementRegion* Region() const { return FRegion.get(); }  // there from the construction on
  KETRIL_FORWARD_READ(TConfinementStyle, Kind, IConfinementConstraint, Kind)
  KETRIL_FORWARD_READ(bool, IncludeInFormatCopy, IConfinementConstraint, IncludeInFormatCopy)
  KETRIL_FORWARD(bool, LockComponents, IConfinementConstraint, LockComponents)

 private:
  std::unique_ptr<TConfinementRegion> FRegion;
};

}  // namespace Ketril::Tools
