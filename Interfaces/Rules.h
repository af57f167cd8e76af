// Design rules. A rule is an object of the board.
#pragma once

#include <initializer_list>

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

// A set of `TRuleKind`.
class TRuleKindSet {
 public:
  constexpr TRuleKindSet() = default;
  constexpr TRuleKindSet(std::initializer_list<TRuleKind> kinds) {
    for (const TRuleKind kind : kinds) bits_[kind / 64] |= std::uint64_t{1} << kind % 64;
  }
  constexpr bool Contains(TRuleKind kind) const { return (bits_[kind / 64] >> kind % 64 & 1) != 0; }
  friend constexpr bool operator==(TRuleKindSet, TRuleKindSet) = default;

 private:
  std::uint64_t bits_[2] = {};
};

enum TNetScope : std::uint8_t {
  eNetScope_DifferentNetsOnly,
  eNetScope_SameNetOnly,
  eNetScope_AnyNet,
  eNetScope_DifferentDiffPairsOnly,
  eNetScope_SameDiffPairOnly,
};
enum TRuleLayerKind : std::uint8_t { eRuleLayerKind_SameLayer, eRuleLayerKind_AdjacentLayer };
enum TConfinementStyle : std::uint8_t { eConfineIn, eConfineOut };
enum TClearanceConstraintMode : std::uint8_t {
  eClearanceConstraintMode_SingleClearance,
  eClearanceConstraintMode_ObjectsClearance,  // a gap for each pair of TObjectClearanceId
};

// What a clearance is asked for.
enum TObjectClearanceId : std::uint8_t {
  eObjectClearanceID_Arc,
  eObjectClearanceID_Track,
  eObjectClearanceID_SMDPad,
  eObjectClearanceID_THPad,
  eObjectClearanceID_Via,
  eObjectClearanceID_Fill,
  eObjectClearanceID_Poly,
  eObjectClearanceID_Region,
  eObjectClearanceID_Text,
  eObjectClearanceID_Hole,
  eObjectClearanceID_OutlineEdge,
  eObjectClearanceID_CavityEdge,
  eObjectClearanceID_CutoutEdge,
  eObjectClearanceID_SplitBarrier,
  eObjectClearanceID_SplitContinuation,
};
constexpr int kObjectClearanceIdCount = 15;

// What a scope of a rule may say. Tools take scopes as they are.
enum TScopeKind : std::uint8_t {
  eScopeKindBoard,
  eScopeKindLayerClass,
  eScopeKindLayer,
  eScopeKindObjectKind,
  eScopeKindFootprint,
  eScopeKindComponentClass,
  eScopeKindComponent,
  eScopeKindNetClass,
  eScopeKindNet,
  eScopeKindFromToClass,
  eScopeKindFromTo,
  eScopeKindPadClass,
  eScopeKindPadSpec,
  eScopeKindViaSpec,
  eScopeKindFootprintPad,
  eScopeKindPad,
  eScopeKindRegion,
  eScopeKindSignalClass,
  eScopeKindLayerStackRegion,
  eScopeKindDiffPair,
  eScopeKindDiffPairClass,
  eScopeKindPackage,
  eScopeKindDrillPair,
  eScopeKindInPolygon,
  eScopeKindPadType,
  eScopeKindWithinRoom,
  eScopeKindNetAndLayer,
  eScopeKindNetAndFootPrint,
  eScopeKindLayerAndDiffPairClass,
  eScopeKindPackageAndComponentClass,
  eScopeKindFootPrintAndLayer,
  eScopeKindNetAndPadType,
  eScopeKindPolygonAndLayer,
  eScopeKindPadClassAndLayer,
  eScopeKindObjectKindAndLayer,
  eScopeKindNetAndDrillPair,
  eScopeKindNetClassAndDrillPair,
  eScopeKindSignalClassAndLayer,
  eScopeKindComponentAndLayer,
  eScopeKindPackageAndLayer,
  eScopeKindAdvanced,
};
static_assert(eScopeKindAdvanced == 40);

// What a check found; each entry has an identity key of its own.
class IPCB_ViolationReport : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_ViolationReport"};
  KETRIL_READ(std::int32_t, Count);
  virtual Status GetState_Key(std::int32_t index, std::uintptr_t& key) noexcept = 0;
  virtual Status GetState_Descriptor(std::int32_t index, std::u16string& text) noexcept = 0;
  virtual Status Clear() noexcept = 0;
};

class IPCB_Rule : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Rule"};
  KETRIL_READ(TRuleKind, RuleKind);
  KETRIL_PROPERTY(std::u16string, Name);
  KETRIL_PROPERTY(std::u16string, Comment);
  KETRIL_PROPERTY(bool, DRCEnabled);
};

