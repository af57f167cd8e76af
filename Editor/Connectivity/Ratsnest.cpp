#include "Editor/Connectivity/Ratsnest.h"

#include <limits>
#include <numeric>
#include <unordered_map>

#include "Editor/Rules/Clearance.h"

namespace Ketril::Editor {

namespace {

constexpr TObjectSet kCopperKinds = {eArcObject, eTrackObject, ePadObject,
                                     eViaObject, eFillObject,  eRegionObject};

bool Conducts(const Primitive& object) {
  return object.on_board && kCopperKinds.Contains(object.kind) && !object.Has(kFlag_KeepOut) &&
         (IsCopper(object.state.layer) || object.state.layer == eV6_MultiLayer);
}

// The parts of one net's copper, as sets of objects that touch (Tarjan 1975, by halving paths).
class Parts {
 public:
  explicit Parts(const std::vector<Primitive*>& objects) : parents_(objects.size()) {
    std::iota(parents_.begin(), parents_.end(), std::size_t{0});
    for (std::size_t i = 0; i < objects.size(); ++i) numbers_[objects[i]] = i;
  }
  // `objects.size()` for one that is not among them.
  std::size_t NumberOf(const Primitive* object) const {
    const auto found = numbers_.find(object);
    return found == numbers_.end() ? parents_.size() : found->second;
  }
  std::size_t PartOf(std::size_t i) {
    while (parents_[i] != i) i = parents_[i] = parents_[parents_[i]];
    return i;
  }
  void Join(std::size_t a, std::size_t b) { parents_[PartOf(a)] = PartOf(b); }

 private:
  std::vector<std::size_t> parents_;
  std::unordered_map<const Primitive*, std::size_t> numbers_;
};

// The shortest way through the pads, where one within a part costs nothing.
void SpanPads(Net& net, const std::vector<const Pad*>& pads, const std::vector<std::size_t>& parts,
              std::vector<OpenConnection>& found) {
  if (pads.empty()) return;
  const auto distance = [&](std::size_t a, std::size_t b) {
    const double dx = double{1} * pads[a]->data.center.x - pads[b]->data.center.x;
    const double dy = double{1} * pads[a]->data.center.y - pads[b]->data.center.y;
    return parts[a] == parts[b] ? -1 : dx * dx + dy * dy;
  };
  std::vector<double> nearest(pads.size(), std::numeric_limits<double>::infinity());
  std::vector<std::size_t> from(pads.size(), 0);
  std::vector<bool> reached(pads.size(), false);
  std::size_t current = 0;
  for (std::size_t step = 1; step < pads.size(); ++step) {
    reached[current] = true;
    std::size_t next = pads.size();
    for (std::size_t i = 0; i < pads.size(); ++i) {
      if (reached[i]) continue;
      if (const double d = distance(current, i); d < nearest[i]) {
        nearest[i] = d;
        from[i] = current;
      }
      if (next == pads.size() || nearest[i] < nearest[next]) next = i;
    }
    if (nearest[next] >= 0) found.push_back({&net, pads[from[next]], pads[next]});
    current = next;
  }
}

void SpanNet(Board& board, Net& net, std::vector<OpenConnection>& found) {
  std::vector<Primitive*> copper;
  net.ForEach([&](Primitive& object) {
    if (Conducts(object)) copper.push_back(&object);
  });
  Parts parts(copper);
  for (std::size_t i = 0; i < copper.size(); ++i) {
    for (const Primitive* other : board.index.Find(copper[i]->Bounds())) {
      if (other->GetNet() != &net) continue;
      const std::size_t j = parts.NumberOf(other);
      if (j >= copper.size() || j <= i || parts.PartOf(i) == parts.PartOf(j)) continue;
      if (board.Clearances().Touches(*copper[i], *other)) parts.Join(i, j);
    }
  }
  std::vector<const Pad*> pads;
  std::vector<std::size_t> part_of_pad;
  for (std::size_t i = 0; i < copper.size(); ++i) {
    const Pad* const pad = As<Pad>(copper[i]);
    if (!pad) continue;
    pads.push_back(pad);
    part_of_pad.push_back(parts.PartOf(i));
  }
  SpanPads(net, pads, part_of_pad, found);
}

TV7_Layer LayerOf(const Pad& pad) {
  return pad.state.layer == eV6_MultiLayer ? TV7_Layer(eV6_TopLayer) : pad.state.layer;
}

}  // namespace

std::vector<OpenConnection> FindOpenConnections(Board& board) {
  std::vector<OpenConnection> found;
  board.objects.ForEach({eNetObject},
                        [&](Primitive& object) { SpanNet(board, static_cast<Net&>(object), found); });
  return found;
}

void RefreshConnections(Board& board) {
  std::vector<Ref<Primitive>> old;
  board.objects.ForEach({eConnectionObject}, [&](Primitive& object) { old.emplace_back(&object); });
  for (const Ref<Primitive>& object : old) board.Remove(object.Get());
  for (const OpenConnection& open : FindOpenConnections(board)) {
    const Ref<Connection> connection = MakeHost<Connection>();
    connection->data = {open.from->data.center, open.to->data.center, LayerOf(*open.from), LayerOf(*open.to),
                        eRatsNestConnection};
    connection->SetNet(open.net);
    board.Load(connection.Get());
  }
}

}  // namespace Ketril::Editor
