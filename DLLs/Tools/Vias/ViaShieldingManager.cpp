#include "DLLs/Tools/Vias/ViaShieldingManager.h"

#include "DLLs/Tools/Frame/ConfirmNoYes.h"
#include "DLLs/Tools/Vias/ViaUnions.h"

namespace Ketril::Tools {

namespace {

using Options = IPCB_ViaShieldingOptions;

constexpr TObjectSet kShieldable = {eArcObject,  ePadObject,  eViaObject,   eTrackObject,
                                    eFillObject, ePolyObject, eRegionObject};
static_assert(kShieldable.Bits() == 3166);

bool IsShieldable(const Ref<IPCB_Primitive>& object) {
  return kShieldable.Contains(On(object).Read(&IPCB_Primitive::GetState_ObjectID));
}

Ref<IPCB_Net> NetOf(const Ref<IPCB_Primitive>& object) {
  return On(object).Read(&IPCB_Primitive::GetState_Net);
}

std::uintptr_t IdentityOf(const Ref<IPCB_Primitive>& object) {
  return On(object).Read(&IPCB_Primitive::GetState_ObjectAddress);
}

// Calls `visit(shielding, options)` for the shieldings of the object's board until it gives true.
template <class Visit>
void ForEachShielding(const Ref<IPCB_Primitive>& object, Visit visit) {
  const auto board = CheckedCast<IPCB_Board2>(On(object).Read(&IPCB_Primitive::GetState_Board));
  const std::int32_t count = On(board).Read(&IPCB_Board2::GetSmartUnionCount);
  for (std::int32_t i = 0; i < count; ++i) {
    const auto shielding = Probe<IPCB_ViaShieldingSU>(On(board).Read(&IPCB_Board2::GetSmartUnion, i));
    if (!shielding) continue;
    if (visit(shielding, On(shielding).Read(&IPCB_ViaShieldingSU::GetShieldingOptions))) return;
  }
}

bool Lists(const Ref<Options>& options, std::uintptr_t identity) {
  const std::int32_t count = On(options).Read(&Options::GetPrimitiveCount);
  for (std::int32_t i = 0; i < count; ++i) {
    if (IdentityOf(On(options).Read(&Options::GetPrimitive, i)) == identity) return true;
  }
  return false;
}

}  // namespace

Ref<IPCB_ViaShieldingSU> FindShielding(const Ref<IPCB_Primitive>& primitive) {
  Ref<IPCB_ViaShieldingSU> found;
  if (!primitive) return found;
  const std::uintptr_t identity = IdentityOf(primitive);
  ForEachShielding(primitive, [&](const auto& shielding, const Ref<Options>& options) {
    if (Lists(options, identity)) found = shielding;
    return false;
  });
  return found;
}

Ref<IPCB_ViaShieldingSU> FindShielding(const Ref<IPCB_Net>& net) {
  Ref<IPCB_ViaShieldingSU> found;
  if (!net) return found;
  const std::uintptr_t identity = IdentityOf(net);
  ForEachShielding(net, [&](const auto& shielding, const Ref<Options>& options) {
    const Ref<IPCB_Net> shielded = On(options).Read(&Options::GetOptionsNet);
    if (shielded && IdentityOf(shielded) == identity) found = shielding;
    return bool(found);
  });
  return found;
}

TViaShieldingManager::TViaShieldingManager(IPCB_Board* ABoard) : FBoard(BoardForVias(ABoard)) {}

void TViaShieldingManager::Run(IServerDocumentView* AView, IParameterList* AParameters) {
  if (ModeIs(AParameters, u"RemoveShielding")) {
    On(FBoard).Call(&IPCB_Board2::RemoveViaShielding);
  } else {
    Apply(AView);
  }
}

Ref<Options> TViaShieldingManager::OptionsForSelection() const {
  const auto working =
      On(On(FBoard).Read(&IPCB_Board2::GetViaShieldingOptions)).Read(&Options::GetEditOptions);
  On(working).Call(&Options::BeginOptionsEdit);
  const auto board = On(working).Read(&Options::GetOptionsBoard);
  const std::int32_t selected = On(board).Read(&IPCB_Board::GetState_SelectedObjectsCount);
  for (std::int32_t i = 0; i < selected; ++i) {
    const auto object = On(board).Read(&IPCB_Board::GetState_SelectedObject, i);
    if (!IsShieldable(object) || FindShielding(object) || FindShielding(NetOf(object))) continue;
    On(working).Call(&Options::AddPrimitive, object.Get());
  }
  if (On(working).Read(&Options::GetPrimitiveCount) > 0) {
    const auto first = On(working).Read(&Options::GetPrimitive, 0);
    On(working).Call(&Options::SetOptionsNet, NetOf(first).Get());
  } else if (selected > 0) {
    const auto first = On(board).Read(&IPCB_Board::GetState_SelectedObject, 0);
    if (IsShieldable(first)) On(working).Call(&Options::SetOptionsNet, NetOf(first).Get());
  }
  return working;
}

void TViaShieldingManager::Apply(IServerDocumentView* view) {
  const auto working = OptionsForSelection();
  const auto shielding = On(FBoard).Read(&IPCB_Board2::CreateViaShielding, working.Get());
  const auto board = On(working).Read(&Options::GetOptionsBoard);
  On(shielding).Call(&IPCB_ViaShieldingSU::SetState_OwnerBoard, board.Get());

  const auto dialogs = On(FBoard).Read(&IPCB_Board2::GetState_UIManager);
  if (!On(dialogs).Read(&IUIManager::ViaShieldingDialog, shielding.Get(), view)) return;

  const auto options = On(shielding).Read(&IPCB_ViaShieldingSU::GetShieldingOptions);
  const auto net = On(options).Read(&Options::GetOptionsNet);
  if (net && MayReplace(options, net)) Build(shielding);
}

// Takes the shielding that the net has off, if the user agrees.
bool TViaShieldingManager::MayReplace(const Ref<Options>& options, const Ref<IPCB_Net>& net) const {
  if (On(options).Read(&Options::GetNoReplaceCheck)) return true;
  const auto old = FindShielding(net);
  if (!old) return true;
  const std::u16string name = On(net).Read(&IPCB_Net::GetState_Name);
  if (!ConfirmNoYes(u"Net " + name + u" has shielding. Do you want replace?")) return false;
  const auto index = On(CheckedCast<IPCB_Primitive>(old)).Read(&IPCB_Primitive::GetState_UnionIndex);
  On(FBoard).Call(&IPCB_Board2::RemoveViaShieldingByIndex, index);
  return true;
}

void TViaShieldingManager::Build(const Ref<IPCB_ViaShieldingSU>& shielding) const {
  const auto options = On(shielding).Read(&IPCB_ViaShieldingSU::GetShieldingOptions);
  ReleaseReferenceVia(On(options).Read(&Options::GetEditOptions));
  On(FBoard).Read(&IPCB_Board2::BuildViaShielding, shielding.Get());
  if (!On(shielding).Read(&IPCB_ViaShieldingSU::GetShieldingDone)) return;
  On(FBoard).Read(&IPCB_Board2::AssignUnionIndex, shielding.Get());
  On(shielding).Call(&IPCB_ViaShieldingSU::RefreshObject);
  if (!On(shielding).Read(&IPCB_ViaShieldingSU::GetRegistered))
    On(FBoard).Call(&IPCB_Board2::RegisterShielding, shielding.Get());
  RefreshUnion(FBoard, shielding);
}

void TViaShieldingManager::GetPLState(IPCB_Board*, IParameterList*, LongBool&, LongBool&, LongBool&,
                                      char16_t*, char16_t*) {}

void ApplyViaShielding(IPCB_Board* board, IServerDocumentView* view, IParameterList* parameters) {
  TViaShieldingManager(board).Run(view, parameters);
}

}  // namespace Ketril::Tools
