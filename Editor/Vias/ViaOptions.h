// The settings of via stitching and via shielding. Lengths are in units.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Editor/Model/Iterators.h"
#include "Editor/Model/Net.h"
#include "Editor/Model/Via.h"

namespace Ketril::Editor {

// What both have in common. The vias are copies of `reference`, net included.
struct ViaSettings {
  Ref<Via> reference;
  TCoord clearance = 0;  // from copper of other nets at least, besides what the rules ask
  TCoord edge = 196850;  // of the copper from the board's edge: 0.5 mm
};

struct StitchSettings : ViaSettings {
  TCoord grid_x = 1000000, grid_y = 1000000;  // 100 mil
  TCoordPoint offset;                         // of the grid from the board's origin
  bool staggered = false;                     // every other row is moved by half a step
  std::optional<TCoordRect> area;             // nothing outside it
  // Copper layers on which copper of the net has to cover the whole via; none: any two.
  std::vector<TV7_Layer> layers;
};

struct ShieldSettings : ViaSettings {
  TCoord distance = 100000;  // from the shielded copper to that of the vias: 10 mil
  TCoord pitch = 500000;     // along the fence, between centres
  int rows = 1;              // 1 to 3
  bool copper = false;       // the fence gets copper of its net on the layers of what it shields
  bool no_replace_check = false;
  Ref<Net> net;                            // that is shielded
  std::vector<Ref<Primitive>> primitives;  // that are; without any, the tracks and arcs of the net
};

// The options as the tools see them: each is its own edit, with the settings open for the editor.
template <class Interface, class Values>
class ViaOptions : public HostObject<Interface> {
 public:
  ViaOptions(std::shared_ptr<IteratorLedger> owner, Values values)
      : settings(std::move(values)), owner_(std::move(owner)) {}
  Values settings;

  // A copy with a reference via of its own.
  Values Copy() const {
    Values copy = settings;
    copy.reference = Ref<Via>(static_cast<Via*>(settings.reference->Copy().Get()));
    return copy;
  }
  const std::shared_ptr<IteratorLedger>& Owner() const { return owner_; }

 protected:
  Ref<IPCB_Board> OwnerBoard() const;

 private:
  std::shared_ptr<IteratorLedger> owner_;  // tells the board, as long as it lives
};

#define KETRIL_VIA_OPTIONS(Interface)                                                             \
  KETRIL_HOST_METHOD(Interface, GetEditOptions, (Ref<Interface> & options), void(options = this)) \
  KETRIL_HOST_METHOD(Interface, BeginOptionsEdit, (), Status::Ok)                                 \
  KETRIL_HOST_METHOD(Interface, EndOptionsEdit, (), Status::Ok)                                   \
  KETRIL_HOST_METHOD(Interface, GetReferenceVia, (Ref<IPCB_Primitive> & via),                     \
                     void(via = settings.reference))                                              \
  KETRIL_HOST_METHOD(Interface, GetOptionsBoard, (Ref<IPCB_Board> & board), void(board = OwnerBoard()))

class StitchOptions final : public ViaOptions<IPCB_ViaStitchFloodOptions, StitchSettings> {
 public:
  using ViaOptions::ViaOptions;
  KETRIL_VIA_OPTIONS(IPCB_ViaStitchFloodOptions)
};

class ShieldOptions final : public ViaOptions<IPCB_ViaShieldingOptions, ShieldSettings> {
 public:
  using ViaOptions::ViaOptions;
  KETRIL_VIA_OPTIONS(IPCB_ViaShieldingOptions)
  KETRIL_HOST_METHOD(IPCB_ViaShieldingOptions, GetOptionsNet, (Ref<IPCB_Net> & net), void(net = settings.net))
  Status SetOptionsNet(IPCB_Net* net) noexcept override;
  KETRIL_HOST_METHOD(IPCB_ViaShieldingOptions, GetPrimitiveCount, (std::int32_t & count),
                     void(count = static_cast<std::int32_t>(settings.primitives.size())))
  Status GetPrimitive(std::int32_t index, Ref<IPCB_Primitive>& primitive) noexcept override;
  Status AddPrimitive(IPCB_Primitive* primitive) noexcept override;
  KETRIL_HOST_METHOD(IPCB_ViaShieldingOptions, GetNoReplaceCheck, (bool& no_check),
                     void(no_check = settings.no_replace_check))
};
#undef KETRIL_VIA_OPTIONS

}  // namespace Ketril::Editor
