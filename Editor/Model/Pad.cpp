#include "Editor/Model/Pad.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "Editor/Model/Board.h"
#include "Editor/Model/LayerIterator.h"
#include "Editor/Vias/UnusedCopper.h"

namespace Ketril::Editor {

namespace {

bool HasCopper(const PadLayer& entry) {
  return entry.x_size > 0 && entry.y_size > 0 && entry.shape != eNoShape;
}

TCoord Negated(TCoord value) {
  return ToCoord(-std::int64_t{value});
}

// Top to bottom.
void Mirror(PadLayer& entry) {
  entry.offset.y = Negated(entry.offset.y);
  entry.trapezoid.y = Negated(entry.trapezoid.y);
  entry.chamfer_corners =
      static_cast<std::uint8_t>((entry.chamfer_corners & 3) << 2 | (entry.chamfer_corners & 12) >> 2);
  for (auto& polygon : entry.custom) {
    for (TCoordPoint& point : polygon) point.y = Negated(point.y);
  }
}

bool IsPaste(TV7_Layer layer) {
  return layer == eV6_TopPaste || layer == eV6_BottomPaste;
}
bool IsSolder(TV7_Layer layer) {
  return layer == eV6_TopSolder || layer == eV6_BottomSolder;
}

// A box with corners that are cut or round.
std::vector<Disc> BoxHull(const PadLayer& entry, unsigned cut_corners, double cut, double radius) {
  const double hx = entry.x_size / 2.0, hy = entry.y_size / 2.0;
  struct Corner {
    unsigned bit;
    double x, y;
  };
  static constexpr std::array kCorners{Corner{4, -1, -1}, Corner{8, 1, -1}, Corner{2, 1, 1},
                                       Corner{1, -1, 1}};
  std::vector<Disc> hull;
  for (const Corner& corner : kCorners) {
    const double x = corner.x * hx, y = corner.y * hy;
    if ((cut_corners & corner.bit) == 0) {
      hull.push_back({x - corner.x * radius, y - corner.y * radius, radius});
      continue;
    }
    const Disc on_horizontal{x - corner.x * cut, y, 0}, on_vertical{x, y - corner.y * cut, 0};
    const bool horizontal_first = corner.x * corner.y < 0;
    hull.push_back(horizontal_first ? on_horizontal : on_vertical);
    hull.push_back(horizontal_first ? on_vertical : on_horizontal);
  }
  return hull;
}

}  // namespace

std::vector<Disc> HullOf(const PadLayer& entry) {
  if (!HasCopper(entry)) return {};
  const double smaller = std::min(entry.x_size, entry.y_size);
  const double hx = entry.x_size / 2.0, hy = entry.y_size / 2.0;
  const double dx = entry.trapezoid.x / 2.0, dy = entry.trapezoid.y / 2.0;
  if (dx != 0 || dy != 0) {
    return {{-hx - dy, -hy + dx}, {hx + dy, -hy - dx}, {hx - dy, hy + dx}, {-hx + dy, hy - dx}};
  }
  const bool rounded = entry.shape == eRoundedRectangular || entry.shape == eRoundRectShape;
  const double radius = rounded ? smaller * std::clamp(entry.corner_ratio, 0.0, 0.5) : 0;
  if (entry.chamfer_corners != 0) {
    return BoxHull(entry, entry.chamfer_corners, smaller * std::clamp(entry.chamfer_ratio, 0.0, 0.5), radius);
  }
  if (entry.shape == eOctagonal) return BoxHull(entry, 15, smaller * (1 - std::sqrt(0.5)), 0);
  if (rounded || entry.shape == eRectangular || entry.shape == eRotatedRectShape) {
    return BoxHull(entry, 0, 0, radius);
  }
  const double pen = smaller / 2;
  if (entry.x_size == entry.y_size) return {{0, 0, pen}};
  return {{pen - hx, pen - hy, pen}, {hx - pen, hy - pen, pen}};
}

Pad::Pad() {
  state.layer = eV6_MultiLayer;
}

void Pad::AddCopper(Extent& extent, const PadLayer& entry, double growth) const {
  const Direction turn = DirectionOf(data.rotation);
  const auto add = [&](double x, double y, double radius) {
    x += entry.offset.x;
    y += entry.offset.y;
    extent.Add(data.center.x + turn.cos * x - turn.sin * y, data.center.y + turn.sin * x + turn.cos * y,
               radius + growth);
  };
  for (const Disc& disc : HullOf(entry)) add(disc.x, disc.y, disc.radius);
  for (const auto& polygon : entry.custom) {
    for (const TCoordPoint& point : polygon) add(point.x, point.y, 0);
  }
}

TCoordRect Pad::Bounds() const {
  Extent extent;
  for (const PadLayer& entry : data.stack) {
    AddCopper(extent, entry, 0);
    if (data.mode == ePadMode_Simple) break;
  }
  if (data.hole > 0) {
    const double half = data.hole / 2.0;
    const double reach = data.hole_type == eSlotHole ? std::max(data.hole_width / 2.0 - half, 0.0) : 0;
    const Direction turn = DirectionOf(data.rotation + data.hole_rotation);
    const double corner = data.hole_type == eSquareHole ? half : 0;
    for (const double side : {-1.0, 1.0}) {
      const double x = side * (reach + corner), y = corner;
      const double cx = turn.cos * x - turn.sin * y, cy = turn.sin * x + turn.cos * y;
      extent.Add(data.center.x + cx, data.center.y + cy, half - corner);
      extent.Add(data.center.x - cx, data.center.y - cy, half - corner);
    }
  }
  return extent.Rect(data.center);
}

TCoordRect Pad::BoundsOn(TV7_Layer layer) const {
  if (layer == eV6_MultiLayer) return Bounds();
  Extent extent;
  if (IsPaste(layer) || IsSolder(layer)) {
    const PadLayer& copper = On(IsBottomSide(layer) ? eV6_BottomLayer : eV6_TopLayer);
    if (OpensMask(layer)) AddCopper(extent, copper, MaskExpansionOn(layer));
  } else if (IsOn(layer)) {
    AddCopper(extent, On(layer), 0);
  }
  return extent.Rect(data.center);
}

void Pad::Transform(const PlaneMap& map) {
  data.center = map(data.center);
  data.rotation = map.Angle(data.rotation);
  if (!map.Mirrors()) return;
  // Turning the board over left to right is a mirroring top to bottom and half a turn, which `Angle` has.
  // A slot along an axis of the pad lies as it did.
  if (std::remainder(data.hole_rotation, 90) != 0) data.hole_rotation = 0 - data.hole_rotation;
  for (PadLayer& entry : data.stack) Mirror(entry);
}

void Pad::MirrorLayers() {
  Primitive::MirrorLayers();
  for (PadLayer& entry : data.stack) entry.layer = MirroredLayer(entry.layer, board);
  MirrorAll(data.layers, board);
  MirrorAll(data.removed, board);
  MirrorAll(data.straddling, board);
}

void Pad::ChangeLayer(TV7_Layer layer) {
  if (state.layer == layer) return;
  state.layer = layer;
  data.layers.clear();
}

std::u16string Pad::Identifier() const {
  const Component* component = OwnerAs<Component>();
  return component ? component->Designator() + u"-" + data.name : data.name;
}

bool Pad::IsOn(TV7_Layer layer) const {
  if (layer == state.layer) return true;
  if (!data.layers.empty()) return Contains(data.layers, layer);
  if (state.layer == eV6_MultiLayer) return IsCopper(layer) || IsSolder(layer);
  return (IsPaste(layer) || IsSolder(layer)) && IsCopper(state.layer) &&
         IsBottomSide(layer) == IsBottomSide(state.layer);
}

bool Pad::OpensMask(TV7_Layer layer) const {
  return (IsSolder(layer) && data.mask.solder_mode != eMaskExpansion_NoMask && IsOn(layer)) ||
         (IsPaste(layer) && data.mask.paste_mode != eMaskExpansion_NoMask && IsOn(layer));
}

const PadLayer& Pad::On(TV7_Layer layer) const {
  if (data.mode == ePadMode_Simple) return data.stack.front();
  const PadLayer* rest = &data.stack.front();
  for (const PadLayer& entry : data.stack) {
    if (entry.layer == layer) return entry;
    if (entry.layer == eV6_MultiLayer) rest = &entry;
  }
  return *rest;
}

PadLayer& Pad::EditOn(TV7_Layer layer) {
  const PadLayer& entry = On(layer);
  if (data.mode != ePadMode_Simple && entry.layer != layer) {
    PadLayer own = entry;
    own.layer = layer;
    return data.stack.emplace_back(std::move(own));
  }
  return const_cast<PadLayer&>(entry);
}

void Pad::SetMode(TPadMode mode) {
  if (mode == ePadMode_Simple) {
    PadLayer kept = On(FirstLayer());
    kept.layer = eV6_MultiLayer;
    data.stack.assign(1, kept);
  }
  data.mode = mode;
}

TCoordPoint Pad::HoleBox() const {
  const double hole = std::max(data.hole, 0);
  const Direction turn = DirectionOf(data.hole_rotation);
  const double c = std::abs(turn.cos), s = std::abs(turn.sin);
  if (data.hole_type == eSquareHole) return {ToCoord(hole * (c + s)), ToCoord(hole * (c + s))};
  const double reach = data.hole_type == eSlotHole ? std::max(data.hole_width - hole, 0.0) : 0;
  return {ToCoord(hole + reach * c), ToCoord(hole + reach * s)};
}

bool Pad::IsHoleSizeValid() const {
  if (data.hole == 0) return true;
  if (data.hole < 0 || (data.hole_type == eSlotHole && data.hole_width < data.hole)) return false;
  const TCoordPoint box = HoleBox();
  return !data.plated || std::all_of(data.stack.begin(), data.stack.end(), [&](const PadLayer& entry) {
    return !HasCopper(entry) || !entry.custom.empty() || (box.x <= entry.x_size && box.y <= entry.y_size);
  });
}

void Pad::MakeValid() {
  for (PadLayer& entry : data.stack) {
    entry.x_size = std::max(entry.x_size, 0);
    entry.y_size = std::max(entry.y_size, 0);
    if (entry.shape == eNoShape && entry.x_size > 0 && entry.y_size > 0) entry.shape = eRounded;
  }
  data.hole = std::max(data.hole, 0);
  data.hole_width = std::max(data.hole_width, 0);
}

TCoord Pad::PasteMaskExpansion() const {
  const TCoord margin = Primitive::PasteMaskExpansion();
  if (data.mask.paste_mode != eMaskExpansion_FromRule) return margin;
  const double ratio = data.paste_ratio != 0 ? data.paste_ratio : board ? board->setup.paste_ratio : 0;
  const PadLayer& copper = On(FirstLayer());
  return ToCoord(margin + ratio * std::min(copper.x_size, copper.y_size));
}

TCoord Pad::PlaneClearance() const {
  return data.clearance > 0 ? data.clearance : Primitive::PlaneClearance();
}

TV7_Layer Pad::FirstLayer() const {
  return state.layer == eV6_MultiLayer ? TV7_Layer(eV6_TopLayer) : state.layer;
}

Ref<IPCB_LayerIterator> Pad::DefinitionLayers() const {
  if (data.mode == ePadMode_Simple || !(state.layer == eV6_MultiLayer)) {
    return MakeHost<LayerIterator>(std::vector{FirstLayer()});
  }
  return MakeHost<LayerIterator>(SpannedLayers(board, eV6_TopLayer, eV6_BottomLayer));
}

Status Pad::StackLayers(IPCB_Board* on, Ref<IPCB_LayerIterator>& iterator) const {
  const Board* stack = on ? As<Board>(FromInterface(on)) : board;
  if (on && !stack) return Status::InvalidArgument;
  std::vector<TV7_Layer> layers{state.layer};
  if (state.layer == eV6_MultiLayer) layers = SpannedLayers(stack, eV6_TopLayer, eV6_BottomLayer);
  iterator = MakeHost<LayerIterator>(std::move(layers));
  return Status::Ok;
}

Status Pad::RemoveUnusedPads(bool preserve_start_end) noexcept {
  return HostCall("IPCB_Pad3.RemoveUnusedPads",
                  [&] { Write([&] { RemoveUnusedCopper(*this, preserve_start_end); }); });
}

Status Pad::RestoreUnusedPads() noexcept {
  return HostCall("IPCB_Pad3.RestoreUnusedPads", [&] { Write([&] { RestoreUnusedCopper(*this); }); });
}

}  // namespace Ketril::Editor
