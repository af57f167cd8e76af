#include "Editor/Vias/Stitching.h"

#include <algorithm>
#include <cmath>

#include "Editor/Copper/Distance.h"
#include "Editor/Copper/Outline.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

// More places than this are no flood that anybody wants.
constexpr double kMostPlaces = 2e7;
// An island is looked through no finer than this.
constexpr int kIslandSteps = 64;

// A piece of copper as what it covers and where it ends.
struct Cover {
  const Primitive* object = nullptr;
  TV7_Layer layer = eV6_NoLayer;
  CopperShape inside, border;
  double pen = 0;  // by which copper reaches beyond the border
  bool has_via = false;
};

Cover CoverOf(const Primitive& object, TV7_Layer layer) {
  Cover cover{&object, layer, {}, {}, 0, false};
  for (const Form& form : FormsOf(object, layer)) {
    Area area;
    if (const Area* given = std::get_if<Area>(&form)) area = *given;
    if (const Hull* hull = std::get_if<Hull>(&form)) area.outer = {HullRing(*hull, 0, 500)};
    if (area.outer.empty() || !area.filled) continue;
    cover.pen = area.pen;
    area.pen = 0;
    cover.inside.parts.emplace_back(area);
    area.filled = false;
    cover.border.parts.emplace_back(area);
  }
  return cover;
}

class Flood {
 public:
  Flood(Board& board, const StitchSettings& settings, ViaPlacer& placer, ViaRun& run);
  void Run();

 private:
  void FindCopper();
  TCoordRect SearchBox() const;
  bool IsCovered(TCoordPoint place);
  void TryAt(TCoordPoint place);
  void MarkConnected();
  void ConnectIsland(Cover& island);
  double Step(bool along_x) const { return std::max(along_x ? settings_.grid_x : settings_.grid_y, 1); }

  Board& board_;
  const StitchSettings& settings_;
  ViaPlacer& placer_;
  ViaRun& run_;
  const Via& via_;
  std::vector<Cover> covers_;
  std::unordered_map<const Primitive*, std::size_t> cover_of_;
  std::vector<Cover*> under_;  // of the place that was asked for last
};

Flood::Flood(Board& board, const StitchSettings& settings, ViaPlacer& placer, ViaRun& run)
    : board_(board), settings_(settings), placer_(placer), run_(run), via_(*settings.reference.Get()) {}

void Flood::FindCopper() {
  const std::vector<TV7_Layer> span = SpannedLayers(&board_, via_.data.low, via_.data.high);
  board_.objects.ForEach({eRegionObject, eFillObject}, [&](const Primitive& object) {
    if (object.GetNet() != via_.GetNet() || object.Has(kFlag_KeepOut)) return;
    const TV7_Layer layer = object.state.layer;
    if (!Contains(span, layer) || (!settings_.layers.empty() && !Contains(settings_.layers, layer))) return;
    Cover cover = CoverOf(object, layer);
    if (cover.inside.parts.empty()) return;
    cover_of_.emplace(&object, covers_.size());
    covers_.push_back(std::move(cover));
  });
}

TCoordRect Flood::SearchBox() const {
  TCoordRect box = Ordered(covers_.front().object->Bounds());
  for (const Cover& cover : covers_) {
    const TCoordRect other = Ordered(cover.object->Bounds());
    box = {std::min(box.x1, other.x1), std::min(box.y1, other.y1), std::max(box.x2, other.x2),
           std::max(box.y2, other.y2)};
  }
  if (!settings_.area) return box;
  const TCoordRect area = Ordered(*settings_.area);
  return {std::max(box.x1, area.x1), std::max(box.y1, area.y1), std::min(box.x2, area.x2),
          std::min(box.y2, area.y2)};
}

// By a piece on each of the layers asked for; by pieces on two layers where none are.
bool Flood::IsCovered(TCoordPoint place) {
  under_.clear();
  std::vector<TV7_Layer> layers;
  const CopperShape spot = ShapeOf({Hull{{Disc{double(place.x), double(place.y), 0}}}});
  for (const Primitive* object : board_.index.Find({place.x, place.y, place.x, place.y})) {
    const auto found = cover_of_.find(object);
    if (found == cover_of_.end()) continue;
    Cover& cover = covers_[found->second];
    const double radius = via_.SizeOn(cover.layer) / 2.0 - cover.pen;
    if (Gap(cover.inside, spot, 1) > 0) continue;
    if (radius > 0 && Gap(cover.border, spot, radius) < radius) continue;
    under_.push_back(&cover);
    if (!Contains(layers, cover.layer)) layers.push_back(cover.layer);
  }
  return layers.size() >= (settings_.layers.empty() ? 2 : settings_.layers.size());
}

