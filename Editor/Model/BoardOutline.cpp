// Chains the lines of the board's edge to rings.
#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <unordered_map>

#include "Editor/Copper/Outline.h"
#include "Editor/Files/LayerNames.h"
#include "Editor/Model/Board.h"

namespace Ketril::Editor {

namespace {

// Ends that are no further apart than this, 2.54 µm, are one place: rounding of arcs stays below it.
constexpr double kTolerance = 1000;
// How far the chords of an arc may be off it.
constexpr double kChordError = 500;

using Points = std::vector<TCoordPoint>;

double Distance(TCoordPoint a, TCoordPoint b) {
  return std::hypot(static_cast<double>(a.x) - b.x, static_cast<double>(a.y) - b.y);
}

Points ArcPoints(const Arc& arc) {
  const double sweep = arc.Sweep();
  const int chords = ChordCount(std::max(arc.data.radius, 0), sweep, kChordError);
  Points points;
  for (int i = 0; i <= chords; ++i) points.push_back(arc.PointAt(arc.data.angle1 + sweep * i / chords));
  return points;
}

// Open lines that are joined at their ends, found through a grid of squares of the tolerance's size.
class Chainer {
 public:
  void Add(Points line);
  // Closed chains; what leads nowhere is left out.
  std::vector<Points> Rings();

 private:
  // Each line has two ends, 2 * line at its first point and 2 * line + 1 at its last.
  using End = std::size_t;
  enum class Use : std::uint8_t { Free, InChain, Done };
  struct State {
    Use use = Use::Free;
    End entered_by = 0;  // of a line in the chain
  };

  TCoordPoint Place(End end) const { return end % 2 ? lines_[end / 2].back() : lines_[end / 2].front(); }
  static std::int64_t Square(double x, double y) {
    return static_cast<std::int64_t>(std::floor(x / kTolerance)) * (std::int64_t{1} << 32) +
           static_cast<std::int64_t>(std::floor(y / kTolerance));
  }
  std::optional<End> NextEnd(TCoordPoint from) const;
  void Append(End end) {
    chain_.push_back(end);
    states_[end / 2] = {Use::InChain, end};
  }
  Points TakeRing(std::size_t first);

  std::vector<Points> lines_;
  std::set<std::array<TCoord, 4>> straight_;  // the straight ones, to leave out a line drawn twice
  std::unordered_multimap<std::int64_t, End> ends_;
  std::vector<State> states_;  // of the lines
  std::vector<End> chain_;     // the ends by which its lines are entered
};

void Chainer::Add(Points line) {
  const TCoordPoint a = line.front(), b = line.back();
  if (line.size() == 2) {
    const bool ascends = std::pair(a.x, a.y) < std::pair(b.x, b.y);
    if (!straight_.insert(ascends ? std::array{a.x, a.y, b.x, b.y} : std::array{b.x, b.y, a.x, a.y}).second) {
      return;
    }
  }
  ends_.emplace(Square(a.x, a.y), 2 * lines_.size());
  ends_.emplace(Square(b.x, b.y), 2 * lines_.size() + 1);
  lines_.push_back(std::move(line));
}

// The nearest end that the chain can go on with: of a free line, or where the chain itself came along.
std::optional<Chainer::End> Chainer::NextEnd(TCoordPoint from) const {
  std::optional<End> best;
  double best_distance = kTolerance;
  for (int dx = -1; dx <= 1; ++dx) {
    for (int dy = -1; dy <= 1; ++dy) {
      const auto [first, last] =
          ends_.equal_range(Square(from.x + dx * kTolerance, from.y + dy * kTolerance));
      for (auto it = first; it != last; ++it) {
        const End end = it->second;
        const State& state = states_[end / 2];
        const bool closes = state.use == Use::InChain && state.entered_by == end;
        if (!closes && state.use != Use::Free) continue;
        const double distance = Distance(from, Place(end));
        if (distance > best_distance || (best && distance == best_distance && !closes)) continue;
        best = end;
        best_distance = distance;
      }
    }
  }
  return best;
}

// The lines of the chain from the first-th on are a ring.
Points Chainer::TakeRing(std::size_t first) {
  Points ring;
  for (std::size_t i = first; i < chain_.size(); ++i) {
    Points& line = lines_[chain_[i] / 2];
    states_[chain_[i] / 2].use = Use::Done;
    if (chain_[i] % 2) std::ranges::reverse(line);
    ring.insert(ring.end(), line.begin(), line.end() - 1);
  }
  chain_.resize(first);
  return ring;
}

std::vector<Points> Chainer::Rings() {
  std::vector<Points> rings;
  states_.assign(lines_.size(), {});
  for (End start = 0; start < 2 * lines_.size(); start += 2) {
    if (states_[start / 2].use != Use::Free) continue;
    Append(start);
    while (!chain_.empty()) {
      const std::optional<End> next = NextEnd(Place(chain_.back() ^ 1));
      if (!next) {  // leads nowhere
        states_[chain_.back() / 2].use = Use::Done;
        chain_.pop_back();
      } else if (states_[*next / 2].use == Use::InChain) {
        Points ring = TakeRing(static_cast<std::size_t>(std::ranges::find(chain_, *next) - chain_.begin()));
        if (ring.size() > 2) rings.push_back(std::move(ring));
      } else {
        Append(*next);
      }
    }
  }
  return rings;
}

// Rings do not cross, but a vertex may lie on the other ring: three of them vote.
bool IsWithin(const Points& ring, const Points& larger) {
  int inside = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    const TCoordPoint vertex = ring[i * ring.size() / 3];
    inside += IsInside(larger, vertex.x, vertex.y) ? 1 : 0;
  }
  return inside >= 2;
}

void AddRegion(const Region& region, Chainer& lines, std::vector<Points>& closed) {
  for (const Ring& ring : region.data.rings) {
    if (region.data.closed && ring.points.size() > 2) closed.push_back(ring.points);
    if (!region.data.closed && ring.points.size() > 1) lines.Add(ring.points);
  }
}

}  // namespace

Ref<BoardOutline> Board::Outline() const {
  if (outline_revision_ == index.Revision()) return outline_;
  Chainer lines;
  std::vector<Points> found;
  objects.ForEach({eTrackObject, eArcObject, eRegionObject}, [&](const Primitive& object) {
    if (object.state.layer != kEdgeLayer) return;
    if (const Track* track = As<Track>(&object)) {
      if (track->data.p1 != track->data.p2) lines.Add({track->data.p1, track->data.p2});
    } else if (const Arc* arc = As<Arc>(&object)) {
      Points points = ArcPoints(*arc);
      if (arc->Sweep() < 360) {
        lines.Add(std::move(points));
      } else {
        points.pop_back();
        found.push_back(std::move(points));
      }
    } else {
      AddRegion(static_cast<const Region&>(object), lines, found);
    }
  });
  std::ranges::move(lines.Rings(), std::back_inserter(found));

  std::vector<Ring> rings;
  for (Points& points : found) rings.push_back({std::move(points)});
  std::ranges::stable_sort(rings, std::ranges::greater(),
                           [](const Ring& ring) { return std::abs(AreaOf(ring)); });
  outline_ = rings.empty() ? nullptr : MakeHost<BoardOutline>();
  for (Ring& ring : rings) {
    const auto around = std::ranges::count_if(
        outline_->data.rings, [&](const Ring& larger) { return IsWithin(ring.points, larger.points); });
    ring.hole = around % 2 == 1;
    outline_->data.rings.push_back(std::move(ring));
  }
  outline_revision_ = index.Revision();
  return outline_;
}

}  // namespace Ketril::Editor
