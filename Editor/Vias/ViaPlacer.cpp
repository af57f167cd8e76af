#include "Editor/Vias/ViaPlacer.h"

#include <algorithm>
#include <cmath>

#include "Editor/Copper/Distance.h"
#include "Editor/Model/Polygon.h"

namespace Ketril::Editor {

namespace {

double Apart(TCoordPoint a, TCoordPoint b) {
  return std::hypot(double(a.x) - b.x, double(a.y) - b.y);
}

TCoordRect BoxAround(TCoordPoint place, TCoord reach) {
  return {ToCoord(std::int64_t{place.x} - reach), ToCoord(std::int64_t{place.y} - reach),
          ToCoord(std::int64_t{place.x} + reach), ToCoord(std::int64_t{place.y} + reach)};
}

// Half the diagonal of a slot counts as its radius.
double HoleRadius(const Primitive& object) {
  if (const Via* via = As<Via>(&object)) return via->data.hole / 2.0;
  const TCoordPoint box = As<Pad>(&object)->HoleBox();
  return std::max(box.x, box.y) / 2.0;
}

bool IsPoured(const Primitive& object) {
  return object.kind == eRegionObject && object.Owner() && object.Owner()->kind == ePolyObject;
}

}  // namespace

const char* DescribeRefusal(ViaRefusal refusal) {
  switch (refusal) {
    case ViaRefusal::None:
      return "placed";
    case ViaRefusal::Outside:
      return "off the board or too near to its edge";
    case ViaRefusal::NoCopper:
      return "not covered by copper of the net on the layers";
    case ViaRefusal::OnPad:
      return "on a pad of the net";
    case ViaRefusal::Drilled:
      return "on another via, or the hole too near to another";
    case ViaRefusal::Clearance:
      return "too near to copper of another net";
    case ViaRefusal::Poured:
      return "in or too near to an area poured for another net";
    case ViaRefusal::KeepOut:
      return "in a keep-out";
  }
  return "";
}

ViaPlacer::ViaPlacer(Board& board, const ViaSettings& settings, ViaRun& run)
    : board_(board),
      settings_(settings),
      run_(run),
      checker_(board),
      trial_(static_cast<Via*>(settings.reference->Copy().Get())) {
  board_.TryOn(*trial_.Get());
  const ViaData& via = trial_->data;
  apart_ = std::max<TCoord>(via.size, ToCoord(std::int64_t{via.hole} + board.setup.hole_clearance));
  apart_ = std::max<TCoord>(apart_, 1);
  reach_ = ToCoord(std::int64_t{via.size} / 2 + std::max(settings.clearance, board.setup.hole_clearance));
  if (const Ref<BoardOutline> outline = board.Outline(); outline && !outline->data.rings.empty()) {
    Area area = AreaOfRings(outline->data.rings);
    board_area_ = ShapeOf({area});
    area.filled = false;
    board_edge_ = ShapeOf({area});
  }
}

ViaPlacer::~ViaPlacer() {
  board_.StopTrying(*trial_.Get());
}

bool ViaPlacer::IsOutside(TCoordPoint place) const {
  if (board_area_.parts.empty()) return false;
  const double radius = trial_->data.size / 2.0 + settings_.edge;
  const CopperShape spot = ShapeOf({Hull{{Disc{double(place.x), double(place.y), 0}}}});
  return Gap(board_area_, spot, 1) > 0 || Gap(board_edge_, spot, radius) < radius;
}

std::int64_t ViaPlacer::CellOf(std::int64_t x, std::int64_t y) const {
  return x * (std::int64_t{1} << 32) + y;
}

bool ViaPlacer::IsTaken(TCoordPoint place) const {
  const std::int64_t x = place.x / apart_, y = place.y / apart_;
  for (std::int64_t i = x - 1; i <= x + 1; ++i) {
    for (std::int64_t j = y - 1; j <= y + 1; ++j) {
      const auto cell = taken_.find(CellOf(i, j));
      if (cell == taken_.end()) continue;
      for (const TCoordPoint other : cell->second) {
        if (Apart(place, other) < apart_) return true;
      }
    }
  }
  return false;
}

// Objects of the same net, and holes of any. What the rules ask comes after.
ViaRefusal ViaPlacer::CheckNeighbours() {
  const TCoordPoint place = trial_->data.center;
  for (Primitive* other : board_.index.Find(BoxAround(place, reach_))) {
    const bool is_drill = other->kind == eViaObject || other->kind == ePadObject;
    const bool is_own = other->GetNet() == trial_->GetNet();
    if (is_drill && HoleRadius(*other) > 0) {
      const double least = HoleRadius(*other) + trial_->data.hole / 2.0 + board_.setup.hole_clearance;
      if (Apart(place, other->Reference()) < least) return ViaRefusal::Drilled;
    }
    if (is_drill && is_own && Touch(*trial_.Get(), *other))
      return other->kind == eViaObject ? ViaRefusal::Drilled : ViaRefusal::OnPad;
    if (is_own || settings_.clearance <= 0 || other->Has(kFlag_KeepOut)) continue;
    if (kCopperKinds.Contains(other->kind) && checker_.CheckPair(*trial_.Get(), *other, settings_.clearance))
      return ViaRefusal::Clearance;
  }
  return ViaRefusal::None;
}

ViaRefusal ViaPlacer::Check(TCoordPoint place) {
  if (IsOutside(place)) return ViaRefusal::Outside;
  if (IsTaken(place)) return ViaRefusal::Drilled;
  trial_->data.center = place;
  if (const ViaRefusal refusal = CheckNeighbours(); refusal != ViaRefusal::None) return refusal;
  const std::vector<Violation> violations = checker_.CheckObject(*trial_.Get());
  if (violations.empty()) return ViaRefusal::None;
  const bool is_forbidden = std::ranges::all_of(
      violations, [](const Violation& violation) { return violation.kind == ViolationKind::KeepOut; });
  if (is_forbidden) return ViaRefusal::KeepOut;
  const bool is_poured =
      std::ranges::all_of(violations, [](const Violation& violation) { return IsPoured(*violation.second); });
  return is_poured ? ViaRefusal::Poured : ViaRefusal::Clearance;
}

bool ViaPlacer::Try(TCoordPoint place, ViaRefusal refusal) {
  ++run_.tried;
  if (refusal == ViaRefusal::None) refusal = Check(place);
  if (refusal != ViaRefusal::None) {
    ++run_.refused[static_cast<std::size_t>(refusal)];
    return false;
  }
  places_.push_back(place);
  taken_[CellOf(place.x / apart_, place.y / apart_)].push_back(place);
  return true;
}

std::vector<Ref<Primitive>> ViaPlacer::Build() {
  std::vector<Ref<Primitive>> vias;
  for (const TCoordPoint place : places_) {
    const Ref<Primitive> copy = settings_.reference->Copy();
    auto* const via = static_cast<Via*>(copy.Get());
    via->data.center = place;
    via->Set(kFlag_Selected, false);
    board_.Add(via);
    vias.push_back(copy);
  }
  run_.placed = vias.size();
  return vias;
}

}  // namespace Ketril::Editor
