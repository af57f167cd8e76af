// The check of clearances: which gap a pair of objects needs, and where it has less.
//
// Copper of one net may touch, and so may copper of no net; everything else keeps the gap that the first
// clearance rule asks whose scopes hold the pair, in the order of their priorities; without one, the greater
// of the two net classes' gaps, or the board's. It keeps the board's hole clearance from holes as well, and
// stays out of areas that forbid its kind: regions are forbidden where copper pours are, but for the pours
// themselves. Texts count as no copper; of a polygon its pour counts.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "Editor/Copper/CopperShape.h"
#include "Editor/Model/Board.h"
#include "Editor/Rules/Rule.h"

namespace Ketril::Editor {

enum class ViolationKind { Clearance, HoleClearance, KeepOut, ComponentClearance, Confinement };
struct Violation {
  Ref<Primitive> first, second;
  TV7_Layer layer;
  double gap = 0;    // found, in units
  TCoord asked = 0;  // by the rule
  ViolationKind kind = ViolationKind::Clearance;
};
// "Clearance 0.12mm of 0.2mm", in the unit that the board shows.
std::u16string DescribeGap(const Violation& violation);
// "Clearance 0.12mm of 0.2mm: Track (…) and Via (…)".
std::u16string DescribeViolation(const Violation& violation);

class ClearanceChecker {
 public:
  explicit ClearanceChecker(Board& board);
  bool IsFor(const BoardSetup& setup) const {
    return clearance_ == setup.clearance && hole_clearance_ == setup.hole_clearance;
  }

  TCoord Clearance(const Primitive& a, const Primitive& b);
  // The first layer on which the pair is nearer than `asked`, or the hole of one nearer to the other than the
  // board asks.
  std::optional<Violation> CheckPair(Primitive& a, Primitive& b, TCoord asked);
  // As Touch of two objects (Editor/Copper/Distance.h), which must not change meanwhile; sooner for regions.
  bool Touches(const Primitive& a, const Primitive& b);
  // All violations of one object against the board, which need not have it.
  std::vector<Violation> CheckObject(Primitive& object);
  // All violations of the board, each pair once, in the order of the objects; `progress` is told how many
  // objects are done.
  std::vector<Violation> CheckBoard(const std::function<void(std::size_t)>& progress = nullptr);

 private:
  static bool IsCopper(const Primitive& object);
  static bool MayTouch(const Primitive& a, const Primitive& b);
  TCoord NetClearance(const Net* net);
  // Of a region, which may be a pour of thousands of sides, the shape is kept; others are made in `scratch`.
  const CopperShape& ShapeOn(const Primitive& object, TV7_Layer layer, CopperShape& scratch);
  double GapOn(const Primitive& a, const Primitive& b, TV7_Layer layer, double limit);
  double GapToHole(const Primitive& drilled, const Primitive& other, TV7_Layer layer);
  // Against objects of other nets whose box comes as near as any clearance asks, and whose order is not below
  // `from`, and against the keep-outs.
  void Check(Primitive& object, std::uint64_t from, std::vector<Violation>& violations);
  void CheckKeepOuts(Primitive& object, const std::vector<Primitive*>& near,
                     std::vector<Violation>& violations);

  Board& board_;
  const TCoord clearance_, hole_clearance_;  // as the board asked when this was made
  std::vector<Rule*> rules_;                 // enabled ones of clearance, the first in priority first
  TCoord greatest_ = 0;                      // gap that anything asks
  std::unordered_map<const Net*, TCoord> net_clearances_;
  std::unordered_map<const Primitive*, CopperShape> shapes_;  // of regions on their layers, and of keep-outs
};

// What a check found, as the tools see it.
class ViolationList : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"Ketril::Editor::ViolationList"};
  void Add(Violation violation) { violations.push_back(std::make_unique<Violation>(std::move(violation))); }
  TRuleKindSet kinds;
  std::vector<std::unique_ptr<Violation>> violations;  // their addresses are the identity keys
};
class ViolationReport final : public HostObject<IPCB_ViolationReport, ViolationList> {
 public:
  explicit ViolationReport(TRuleKindSet wanted) { kinds = wanted; }
  KETRIL_HOST_READ(IPCB_ViolationReport, std::int32_t, Count, static_cast<std::int32_t>(violations.size()))
  KETRIL_HOST_METHOD(IPCB_ViolationReport, GetState_Key, (std::int32_t index, std::uintptr_t& key),
                     OnEntry(index, [&](const Violation& v) { key = reinterpret_cast<std::uintptr_t>(&v); }))
  KETRIL_HOST_METHOD(IPCB_ViolationReport, GetState_Descriptor, (std::int32_t index, std::u16string& text),
                     OnEntry(index, [&](const Violation& v) { text = DescribeViolation(v); }))
  KETRIL_HOST_METHOD(IPCB_ViolationReport, Clear, (), violations.clear())

 private:
  template <class Visit>
  Status OnEntry(std::int32_t index, Visit visit) const {
    if (index < 0 || static_cast<std::size_t>(index) >= violations.size()) return Status::InvalidArgument;
    visit(*violations[static_cast<std::size_t>(index)]);
    return Status::Ok;
  }
};

}  // namespace Ketril::Editor
