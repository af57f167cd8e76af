#include "DLLs/Tools/Placement/AutoPlaceNewPlaces.h"

#include <cstdlib>

#include "DLLs/Tools/Frame/PCB_LayerFactory.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Placement/AutoPlacementGrid.h"
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

// From a centre towards another one; from the same centre to either side, by chance.
std::int64_t Signed(std::int64_t length, std::int64_t from, std::int64_t to) {
  const bool backwards = from == to ? std::rand() % 2 == 0 : from > to;
  return backwards ? -length : length;
}

// How deep two bodies overlap along an axis on which their centres should be `length` apart.
std::int64_t Depth(std::int64_t length, std::int64_t a, std::int64_t b) {
  return std::abs(std::abs(length) - std::abs(a - b));
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

bool AnyOverlapping(TBoard* board, const TCoordRect& area, TObjectSet objects,
                    const Ref<IPCB_LayerSet>& layers, FunctionRef<bool(TPrimitive*)> is_meant) {
  const auto grown = [](TCoord edge, std::int64_t by) { return SaturateToCoord(edge + by); };
  TSpatialIterator iterator(board);
  iterator.InitFilter(board, grown(area.x1, -kApart), grown(area.y1, -kApart), grown(area.x2, kApart),
                      grown(area.y2, kApart), layers, objects);
  for (TPrimitive* p = iterator.First(); p; p = iterator.Next()) {
    const TTemporary<TPrimitive> object(p);
    if (RectanglesOverlap(area, object->GetState_BoundingRectangle()) && is_meant(object.get())) return true;
  }
  return false;
}

TPlaceFinder::TPlaceFinder(TBoard* board)
    : FBoard(board), FKeepOutLayers(TPCBFactory::CreateLayerSet(kKeepOutLayers)) {}

bool TPlaceFinder::PushAway(TComp* o, TComp* c) {
  if (!o->Moveable()) return false;
  const TBody pushed = BodyOf(o), pusher = BodyOf(c);
  FBoardArea = {FBoard->BoardMinimumX(), FBoard->BoardMinimumY(), FBoard->BoardMaximumX(),
                FBoard->BoardMaximumY()};
  FGridX = FBoard->ComponentGridSizeX();
  FGridY = FBoard->ComponentGridSizeY();
  const std::int64_t dx = Signed(Half(pusher.Width) + Half(pushed.Width), pusher.Center.x, pushed.Center.x);
  const std::int64_t dy = Signed(Half(pusher.Height) + Half(pushed.Height), pusher.Center.y, pushed.Center.y);
  const bool y_first =
      Depth(dx, pusher.Center.x, pushed.Center.x) > Depth(dy, pusher.Center.y, pushed.Center.y);
  const TPoint along_x{dx, 0}, along_y{0, dy}, back_x{-dx, 0}, back_y{0, -dy};
  const TPoint past_corner_1{-dx, dy}, past_corner_2{dx, -dy};
  for (const TPoint by : {y_first ? along_y : along_x, y_first ? along_x : along_y, y_first ? back_x : back_y,
                          y_first ? back_y : back_x, TPoint{dx, dy}, y_first ? past_corner_1 : past_corner_2,
                          y_first ? past_corner_2 : past_corner_1, TPoint{-dx, -dy}}) {
    if (Try(pushed, pusher, by)) return true;
  }
  return false;
}

TPlaceFinder::TBody TPlaceFinder::BodyOf(TComp* component) const {
  const TCoordRect extents = component->GetState_BoundingRectangle();
  const std::int64_t clearance = ClearanceOf(component);
  return {component,
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

// One place, `by` from the centre of `c`, and those beside it. An axis without a displacement keeps the
// centre of `o`.
bool TPlaceFinder::Try(const TBody& o, const TBody& c, TPoint by) {
  const TPoint aim{by.x != 0 ? c.Center.x + by.x : o.Center.x, by.y != 0 ? c.Center.y + by.y : o.Center.y};
  const TPoint target = ToGrid(o, aim);
  const auto move_if_free = [&](TPoint center) {
    const bool free = IsFree(o, center);
    if (free) Move(o, center);
    return free;
  };
  if (move_if_free(target)) return true;
  for (const int way : {-1, 1}) {
    for (int step = 1; step <= kMostSlides; ++step) {
      TPoint beside = target;
      if (by.x != 0)
        beside.y = Slid(target.y, way * step, FGridY);
      else
        beside.x = Slid(target.x, way * step, FGridX);
      if (move_if_free(ToGrid(o, beside))) return true;
    }
  }
  return false;
}

TPlaceFinder::TPoint TPlaceFinder::ToGrid(const TBody& o, TPoint center) const {
  return {AxisToGrid(center.x, o.Center.x, o.Component->GetState_X(), FGridX),
          AxisToGrid(center.y, o.Center.y, o.Component->GetState_Y(), FGridY)};
}

bool TPlaceFinder::IsFree(const TBody& o, TPoint center) {
  const std::int64_t half_width = Half(o.Width), half_height = Half(o.Height);
  const std::int64_t x1 = center.x - half_width, x2 = center.x + half_width;
  const std::int64_t y1 = center.y - half_height, y2 = center.y + half_height;
  if (x1 < FBoardArea.x1 || y1 < FBoardArea.y1 || x2 > FBoardArea.x2 || y2 > FBoardArea.y2) return false;
  // What lies on the board has coordinates of 32 bits.
  const TCoordRect place{SaturateToCoord(x1), SaturateToCoord(y1), SaturateToCoord(x2), SaturateToCoord(y2)};
  const auto any = [](TPrimitive*) { return true; };
  const auto stays = [](TPrimitive* component) {
    return !component->Moveable() || component->vIndex() == eShoveFixed;
  };
  return !AnyOverlapping(FBoard, place, {eFillObject}, FKeepOutLayers, any) &&
         !AnyOverlapping(FBoard, place, {eComponentObject}, nullptr, stays);
}

void TPlaceFinder::Move(const TBody& o, TPoint center) {
  const auto x = WrapToCoord(o.Component->GetState_X() + center.x - o.Center.x);
  const auto y = WrapToCoord(o.Component->GetState_Y() + center.y - o.Center.y);
  MoveInBracket(o.Component, [&] { o.Component->MoveToXY(x, y); });
}

}  // namespace Ketril::Tools