void Flood::TryAt(TCoordPoint place) {
  const bool is_covered = IsCovered(place);
  if (!placer_.Try(place, is_covered ? ViaRefusal::None : ViaRefusal::NoCopper)) return;
  for (Cover* cover : under_) cover->has_via = true;
}

// Pieces that a via or plated pad of the net goes through already.
void Flood::MarkConnected() {
  if (!via_.GetNet()) return;
  via_.GetNet()->ForEach([&](Primitive& object) {
    const Pad* const pad = As<Pad>(&object);
    const bool is_through = object.kind == eViaObject || (pad && pad->data.plated && pad->data.hole > 0);
    if (!is_through) return;
    for (const Primitive* other : board_.index.Find(object.Bounds())) {
      const auto found = cover_of_.find(other);
      if (found != cover_of_.end() && Touch(object, *other)) covers_[found->second].has_via = true;
    }
  });
}

void Flood::ConnectIsland(Cover& island) {
  const TCoordRect box = Ordered(island.object->Bounds());
  const double width = double(box.x2) - box.x1, height = double(box.y2) - box.y1;
  const auto connects_at = [&](double x, double y) {
    const TCoordPoint place{ToCoord(x), ToCoord(y)};
    if (settings_.area && !Meet(Ordered(*settings_.area), {place.x, place.y, place.x, place.y})) return false;
    if (!IsCovered(place) || std::ranges::find(under_, &island) == under_.end()) return false;
    TryAt(place);
    return island.has_via;
  };
  if (connects_at(box.x1 + width / 2, box.y1 + height / 2)) return;
  const double dx = std::max(Step(true) / 4, width / kIslandSteps);
  const double dy = std::max(Step(false) / 4, height / kIslandSteps);
  for (double y = box.y1 + std::min(dy, height) / 2; y <= box.y2; y += dy) {
    for (double x = box.x1 + std::min(dx, width) / 2; x <= box.x2; x += dx) {
      if (connects_at(x, y)) return;
    }
  }
}

void Flood::Run() {
  FindCopper();
  const auto layers = [&] {
    std::vector<TV7_Layer> found;
    for (const Cover& cover : covers_) Include(found, cover.layer, true);
    return found;
  }();
  if (!via_.GetNet()) {
    run_.note = u"no net was given";
    return;
  }
  if (layers.size() < 2) {
    run_.note = u"net " + via_.GetNet()->data.name + u" has copper areas on " +
                (layers.empty() ? u"no layer" : LayerName(layers.front(), &board_) + u" only") +
                u", so that there is nothing to stitch";
    return;
  }
  const TCoordRect box = SearchBox();
  const double dx = Step(true), dy = Step(false);
  const double places = (double(box.x2) - box.x1) / dx * ((double(box.y2) - box.y1) / dy);
  if (places > kMostPlaces) {
    run_.note = u"the grid is too fine for an area of that size";
    return;
  }
  const double x0 = double(board_.setup.origin.x) + settings_.offset.x;
  const double y0 = double(board_.setup.origin.y) + settings_.offset.y;
  MarkConnected();
  const auto first_row = static_cast<std::int64_t>(std::ceil((box.y1 - y0) / dy));
  const auto last_row = static_cast<std::int64_t>(std::floor((box.y2 - y0) / dy));
  ProgressState progress{true, u"Stitching...", false,
                         static_cast<std::int32_t>(std::max<std::int64_t>(last_row - first_row + 1, 0)), 0};
  for (std::int64_t row = first_row; row <= last_row; ++row) {
    const double shift = settings_.staggered && row % 2 != 0 ? dx / 2 : 0;
    const auto first = static_cast<std::int64_t>(std::ceil((box.x1 - x0 - shift) / dx));
    const double y = y0 + static_cast<double>(row) * dy;
    for (std::int64_t column = first;; ++column) {
      const double x = x0 + shift + static_cast<double>(column) * dx;
      if (x > box.x2) break;
      TryAt({ToCoord(x), ToCoord(y)});
    }
    ++progress.position;
    board_.progress->Show(progress);
  }
  board_.progress->Show({});
  for (Cover& cover : covers_) {
    if (!cover.has_via) ConnectIsland(cover);
  }
}

}  // namespace

void FloodWithVias(Board& board, const StitchSettings& settings, ViaPlacer& placer, ViaRun& run) {
  Flood(board, settings, placer, run).Run();
}

}  // namespace Ketril::Editor