// Scopes are expressions of the host, which says what they hold. Objects may be empty.
class IPCB_Rule2 : public IPCB_Rule {
 public:
  using Base = IPCB_Rule;
  static constexpr InterfaceId Id{"IPCB_Rule2"};
  KETRIL_PROPERTY(std::u16string, Scope1Expression);
  KETRIL_PROPERTY(std::u16string, Scope2Expression);
  KETRIL_PROPERTY(TNetScope, NetScope);
  KETRIL_PROPERTY(TRuleLayerKind, LayerKind);
  KETRIL_PROPERTY(bool, DefinedByLogicalDocument);
  KETRIL_READ(std::uint16_t, Priority);  // 1 is the first of its kind
  KETRIL_READ(TUnit, DisplayUnit);
  KETRIL_READ(std::u16string, DataSummaryString);
  virtual Status Scope1Includes(IPCB_Primitive* primitive, bool& includes) noexcept = 0;
  virtual Status Scope2Includes(IPCB_Primitive* primitive, bool& includes) noexcept = 0;
  virtual Status SubscopeMatches(IPCB_Primitive* p1, IPCB_Primitive* p2, bool& matches) noexcept = 0;
  virtual Status GetState_AttributesDescriptorString(IPCB_Primitive* p1, IPCB_Primitive* p2,
                                                     std::u16string& text) noexcept = 0;
  // The violations of the rule by the pair; empty when there is none.
  virtual Status ActualCheck(IPCB_Primitive* p1, IPCB_Primitive* p2,
                             Ref<IPCB_ViolationReport>& violations) noexcept = 0;
};

// A host that has these kinds offers them by these identifiers; the library picks its wrapper class by them.
class IPCB_ClearanceConstraint : public IPCB_Rule2 {
 public:
  using Base = IPCB_Rule2;
  static constexpr InterfaceId Id{"IPCB_ClearanceConstraint"};
  KETRIL_PROPERTY(TCoord, Gap);
};
class IPCB_ClearanceConstraint2 : public IPCB_ClearanceConstraint {
 public:
  using Base = IPCB_ClearanceConstraint;
  static constexpr InterfaceId Id{"IPCB_ClearanceConstraint2"};
  KETRIL_READ(TClearanceConstraintMode, Mode);
  virtual Status GetState_Clearance(TObjectClearanceId a, TObjectClearanceId b, TCoord& gap) noexcept = 0;
  virtual Status SetState_Clearance(TObjectClearanceId a, TObjectClearanceId b, TCoord gap) noexcept = 0;
  virtual Status GetState_ObjectClearance(IPCB_Primitive* a, IPCB_Primitive* b, TCoord& gap) noexcept = 0;
  virtual Status SetState_ObjectClearance(IPCB_Primitive* a, IPCB_Primitive* b, TCoord gap) noexcept = 0;
  KETRIL_READ(TCoord, MaxGap);
  KETRIL_READ(TCoord, MinGap);
  virtual Status GetState_ObjectMaxGap(IPCB_Primitive* primitive, TCoord& gap) noexcept = 0;
  virtual Status GetState_ObjectMinGap(IPCB_Primitive* primitive, TCoord& gap) noexcept = 0;
};
class IPCB_ComponentClearanceConstraint : public IPCB_Rule2 {
 public:
  using Base = IPCB_Rule2;
  static constexpr InterfaceId Id{"IPCB_ComponentClearanceConstraint"};
  KETRIL_PROPERTY(TCoord, HorizontalGap);
  KETRIL_PROPERTY(TCoord, VerticalGap);
  KETRIL_PROPERTY(bool, ShowDistances);
  KETRIL_PROPERTY(bool, DoNotCheckWithout3DBody);
  KETRIL_PROPERTY(bool, CheckComponentBoundary);
};
class IPCB_ConfinementConstraint : public IPCB_Rule2 {
 public:
  using Base = IPCB_Rule2;
  static constexpr InterfaceId Id{"IPCB_ConfinementConstraint"};
};
// A room. Its region is its shape, which it offers as IPCB_RegionShape3.
class IPCB_ConfinementConstraint2 : public IPCB_ConfinementConstraint {
 public:
  using Base = IPCB_ConfinementConstraint;
  static constexpr InterfaceId Id{"IPCB_ConfinementConstraint2"};
  KETRIL_READ(TConfinementStyle, Kind);
  KETRIL_READ(bool, IncludeInFormatCopy);
  KETRIL_PROPERTY(bool, LockComponents);
  KETRIL_READ(TV6_Layer, RegionLayer);  // in the older numbering
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
