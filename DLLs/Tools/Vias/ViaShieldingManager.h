// Via shielding: a fence of vias around a net or around selected objects, which the editor keeps together as
// one object. The editor has the settings, their dialog, the fence and the removal; what is decided here is
// who gets shielded, and what becomes of a shielding that is there already.
#pragma once

#include "Interfaces/Board.h"
#include "Interfaces/ParameterList.h"

namespace Ketril::Tools {

// The shielding that a primitive, or a net, lies in: of several that list the primitive the last of its
// board, of several for the net the first. Empty when there is none, and for no primitive and no net. Raise
// EHostError.
Ref<IPCB_ViaShieldingSU> FindShielding(const Ref<IPCB_Primitive>& primitive);
Ref<IPCB_ViaShieldingSU> FindShielding(const Ref<IPCB_Net>& net);

class TViaShieldingManager {
 public:
  // Raises Exception when the board offers no IPCB_Board2.
  explicit TViaShieldingManager(IPCB_Board* ABoard);

  // By the parameter "Mode", in any case: "RemoveShielding" takes shieldings off, anything else shields the
  // selected arcs, pads, vias, tracks, fills, polygons and regions that lie in no shielding yet. A cancelled
  // dialog, no net in it, a No to the question and a fence without a via end quietly. A shielding that is
  // replaced goes before the new one is built. Raises EHostError when the host fails; what was done stays
  // done.
  void Run(IServerDocumentView* AView, IParameterList* AParameters);

  // Leaves the state of the command as it is.
  static void GetPLState(IPCB_Board* ABoard, IParameterList* AParameters, LongBool& AEnabled,
                         LongBool& AChecked, LongBool& AVisible, char16_t* ACaption, char16_t* AImage);

 private:
  void Apply(IServerDocumentView* view);
  Ref<IPCB_ViaShieldingOptions> OptionsForSelection() const;
  bool MayReplace(const Ref<IPCB_ViaShieldingOptions>& options, const Ref<IPCB_Net>& net) const;
  void Build(const Ref<IPCB_ViaShieldingSU>& shielding) const;

  Ref<IPCB_Board2> FBoard;
};

void ApplyViaShielding(IPCB_Board* board, IServerDocumentView* view, IParameterList* parameters);

}  // namespace Ketril::Tools
