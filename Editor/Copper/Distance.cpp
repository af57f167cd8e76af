#include "Editor/Copper/Distance.h"

#include <cmath>
#include <utility>

#include "Editor/Model/Board.h"
#include "Editor/Rules/Clearance.h"

namespace Ketril::Editor {

namespace {

// Walks the trees of two parts at once, nearer boxes first, and leaves out what is no nearer than the best so
// far (Roussopoulos, Kelley and Vincent 1995).
class Search {
 public:
  Search(const CopperPart& a, const CopperPart& b, double best) : a_(a), b_(b), best_(best) {}

  double Run() {
    Visit(1, 1);
    return best_;
  }

 private:
  static double Size(const Box& box) { return box.x2 - box.x1 + (box.y2 - box.y1); }
  double Lower(std::size_t a, std::size_t b) const { return GapOf(a_.NodeBox(a), b_.NodeBox(b)); }

  void Visit(std::size_t a, std::size_t b) {
    if (best_ <= 0 || Lower(a, b) >= best_) return;
    const bool a_is_leaf = a >= a_.LeafCount(), b_is_leaf = b >= b_.LeafCount();
    if (a_is_leaf && b_is_leaf) return Measure(a, b);
    if (b_is_leaf || (!a_is_leaf && Size(a_.NodeBox(a)) >= Size(b_.NodeBox(b)))) {
      const bool swap = Lower(2 * a + 1, b) < Lower(2 * a, b);
      Visit(2 * a + swap, b);
      Visit(2 * a + !swap, b);
    } else {
      const bool swap = Lower(a, 2 * b + 1) < Lower(a, 2 * b);
      Visit(a, 2 * b + swap);
      Visit(a, 2 * b + !swap);
    }
  }

  void Measure(std::size_t a, std::size_t b) {
    const auto take = [&](double distance) { best_ = std::min(best_, distance); };
    const auto [a_begin, a_end] = a_.Leaf(a);
    const auto [b_begin, b_end] = b_.Leaf(b);
    if (a_.Arc() && b_.Arc()) return take(Distance(*a_.Arc(), *b_.Arc()));
    if (a_.Arc()) {
      for (const Segment* t = b_begin; t != b_end; ++t) take(Distance(*t, *a_.Arc()));
    } else if (b_.Arc()) {
      for (const Segment* s = a_begin; s != a_end; ++s) take(Distance(*s, *b_.Arc()));
    } else {
      for (const Segment* s = a_begin; s != a_end; ++s) {
        for (const Segment* t = b_begin; t != b_end; ++t) take(Distance(*s, *t));
      }
    }
  }

