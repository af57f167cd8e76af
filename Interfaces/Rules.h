// Design rules. A rule is an object of the board.
#pragma once

#include "Interfaces/Primitives.h"

namespace Ketril {

enum TRuleKind : std::uint8_t {
  eRule_Clearance,
  eRule_ParallelSegment,
  eRule_MaxMinWidth,
  eRule_MaxMinLength,
  eRule_MatchedLengths,
  eRule_DaisyChainStubLength,
  eRule_PowerPlaneConnectStyle,
  eRule_RoutingTopology,
  eRule_RoutingPriority,
  eRule_RoutingLayers,
  eRule_RoutingCornerStyle,
  eRule_RoutingViaStyle,
  eRule_PowerPlaneClearance,
  eRule_SolderMaskExpansion,
  eRule_PasteMaskExpansion,
  eRule_ShortCircuit,
  eRule_BrokenNets,
  eRule_ViasUnderSMD,
  eRule_MaximumViaCount,
  eRule_MinimumAnnularRing,
  eRule_PolygonConnectStyle,
  eRule_AcuteAngle,
  eRule_ConfinementConstraint,
  eRule_SMDToCorner,
  eRule_ComponentClearance,
  eRule_ComponentRotations,
  eRule_PermittedLayers,
  eRule_NetsToIgnore,
  eRule_SignalStimulus,
  eRule_Overshoot_FallingEdge,
  eRule_Overshoot_RisingEdge,
  eRule_Undershoot_FallingEdge,
  eRule_Undershoot_RisingEdge,
  eRule_MaxMinImpedance,
  eRule_SignalTopValue,
  eRule_SignalBaseValue,
  eRule_FlightTime_RisingEdge,
  eRule_FlightTime_FallingEdge,
  eRule_LayerStack,
  eRule_MaxSlope_RisingEdge,
  eRule_MaxSlope_FallingEdge,
  eRule_SupplyNets,
  eRule_MaxMinHoleSize,
  eRule_TestPointStyle,
  eRule_TestPointUsage,
  eRule_UnconnectedPin,
  eRule_SMDToPlane,
  eRule_SMDNeckDown,
  eRule_LayerPair,
  eRule_FanoutControl,
  eRule_MaxMinHeight,
  eRule_DifferentialPairsRouting,
  eRule_HoleToHoleClearance,
  eRule_MinimumSolderMaskSliver,
  eRule_SilkToSolderMaskClearance,
  eRule_SilkToSilkClearance,
  eRule_NetAntennae,
  eRule_AssyTestPointStyle,
  eRule_AssyTestPointUsage,
  eRule_SilkToBoardRegion,
  eRule_SMDPADEntry,
  eRule_None,
  eRule_ModifiedPolygon,
  eRule_BoardOutlineClearance,
  eRule_BackDrilling,
  eRule_Creepage,
  eRule_ReturnPath,
};
static_assert(eRule_ReturnPath == 66);

class IPCB_Rule : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Rule"};
  KETRIL_READ(TRuleKind, RuleKind);
  KETRIL_PROPERTY(std::u16string, Name);
  KETRIL_PROPERTY(std::u16string, Comment);
  KETRIL_PROPERTY(bool, DRCEnabled);
};

class IPCB_Rule2 : public IPCB_Rule {
 public:
  using Base = IPCB_Rule;
  static constexpr InterfaceId Id{"IPCB_Rule2"};
  KETRIL_PROPERTY(std::u16string, Scope1Expression);
  KETRIL_PROPERTY(std::u16string, Scope2Expression);
};

// A host that has these kinds offers them by these identifiers; the library picks its wrapper class by them.
class IPCB_ClearanceConstraint : public IPCB_Rule2 {
 public:
  using Base = IPCB_Rule2;
  static constexpr InterfaceId Id{"IPCB_ClearanceConstraint"};
};
class IPCB_ComponentClearanceConstraint : public IPCB_Rule2 {
 public:
  using Base = IPCB_Rule2;
  static constexpr InterfaceId Id{"IPCB_ComponentClearanceConstraint"};
};
class IPCB_ConfinementConstraint : public IPCB_Rule2 {
 public:
  using Base = IPCB_Rule2;
  static constexpr InterfaceId Id{"IPCB_ConfinementConstraint"};
};
class IPCB_FanoutControlRule : public IPCB_Rule2 {
 public:
  using Base = IPCB_Rule2;
  static constexpr InterfaceId Id{"IPCB_FanoutControlRule"};
};
class IPCB_RoutingViaStyleRule : public IPCB_Rule2 {
 public:
  using Base = IPCB_Rule2;
  static constexpr InterfaceId Id{"IPCB_RoutingViaStyleRule"};
};

// A list of rules in the host's order. An entry may be anything; the reader probes for `IPCB_Rule`.
class IPCB_RuleList : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_RuleList"};
  KETRIL_READ(std::int32_t, Count);
  virtual Status GetState_At(std::int32_t index, Ref<IPCB_Primitive>& rule) noexcept = 0;
};

}  // namespace Ketril
