#include "Editor/Model/HitTest.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "Editor/Copper/Distance.h"
#include "Editor/Model/Board.h"
#include "Editor/Model/Rooms.h"
#include "Editor/Model/Shapes.h"

namespace Ketril::Editor {

namespace {

bool IsAt(const Primitive& object, TCoordPoint place) {
  if (const Rule* rule = As<Rule>(&object)) return Covers(ShapeOfRoom(*rule), place);
  if (!Meet(Ordered(object.Bounds()), {place.x, place.y, place.x, place.y})) return false;
  if (const Polygon* zone = As<Polygon>(&object))
    return Covers(ShapeOf({AreaOfRings(zone->data.rings)}), place);
  if (object.MemberList()) return true;
  const bool on_all_copper = object.state.layer == TV7_Layer(eV6_MultiLayer);
  bool has_shape = false;
  const auto is_on = [&](TV7_Layer layer) {
    const std::vector<Form> forms = FormsOf(object, layer);
    has_shape = has_shape || !forms.empty();
    return !forms.empty() && Covers(ShapeOf(forms), place);
  };
  if (!on_all_copper) return is_on(object.state.layer) || !has_shape;
  for (const TV7_Layer layer : object.board->CopperLayers()) {
    if (is_on(layer)) return true;
  }
  return !has_shape;
}

// The object that stands for one that is hit.
Primitive& StandsFor(Primitive& object, TIterationMethod method) {
  Component* const component = object.OwnerAs<Component>();
  const bool by_itself = !component || (object.Has(kFlag_Selected) && !component->Has(kFlag_Selected));
  return method != eProcessComponent || by_itself ? object : static_cast<Primitive&>(*component);
}

double BoxArea(const Primitive& object) {
  const TCoordRect box = Ordered(object.Bounds());
  return (double(box.x2) - box.x1) * (double(box.y2) - box.y1);
}

bool Passes(Primitive& object, HitOptions& options) {
  if (!options.kinds.Contains(object.kind) || !options.layers.Passes(object.state.layer)) return false;
  if (options.method == eProcessFree && object.OwnerAs<Component>()) return false;
  if (options.only_selected && !object.Has(kFlag_Selected)) return false;
  if (!options.filter) return true;
  bool accepted = false;
  if (Failed(options.filter->Accepts(object.AsInterface(), accepted)))
    throw std::runtime_error("the filter of a hit test failed");
  return accepted;
}

}  // namespace

bool Covers(const CopperShape& shape, TCoordPoint place) {
  const Spot spot{double(place.x), double(place.y)};
  return Gap(shape, ShapeOf({Hull{{Disc{spot.x, spot.y, 0}}}}), kTouchGap) < kTouchGap;
}

std::vector<Primitive*> HitObjects(Board& board, TCoordPoint place, HitOptions& options) {
  options.layers.Restart();
  // A component's label may lie over a neighbour: what is there by itself comes first.
  struct Hit {
    Primitive* object;
    bool by_label;
    double area;
    auto Rank() const { return std::pair(by_label, area); }
  };
  std::vector<Hit> hits;
  const auto consider = [&](Primitive& object) {
    Primitive& meant = StandsFor(object, options.method);
    if (object.Has(kFlag_Hidden) || !Passes(meant, options)) return;
    const auto known = std::ranges::find(hits, &meant, &Hit::object);
    if ((known != hits.end() && !known->by_label) || !IsAt(object, place)) return;
    const Text* const text = &meant != &object ? As<Text>(&object) : nullptr;
    const bool by_label = text && text->data.role != TextRole::Free;
    if (known == hits.end()) {
      hits.push_back({&meant, by_label, BoxArea(meant)});
    } else {
      known->by_label = by_label;
    }
  };
  for (Primitive* object : board.index.Find({place.x, place.y, place.x, place.y})) consider(*object);
  if (options.kinds.Contains(eRuleObject)) {
    for (Warehouse::Walk walk(board.objects, {eRuleObject}); Primitive* rule = walk.Next();) consider(*rule);
  }
  std::ranges::stable_sort(hits, {}, &Hit::Rank);
  std::vector<Primitive*> objects;
  for (const Hit& hit : hits) objects.push_back(hit.object);
  return objects;
}

Primitive* HitObject(Board& board, TCoordPoint place, HitOptions& options) {
  const std::vector<Primitive*> hits = HitObjects(board, place, options);
  return hits.empty() ? nullptr : hits.front();
}

}  // namespace Ketril::Editor
