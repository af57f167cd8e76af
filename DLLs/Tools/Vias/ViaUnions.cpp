#include "DLLs/Tools/Vias/ViaUnions.h"

#include "DLLs/Tools/Frame/Exceptions.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

Ref<IPCB_Board2> BoardForVias(IPCB_Board* board) {
  auto board2 = Probe<IPCB_Board2>(board);
  if (!board2) throw Exception("IPCB_Board2 interface is not supported");
  return board2;
}

bool ModeIs(IParameterList* parameters, std::u16string_view word) {
  std::u16string mode;
  return parameters && parameters->GetParameter(u"Mode", mode) &&
         Platform::EqualsIgnoringAsciiCase(mode, word);
}

void RefreshUnion(const Ref<IPCB_Board2>& board, const Ref<IPCB_SmartUnionObject>& object) {
  On(board).Call(&IPCB_Board2::RefreshBoard);
  On(board).Call(&IPCB_Board2::RefreshBoardFor, object.Get());
  On(board).Call(&IPCB_Board2::InvalidatePrimitive, object.Get());
}

}  // namespace Ketril::Tools
