#include "DLLs/Tools/Vias/ViaStitchingManager.h"

#include "DLLs/Tools/Vias/ViaUnions.h"

namespace Ketril::Tools {

TViaStitchingManager::TViaStitchingManager(IPCB_Board* ABoard) : FBoard(BoardForVias(ABoard)) {}

void TViaStitchingManager::Run(IServerDocumentView* AView, IParameterList* AParameters) {
  if (ModeIs(AParameters, u"Outline")) return;
  if (ModeIs(AParameters, u"Remove")) {
    On(FBoard).Call(&IPCB_Board2::RemoveViaStitching);
  } else {
    Flood(AView);
  }
}

void TViaStitchingManager::Flood(IServerDocumentView* view) {
  using Options = IPCB_ViaStitchFloodOptions;
  Ref<Options> working =
      On(On(FBoard).Read(&IPCB_Board2::GetViaStitchOptions)).Read(&Options::GetEditOptions);
  On(working).Call(&Options::BeginOptionsEdit);
  const auto stitching = On(FBoard).Read(&IPCB_Board2::CreateViaStitching, working.Get());
  On(stitching).Call(&IPCB_SmartUnionObject::SetState_OwnerBoard, FBoard.Get());

  const auto dialogs = On(FBoard).Read(&IPCB_Board2::GetState_UIManager);
  if (!On(dialogs).Read(&IUIManager::ViaStitchingDialog, stitching.Get(), view)) return;

  const auto flood_options = [&] { return On(stitching).Read(&IPCB_SmartUnionObject::GetFloodOptions); };
  working = On(flood_options()).Read(&Options::GetEditOptions);
  ReleaseReferenceVia(working);
  if (!On(FBoard).Read(&IPCB_Board2::BuildViaStitching, stitching.Get())) return;
  On(FBoard).Read(&IPCB_Board2::AssignUnionIndex, stitching.Get());

  // The reference via has the index by now, and the object takes it over.
  const auto via = On(flood_options()).Read(&Options::GetReferenceVia);
  const std::int32_t index = On(via).Read(&IPCB_Primitive::GetState_UnionIndex);
  On(CheckedCast<IPCB_Primitive>(stitching)).Call(&IPCB_Primitive::SetState_UnionIndex, index);
  On(stitching).Call(&IPCB_SmartUnionObject::RefreshObject);

  if (!On(stitching).Read(&IPCB_SmartUnionObject::GetRegistered)) {
    const auto board = On(working).Read(&Options::GetOptionsBoard);
    On(CheckedCast<IPCB_Board2>(board)).Call(&IPCB_Board2::RegisterPrimitive, stitching.Get());
  }
  RefreshUnion(FBoard, stitching);
}

void TViaStitchingManager::GetPLState(IPCB_Board*, IParameterList*, LongBool&, LongBool&, LongBool&,
                                      char16_t*, char16_t*) {}

void ApplyViaStitching(IPCB_Board* board, IServerDocumentView* view, IParameterList* parameters) {
  TViaStitchingManager(board).Run(view, parameters);
}

}  // namespace Ketril::Tools
