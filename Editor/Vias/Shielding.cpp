#include "Editor/Vias/Shielding.h"

#include <algorithm>
#include <cmath>

#include "Editor/Copper/Clipping.h"
#include "Editor/Copper/Outline.h"

namespace Ketril::Editor {

namespace {

// How far chords may be off the arcs of a row: 0.1 mil.
constexpr double kError = 1000;
// Where a via has no room, others are tried in steps of this part of the pitch.
constexpr int kSteps = 16;

std::vector<Primitive*> Shielded(const Board& board, const ShieldSettings& settings) {
  std::vector<Primitive*> objects;
  for (const Ref<Primitive>& object : settings.primitives) {
    if (object->board == &board && object->on_board) objects.push_back(object.Get());
  }
  if (!settings.primitives.empty() || !settings.net) return objects;
  settings.net->ForEach([&](Primitive& object) {
    if (object.kind == eTrackObject || object.kind == eArcObject) objects.push_back(&object);
  });
  return objects;
}

void AddForms(const Primitive& object, TV7_Layer layer, std::vector<Form>& forms) {
  for (Form& form : FormsOf(object, layer)) forms.push_back(std::move(form));
}

// A closed row, measured along its sides.
class Row {
 public:
  explicit Row(const std::vector<TCoordPoint>& points) : points_(points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      const TCoordPoint a = points[i], b = points[(i + 1) % points.size()];
      ends_.push_back(Length() + std::hypot(double(b.x) - a.x, double(b.y) - a.y));
    }
  }
  double Length() const { return ends_.empty() ? 0 : ends_.back(); }
  TCoordPoint At(double along) const {
    const auto side = std::ranges::lower_bound(ends_, std::clamp(along, 0.0, Length()));
    const auto i = static_cast<std::size_t>(side - ends_.begin());
    const double start = i == 0 ? 0 : ends_[i - 1], length = ends_[i] - start;
    const TCoordPoint a = points_[i], b = points_[(i + 1) % points_.size()];
    const double part = length > 0 ? (along - start) / length : 0;
    return {ToCoord(a.x + (double(b.x) - a.x) * part), ToCoord(a.y + (double(b.y) - a.y) * part)};
  }

 private:
  const std::vector<TCoordPoint>& points_;
  std::vector<double> ends_;  // of the sides, from the begin of the row
};

// Gives the largest gap between neighbours; the row's length when none has room.
double FillRow(const Row& row, double pitch, double least, ViaPlacer& placer) {
  const double length = row.Length();
  const double count = std::max(1.0, std::ceil(length / pitch));
  const double even = length / count, step = even / kSteps;
  std::vector<double> placed;
  const auto place = [&](double along) {
    if (!placer.Try(row.At(along))) return false;
    placed.push_back(along);
    return true;
  };
  double wanted = 0, searched = 0;  // up to there no other place has room
  while (wanted < length - step / 2) {
    if (place(wanted)) {
      wanted += even;
      continue;
    }
    const double nearest = std::max(placed.empty() ? 0 : placed.back() + least, searched);
    double back = wanted - step;
    while (back > nearest && !placer.Fits(row.At(back))) back -= step;
    if (back > nearest) {
      place(back);
      wanted = back + even;
      continue;
    }
    // On to the first place with room; each pitch on the way counts as one that was tried.
    const double next = wanted + even;
    double on = wanted + step;
    while (on < std::min(next - step / 2, length) && !placer.Fits(row.At(on))) on += step;
    searched = wanted = on;
  }
  if (placed.empty()) return length;
  double largest = placed.front() + length - placed.back();
  for (std::size_t i = 1; i < placed.size(); ++i) largest = std::max(largest, placed[i] - placed[i - 1]);
  return largest;
}

// From the shielded copper to the centre line of a row, counted from 0.
double RowReach(const ShieldSettings& settings, int row) {
  return settings.distance + settings.reference->data.size / 2.0 + double(row) * settings.pitch;
}

// The pieces that hold one of the places, with their holes.
std::vector<Ring> WithVias(const std::vector<Ring>& rings, const std::vector<TCoordPoint>& places) {
  const auto holds = [](const Ring& ring, TCoordPoint place) {
    return IsInside(ring.points, place.x, place.y);
  };
  std::vector<Ring> kept;
  for (const Ring& ring : rings) {
    if (!ring.hole && std::ranges::any_of(places, [&](TCoordPoint place) { return holds(ring, place); }))
      kept.push_back(ring);
  }
  const std::size_t pieces = kept.size();
  for (const Ring& hole : rings) {
    const auto end = kept.begin() + static_cast<std::ptrdiff_t>(pieces);
    if (hole.hole &&
        std::any_of(kept.begin(), end, [&](const Ring& ring) { return holds(ring, hole.points.front()); }))
      kept.push_back(hole);
  }
  return kept;
}

}  // namespace

