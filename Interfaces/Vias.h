// What the tools of via stitching, via shielding and unused pads know of the editor. The editor floods,
// fences, and works out what is unused; the tools say of what, and in which order.
#pragma once

#include <cstddef>
#include <cstdint>

#include "Interfaces/Groups.h"

namespace Ketril {

class IPCB_Board;

// The settings of a flood. Those that are edited are asked for, and lie between the two calls of an edit;
// which settings there are is between the editor and its dialog.
class IPCB_ViaStitchFloodOptions : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_ViaStitchFloodOptions"};
  virtual Status GetEditOptions(Ref<IPCB_ViaStitchFloodOptions>& options) noexcept = 0;
  virtual Status BeginOptionsEdit() noexcept = 0;
  virtual Status EndOptionsEdit() noexcept = 0;
  // The via that those of the flood are copies of; it is on no board.
  virtual Status GetReferenceVia(Ref<IPCB_Primitive>& via) noexcept = 0;
  virtual Status GetOptionsBoard(Ref<IPCB_Board>& board) noexcept = 0;
};

// The settings of a shielding: whom it shields, and as those of a flood. The vias are copies of the reference
// via, and so are on its net.
class IPCB_ViaShieldingOptions : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_ViaShieldingOptions"};
  virtual Status GetEditOptions(Ref<IPCB_ViaShieldingOptions>& options) noexcept = 0;
  virtual Status BeginOptionsEdit() noexcept = 0;
  virtual Status EndOptionsEdit() noexcept = 0;
  virtual Status GetReferenceVia(Ref<IPCB_Primitive>& via) noexcept = 0;
  virtual Status GetOptionsBoard(Ref<IPCB_Board>& board) noexcept = 0;
  // The net that is shielded; empty for none.
  virtual Status GetOptionsNet(Ref<IPCB_Net>& net) noexcept = 0;
  virtual Status SetOptionsNet(IPCB_Net* net) noexcept = 0;
  // The primitives that are shielded; without any, those of the net are. Empty beyond the end.
  virtual Status GetPrimitiveCount(std::int32_t& count) noexcept = 0;
  virtual Status GetPrimitive(std::int32_t index, Ref<IPCB_Primitive>& primitive) noexcept = 0;
  virtual Status AddPrimitive(IPCB_Primitive* primitive) noexcept = 0;
  // True when a shielding that the net has already may stay beside the new one, without a question.
  virtual Status GetNoReplaceCheck(bool& no_check) noexcept = 0;
};

// Offered beside the chain of primitives by an object that stands for a union: its parts carry its index.
class IPCB_SmartUnionObject : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_SmartUnionObject"};
  KETRIL_READ(TUnionKind, UnionKind);
  KETRIL_PROPERTY(Ref<IPCB_Board>, OwnerBoard);
  // Of a stitching; Failure for others.
  virtual Status GetFloodOptions(Ref<IPCB_ViaStitchFloodOptions>& options) noexcept = 0;
  // Brings what the object tells of its parts up to date.
  virtual Status RefreshObject() noexcept = 0;
  // True when the object is on its board.
  virtual Status GetRegistered(bool& registered) noexcept = 0;
};

class IPCB_ViaShieldingSU : public IPCB_SmartUnionObject {
 public:
  using Base = IPCB_SmartUnionObject;
  static constexpr InterfaceId Id{"IPCB_ViaShieldingSU"};
  virtual Status GetShieldingOptions(Ref<IPCB_ViaShieldingOptions>& options) noexcept = 0;
  // True when it has been built and has vias.
  virtual Status GetShieldingDone(bool& done) noexcept = 0;
};

// What the dialog of the unused pads answers.
enum TUnusedPadsMode : std::int32_t {
  eUnusedPads_Remove,
  eUnusedPads_Restore,
  eUnusedPads_RestoreAndRemove,
};
struct TUnusedPadsOptions {
  bool ProcessVias = false;
  bool ProcessPads = false;
  bool OnlySelected = false;
  bool PreserveStartEnd = false;           // the copper on the first and the last layer stays
  std::int32_t Mode = eUnusedPads_Remove;  // of TUnusedPadsMode; others change nothing
};
static_assert(sizeof(TUnusedPadsOptions) == 8 && offsetof(TUnusedPadsOptions, PreserveStartEnd) == 3 &&
              offsetof(TUnusedPadsOptions, Mode) == 4);

}  // namespace Ketril
