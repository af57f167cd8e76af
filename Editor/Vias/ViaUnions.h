// What a board knows of its stitchings and shieldings, and the work behind its interface for them.
#pragma once

#include <unordered_set>

#include "Editor/Vias/ViaUnion.h"

namespace Ketril::Editor {

class ViaUnions {
 public:
  explicit ViaUnions(Board& board);

  // The settings that the next ones start with: a via of the board's first net class.
  const Ref<StitchOptions>& StitchDefaults();
  const Ref<ShieldOptions>& ShieldDefaults();

  Status CreateStitching(IPCB_ViaStitchFloodOptions* options, Ref<IPCB_SmartUnionObject>& stitching);
  Status CreateShielding(IPCB_ViaShieldingOptions* options, Ref<IPCB_ViaShieldingSU>& shielding);
  Status Build(IPCB_SmartUnionObject* object, bool& built);
  Status AssignIndex(IPCB_SmartUnionObject* object, std::int32_t& index);
  Status Register(IPCB_SmartUnionObject* object);
  void Remove(TUnionKind kind);  // the selected ones, or all when none is
  void RemoveByIndex(TUnionKind kind, std::int32_t index);
  Status Redraw(IPCB_SmartUnionObject* object) const;

  // Those that have parts on the board, oldest first.
  std::vector<ViaUnion*> List() const;
  Ref<IPCB_SmartUnionObject> At(std::int32_t index) const;
  // For readers: a union whose parts carry the index already.
  void Load(const Ref<Primitive>& object);

  const ViaRun& LastRun() const { return last_run_; }  // of the last build

 private:
  ViaUnion* Own(IPCB_SmartUnionObject* object) const;
  bool HasParts(std::int32_t union_index) const;
  Ref<Via> NewReferenceVia() const;
  std::int32_t NextIndex() const;
  void BuildStitching(Stitching& stitching);
  void BuildShielding(Shielding& shielding);
  void TakeOff(ViaUnion& object);

  Board& board_;
  Ref<StitchOptions> stitch_;
  Ref<ShieldOptions> shield_;
  std::vector<Ref<Primitive>> objects_;
  ViaRun last_run_;
  // The indexes that objects of the board carry, and of which state of the board that was.
  mutable std::unordered_set<std::int32_t> carried_;
  mutable std::uint64_t revision_ = ~std::uint64_t{0};
};

}  // namespace Ketril::Editor
