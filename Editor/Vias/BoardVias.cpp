// The board's methods for stitchings and shieldings.
#include "Editor/Model/Board.h"
#include "Editor/Vias/ViaUnions.h"

namespace Ketril::Editor {

#define KETRIL_BOARD_METHOD(Name, Arguments, Action)               \
  Status Board::Name Arguments noexcept {                          \
    return HostCall("IPCB_Board2." #Name, [&] { return Action; }); \
  }

KETRIL_BOARD_METHOD(GetViaStitchOptions, (Ref<IPCB_ViaStitchFloodOptions> & options),
                    void(options = Unions().StitchDefaults()))
KETRIL_BOARD_METHOD(CreateViaStitching,
                    (IPCB_ViaStitchFloodOptions * options, Ref<IPCB_SmartUnionObject>& stitching),
                    Unions().CreateStitching(options, stitching))
KETRIL_BOARD_METHOD(GetViaShieldingOptions, (Ref<IPCB_ViaShieldingOptions> & options),
                    void(options = Unions().ShieldDefaults()))
KETRIL_BOARD_METHOD(CreateViaShielding,
                    (IPCB_ViaShieldingOptions * options, Ref<IPCB_ViaShieldingSU>& shielding),
                    Unions().CreateShielding(options, shielding))
KETRIL_BOARD_METHOD(BuildViaStitching, (IPCB_SmartUnionObject * stitching, bool& built),
                    Unions().Build(stitching, built))
KETRIL_BOARD_METHOD(BuildViaShielding, (IPCB_ViaShieldingSU * shielding, bool& built),
                    Unions().Build(shielding, built))
KETRIL_BOARD_METHOD(AssignUnionIndex, (IPCB_SmartUnionObject * object, std::int32_t& index),
                    Unions().AssignIndex(object, index))
KETRIL_BOARD_METHOD(RegisterPrimitive, (IPCB_SmartUnionObject * object), Unions().Register(object))
KETRIL_BOARD_METHOD(RegisterShielding, (IPCB_ViaShieldingSU * shielding), Unions().Register(shielding))
KETRIL_BOARD_METHOD(RemoveViaStitching, (), Unions().Remove(eUnionKind_ViaStitching))
KETRIL_BOARD_METHOD(RemoveViaShielding, (), Unions().Remove(eUnionKind_ViaShielding))
KETRIL_BOARD_METHOD(RemoveViaShieldingByIndex, (std::int32_t index),
                    Unions().RemoveByIndex(eUnionKind_ViaShielding, index))
KETRIL_BOARD_METHOD(GetSmartUnionCount, (std::int32_t & value),
                    void(value = static_cast<std::int32_t>(Unions().List().size())))
KETRIL_BOARD_METHOD(GetSmartUnion, (std::int32_t index, Ref<IPCB_SmartUnionObject>& object),
                    void(object = Unions().At(index)))
KETRIL_BOARD_METHOD(RefreshBoardFor, (IPCB_SmartUnionObject * object), Unions().Redraw(object))
KETRIL_BOARD_METHOD(InvalidatePrimitive, (IPCB_SmartUnionObject * object), Unions().Redraw(object))
#undef KETRIL_BOARD_METHOD

}  // namespace Ketril::Editor