  const CopperPart& a_;
  const CopperPart& b_;
  double best_;
};

bool Surrounds(const CopperPart& outer, const CopperPart& inner) {
  return outer.IsFilled() && std::any_of(inner.Starts().begin(), inner.Starts().end(),
                                         [&](Spot start) { return outer.Surrounds(start); });
}

double PartGap(const CopperPart& a, const CopperPart& b, double limit) {
  const double pens = a.Pen() + b.Pen();
  if (GapOf(a.NodeBox(1), b.NodeBox(1)) - pens >= limit) return limit;
  const double apart = Search(a, b, limit + pens).Run();
  if (apart <= pens || Surrounds(a, b) || Surrounds(b, a)) return 0;
  return apart < limit + pens ? std::min(apart - pens, limit) : limit;
}

// As PartGap of what the strokes draw.
double StrokeGap(const Stroke& a, const Stroke& b, double limit) {
  const double pens = a.pen + b.pen, apart = Distance(a.line, b.line);
  return apart <= pens ? 0 : std::min(apart - pens, limit);
}

bool HasVertexOn(const Stroke& stroke, const Primitive& object, TV7_Layer layer) {
  const Region* const region = As<Region>(&object);
  if (!region || region->data.kind != eRegionKind_Copper || !HasCopperOn(object, layer)) return false;
  return std::ranges::any_of(region->data.rings, [&](const Ring& ring) {
    return !ring.hole && std::ranges::any_of(ring.points, [&](TCoordPoint point) {
      return Distance(Spot{double{1} * point.x, double{1} * point.y}, stroke.line) <= stroke.pen;
    });
  });
}

const Board* BoardOf(const Primitive& a, const Primitive& b) {
  return a.board ? a.board : b.board;
}

bool LooksAlikeEverywhere(const Primitive& primitive) {
  if (const Pad* pad = As<Pad>(&primitive)) {
    return pad->data.mode == ePadMode_Simple && pad->data.removed.empty();
  }
  if (const Via* via = As<Via>(&primitive)) {
    return via->data.mode == ePadMode_Simple && via->data.removed.empty();
  }
  return true;
}

bool StandsOnOneLayer(const Primitive& primitive) {
  return primitive.kind != eViaObject && !(primitive.state.layer == TV7_Layer(eV6_MultiLayer));
}

}  // namespace

double Gap(const CopperShape& a, const CopperShape& b, double limit) {
  double gap = limit;
  for (const CopperPart& part : a.parts) {
    for (const CopperPart& other : b.parts) gap = PartGap(part, other, gap);
  }
  return gap;
}

std::vector<TV7_Layer> SharedLayers(const Primitive& a, const Primitive& b) {
  for (const Primitive* one : {&a, &b}) {
    if (!StandsOnOneLayer(*one)) continue;
    const TV7_Layer layer = one->state.layer;
    return HasCopperOn(a, layer) && HasCopperOn(b, layer) ? std::vector{layer} : std::vector<TV7_Layer>{};
  }
  std::vector<TV7_Layer> layers = SpannedLayers(BoardOf(a, b), eV6_TopLayer, eV6_BottomLayer);
  std::erase_if(layers, [&](TV7_Layer layer) { return !HasCopperOn(a, layer) || !HasCopperOn(b, layer); });
  if (!layers.empty() && LooksAlikeEverywhere(a) && LooksAlikeEverywhere(b)) layers.resize(1);
  return layers;
}

std::optional<double> QuickGap(const Primitive& a, const Primitive& b, TV7_Layer layer, double limit) {
  const std::optional<Stroke> stroke_a = StrokeOf(a, layer), stroke_b = StrokeOf(b, layer);
  if (stroke_a && stroke_b) return StrokeGap(*stroke_a, *stroke_b, limit);
  if (stroke_a && HasVertexOn(*stroke_a, b, layer)) return 0;
  if (stroke_b && HasVertexOn(*stroke_b, a, layer)) return 0;
  return std::nullopt;
}

double Gap(const Primitive& a, const Primitive& b, TV7_Layer layer, double limit) {
  if (const auto gap = QuickGap(a, b, layer, limit)) return *gap;
  return Gap(CopperOn(a, layer), CopperOn(b, layer), limit);
}

double Gap(const Primitive& a, const Primitive& b, double limit) {
  double gap = limit;
  if (const auto* members = a.MemberList()) {
    for (const Ref<Primitive>& member : *members) gap = Gap(*member, b, gap);
  } else if (b.MemberList()) {
    gap = Gap(b, a, gap);
  } else {
    for (const TV7_Layer layer : SharedLayers(a, b)) gap = Gap(a, b, layer, gap);
  }
  return gap;
}

Status Primitive::TellTouch(IPCB_Primitive* other, bool& touches) const {
  const Primitive* object = FromInterface(other);
  if (!object) return Status::InvalidArgument;
  // Lines of the silkscreen and the like are drawn as copper is, and are none.
  if (StandsOnOneLayer(*this) && !MemberList() && !IsCopper(state.layer)) {
    touches = false;
    return Status::Ok;
  }
  touches =
      board && board == object->board ? board->Clearances().Touches(*this, *object) : Touch(*this, *object);
  return Status::Ok;
}

Status Primitive::TellGap(IPCB_Primitive* other, TCoord& gap) const {
  const Primitive* object = FromInterface(other);
  if (!object) return Status::InvalidArgument;
  gap = BoardOf(*this, *object) ? static_cast<TCoord>(Gap(*this, *object, kNoGap)) : kNoGap;
  return Status::Ok;
}

}  // namespace Ketril::Editor