void FenceWithVias(Board& board, const ShieldSettings& settings, ViaPlacer& placer, ViaRun& run) {
  const std::vector<Primitive*> objects = Shielded(board, settings);
  if (objects.empty()) {
    run.note = u"there is nothing to shield: no object is selected and the net has no track";
    return;
  }
  if (!settings.reference->GetNet()) {
    run.note = u"no net was given that shields";
    return;
  }
  const ViaData& via = settings.reference->data;
  std::vector<Form> forms;
  for (const Primitive* object : objects) {
    for (const TV7_Layer layer : SpannedLayers(&board, via.low, via.high)) AddForms(*object, layer, forms);
  }
  const double least = std::max<double>(via.size, double(via.hole) + board.setup.hole_clearance);
  const double pitch = std::max<double>(settings.pitch, least);
  for (int row = 0; row < std::clamp(settings.rows, 1, 3); ++row) {
    for (const Ring& ring : Outline(forms, RowReach(settings, row), kError)) {
      const double gap = FillRow(Row(ring.points), pitch, least, placer);
      if (row == 0) run.largest_gap = std::max(run.largest_gap, gap);
    }
  }
}

std::vector<Ref<Primitive>> ShieldingCopper(Board& board, const ShieldSettings& settings,
                                            const std::vector<TCoordPoint>& vias) {
  const std::vector<Primitive*> objects = Shielded(board, settings);
  const Via& via = *settings.reference.Get();
  const double outer = RowReach(settings, std::clamp(settings.rows, 1, 3) - 1) + via.data.size / 2.0;
  ClearanceChecker checker(board);
  std::vector<Ref<Primitive>> copper;
  for (const TV7_Layer layer : SpannedLayers(&board, via.data.low, via.data.high)) {
    std::vector<Form> forms;
    for (const Primitive* object : objects) AddForms(*object, layer, forms);
    if (forms.empty()) continue;
    const Ref<Region> region = MakeHost<Region>();
    region->state.layer = layer;
    region->SetNet(via.GetNet());
    region->data.rings = Outline(forms, outer, kError);
    // What is there already keeps the gap that it asks from a region of the net.
    std::vector<Ring> less = Outline(forms, settings.distance, kError);
    for (Primitive* other : board.index.Find(region->Bounds())) {
      if (!kCopperKinds.Contains(other->kind) || other->GetNet() == via.GetNet() || other->Has(kFlag_KeepOut))
        continue;
      const TCoord gap = std::max(
          {checker.Clearance(*region.Get(), *other), settings.clearance, board.setup.hole_clearance});
      for (Ring& ring : Outline(FormsOf(*other, layer), gap + kError, kError))
        less.push_back(std::move(ring));
    }
    // Slivers are nobody's copper: what is narrower than half a via goes.
    const double narrow = via.data.size / 4.0;
    region->data.rings = Difference(region->data.rings, less);
    region->data.rings = WithVias(Offset(Offset(region->data.rings, -narrow, kError), narrow, kError), vias);
    if (!region->data.rings.empty()) copper.emplace_back(region.Get());
  }
  return copper;
}

}  // namespace Ketril::Editor
