#include "DLLs/Tools/Placement/AutoPlaceNewPlaces.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Placement/AutoPlac.h"
#include "DLLs/Tools/Placement/Utilities.h"

namespace Ketril::Tools {

namespace {

constexpr std::int64_t kApart = 100;  // what is nearer than this overlaps
constexpr std::int32_t kPadsOfALargeComponent = 14;
constexpr int kMostSlides = 10;
constexpr TLayerPartitionSet kKeepOutLayers{eV7_KeepOutLayer};
static_assert(kKeepOutLayers.Bits() == 8192);

std::int64_t Half(std::int64_t length) {
  return SafeRound(static_cast<double>(length) / 2);
}

std::int64_t Middle(TCoord low, TCoord high) {
  return Half(high) + Half(low);
}

// Towards where `way` leads; where it leads nowhere to either side, by chance.
std::int64_t Signed(std::int64_t length, std::int64_t way) {
  const bool backwards = way == 0 ? std::rand() % 2 == 0 : way < 0;
  return backwards ? -length : length;
}

// From the centre of a component to those places of one whose centre lies `way` from it that are `x` or `y`,
// or both, away: first along the axis on which they overlap less, towards it.
std::array<std::array<std::int64_t, 2>, 8> Displacements(std::int64_t way_x, std::int64_t way_y,
                                                         std::int64_t x, std::int64_t y) {
  const std::int64_t dx = Signed(x, way_x), dy = Signed(y, way_y);
  const std::int64_t depth_x = std::abs(std::abs(dx) - std::abs(way_x));
  const std::int64_t depth_y = std::abs(std::abs(dy) - std::abs(way_y));
  if (depth_x > depth_y)
    return {{{0, dy}, {dx, 0}, {-dx, 0}, {0, -dy}, {dx, dy}, {-dx, dy}, {dx, -dy}, {-dx, -dy}}};
  return {{{dx, 0}, {0, dy}, {0, -dy}, {-dx, 0}, {dx, dy}, {dx, -dy}, {-dx, dy}, {-dx, -dy}}};
}

// `center` moves by what brings the reference point, which is at `reference` while the centre is at `from`,
// onto the grid: to the nearest multiple, and where the centre goes up from a place off the grid, to the one
// behind that. Without a grid it stays.
std::int64_t AxisToGrid(std::int64_t center, std::int64_t from, std::int64_t reference, double grid_size) {
  const std::int64_t grid = SafeRound(grid_size);
  if (grid < 1) return center;
  const std::int64_t way = center - from, moved = reference + way;
  std::int64_t steps = SafeRound(static_cast<double>(moved) / static_cast<double>(grid));
  if (way >= 1 && moved % grid > 0) ++steps;
  return center + steps * grid - moved;
}

std::int64_t Slid(std::int64_t place, int steps, double grid_size) {
  return SafeRound(static_cast<double>(place) + steps * grid_size);
}

}  // namespace

bool RectanglesOverlap(const TCoordRect& a, const TCoordRect& b) {
  const auto is_beyond = [](std::int64_t low, std::int64_t high) { return low - kApart > high; };
  return !is_beyond(b.x1, a.x2) && !is_beyond(a.x1, b.x2) && !is_beyond(b.y1, a.y2) && !is_beyond(a.y1, b.y2);
}

void ForEachOverlapping(TBoard* board, const TCoordRect& area, TObjectSet objects,
                        const Ref<IPCB_LayerSet>& layers,
                        FunctionRef<void(TPrimitive*, const TCoordRect&)> each) {
  const auto grown = [](TCoord edge, std::int64_t by) { return SaturateToCoord(edge + by); };
  TSpatialIterator iterator(board);
  iterator.InitFilter(board, grown(area.x1, -kApart), grown(area.y1, -kApart), grown(area.x2, kApart),
                      grown(area.y2, kApart), layers, objects);
  for (TPrimitive* p = iterator.First(); p; p = iterator.Next()) {
    const TTemporary<TPrimitive> object(p);
    const TCoordRect box = object->GetState_BoundingRectangle();
    if (RectanglesOverlap(area, box)) each(object.get(), box);
  }
}

TPlaceFinder::TPlaceFinder(TBoard* board)
    : FBoard(board), FKeepOutLayers(TPCBFactory::CreateLayerSet(kKeepOutLayers)) {}

bool TPlaceFinder::PushAway(TComp* o, TComp* c) {
  if (!o->Moveable()) return false;
  const TBody body = BodyOf(o);
  for (const std::vector<TPlace>& places : PlacesAround(body, BodyOf(c))) {
    const std::vector<TCoordRect> obstacles = ObstaclesOf(places);
    const auto is_free = [&](const TPlace& place) {
      return std::ranges::none_of(
          obstacles, [&](const TCoordRect& obstacle) { return RectanglesOverlap(place.Room, obstacle); });
    };
    const auto found = std::ranges::find_if(places, is_free);
    if (found == places.end()) continue;
    const TCoord x = WrapToCoord(body.Reference.x + found->Center.x - body.Center.x);
    const TCoord y = WrapToCoord(body.Reference.y + found->Center.y - body.Center.y);
    MoveInBracket(o, [&] { o->MoveToXY(x, y); });
    return true;
  }
  return false;
}

TPlaceFinder::TBody TPlaceFinder::BodyOf(TComp* component) const {
  const TCoordRect extents = component->GetState_BoundingRectangle();
  const std::int64_t clearance = ClearanceOf(component);
  return {component,
          {component->GetState_X(), component->GetState_Y()},
          {Middle(extents.lx(), extents.hx()), Middle(extents.ly(), extents.hy())},
          std::int64_t{extents.hx()} - extents.lx() + clearance,
          std::int64_t{extents.hy()} - extents.ly() + clearance};
}

TCoord TPlaceFinder::ClearanceOf(const TComp* component) const {
  const bool is_large = component->GetPrimitiveCount({ePadObject}) >= kPadsOfALargeComponent;
  using IHost = IPCB_AdvancedPlacerOptions;
  return On(FBoard->GetState_AdvancedPlacerOptions())
      .Read(is_large ? &IHost::GetState_PlaceLargeClear : &IHost::GetState_PlaceSmallClear);
}

// In the order in which they are tried: eight displacements from the centre of `c`, each with those beside
// it. An axis without a displacement keeps the centre of `o`. What reaches beyond the board is left out.
std::vector<std::vector<TPlaceFinder::TPlace>> TPlaceFinder::PlacesAround(const TBody& o,
                                                                          const TBody& c) const {
  const double grid_x = FBoard->ComponentGridSizeX(), grid_y = FBoard->ComponentGridSizeY();
  const TCoord x1 = FBoard->BoardMinimumX(), y1 = FBoard->BoardMinimumY();
  const TCoord x2 = FBoard->BoardMaximumX(), y2 = FBoard->BoardMaximumY();
  const std::int64_t half_width = Half(o.Width), half_height = Half(o.Height);
  std::vector<std::vector<TPlace>> places;
  const auto add = [&](TPoint p) {
    if (p.x - half_width < x1 || p.y - half_height < y1 || p.x + half_width > x2 || p.y + half_height > y2)
      return;
    // What lies on the board has coordinates of 32 bits.
    places.back().push_back({p,
                             {WrapToCoord(p.x - half_width), WrapToCoord(p.y - half_height),
                              WrapToCoord(p.x + half_width), WrapToCoord(p.y + half_height)}});
  };
  const auto on_grid = [&](std::int64_t x, std::int64_t y) -> TPoint {
    return {AxisToGrid(x, o.Center.x, o.Reference.x, grid_x),
            AxisToGrid(y, o.Center.y, o.Reference.y, grid_y)};
  };
  for (const auto& [dx, dy] : Displacements(o.Center.x - c.Center.x, o.Center.y - c.Center.y,
                                            Half(c.Width) + half_width, Half(c.Height) + half_height)) {
    places.emplace_back();
    const TPoint target =
        on_grid(dx != 0 ? c.Center.x + dx : o.Center.x, dy != 0 ? c.Center.y + dy : o.Center.y);
    add(target);
    for (const int way : {-1, 1}) {
      for (int step = 1; step <= kMostSlides; ++step) {
        const int by = way * step;
        add(dx != 0 ? on_grid(target.x, Slid(target.y, by, grid_y))
                    : on_grid(Slid(target.x, by, grid_x), target.y));
      }
    }
  }
  return places;
}

// What is in the way at any of the places.
std::vector<TCoordRect> TPlaceFinder::ObstaclesOf(const std::vector<TPlace>& places) {
  std::vector<TCoordRect> obstacles;
  if (places.empty()) return obstacles;
  TCoordRect reach = places.front().Room;
  for (const TPlace& place : places) {
    reach.x1 = std::min(reach.x1, place.Room.x1);
    reach.y1 = std::min(reach.y1, place.Room.y1);
    reach.x2 = std::max(reach.x2, place.Room.x2);
    reach.y2 = std::max(reach.y2, place.Room.y2);
  }
  const auto take = [&](TPrimitive*, const TCoordRect& box) { obstacles.push_back(box); };
  const auto take_what_stays = [&](TPrimitive* component, const TCoordRect& box) {
    if (component->vIndex() == eShoveFixed || !component->Moveable()) obstacles.push_back(box);
  };
  ForEachOverlapping(FBoard, reach, {eFillObject}, FKeepOutLayers, take);
  ForEachOverlapping(FBoard, reach, {eComponentObject}, nullptr, take_what_stays);
  return obstacles;
}

}  // namespace Ketril::Tools
