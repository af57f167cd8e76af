// What a shove does, calculated on plain rectangles, with a look at everything for every question.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "Editor/Model/Board.h"
#include "Editor/Model/HitTest.h"

namespace Ketril::Tools {

// Of components that have fewer than 14 pads, on a board without keep-out fills.
class ShoveOracle {
 public:
  explicit ShoveOracle(const Editor::Board& board)
      : edge_(board.Extents()), grid_(static_cast<std::int64_t>(board.setup.grid_x)) {
    Ref<IPCB_AdvancedPlacerOptions> options;
    const_cast<Editor::Board&>(board).GetState_AdvancedPlacerOptions(options);
    options->GetState_PlaceSmallClear(clearance_);
    board.objects.ForEach({eComponentObject}, [&](const Editor::Primitive& c) {
      bodies_.push_back({&c, c.Bounds(), c.Reference(), 0, c.Has(Editor::kFlag_Locked)});
    });
  }

  void Run(const Editor::Primitive& start, int passes) {
    std::vector<Body*> wave, next;
    for (Body& body : bodies_) {
      if (body.object == &start) wave.push_back(&body);
    }
    wave.front()->mark = 1;
    for (int pass = 0; pass < passes; ++pass) {
      for (Body* c : wave) {
        Step(*c, next);
        c->mark = 1;
      }
      wave = next;
      next.clear();
    }
  }

  // From what the board has now; empty when there is none.
  std::string Differences() const {
    for (const Body& body : bodies_) {
      if (body.object->Reference() != body.at) return "another place";
      if (body.object->index != body.mark) return "another mark";
      if (body.locked && body.moved) return "a locked one moved";
    }
    return {};
  }
  int Moved() const {
    int moved = 0;
    for (const Body& body : bodies_) moved += body.moved ? 1 : 0;
    return moved;
  }

 private:
  struct Body {
    const Editor::Primitive* object;
    TCoordRect box;
    TCoordPoint at;
    int mark;
    bool locked;
    bool moved = false;
  };

  static bool Overlap(const TCoordRect& a, const TCoordRect& b) {
    return !(b.x1 - 100 > a.x2 || a.x1 - 100 > b.x2 || b.y1 - 100 > a.y2 || a.y1 - 100 > b.y2);
  }
  static bool Meet(const Body& a, const Body& b) {
    return &a != &b && a.object->state.layer == b.object->state.layer && Overlap(a.box, b.box);
  }
  static std::int64_t Half(std::int64_t v) { return std::llrint(static_cast<double>(v) / 2); }

  void Step(Body& c, std::vector<Body*>& next) {
    int count = 0;
    for (Body& o : bodies_) {
      count += Meet(c, o) ? 1 : 0;
      if (o.mark != 1) o.mark = 0;
    }
    for (; count > 0; --count) {
      Body* found = nullptr;
      for (Body& o : bodies_) {
        if (!found && Meet(c, o) && o.mark == 0) found = &o;
      }
      if (!found) return;
      found->mark = 2;
      if (!found->locked && Push(*found, c)) next.push_back(found);
    }
  }

  bool Push(Body& o, const Body& c) {
    const auto size = [&](std::int64_t low, std::int64_t high) { return high - low + clearance_; };
    const std::int64_t ox = Half(o.box.x2) + Half(o.box.x1), oy = Half(o.box.y2) + Half(o.box.y1);
    const std::int64_t cx = Half(c.box.x2) + Half(c.box.x1), cy = Half(c.box.y2) + Half(c.box.y1);
    const std::int64_t w = size(o.box.x1, o.box.x2), h = size(o.box.y1, o.box.y2);
    std::int64_t dx = Half(size(c.box.x1, c.box.x2)) + Half(w), dy = Half(size(c.box.y1, c.box.y2)) + Half(h);
    if (cx > ox || (cx == ox && std::rand() % 2 == 0)) dx = -dx;
    if (cy > oy || (cy == oy && std::rand() % 2 == 0)) dy = -dy;
    const std::int64_t ex = std::abs(std::abs(dx) - std::abs(cx - ox));
    const std::int64_t ey = std::abs(std::abs(dy) - std::abs(cy - oy));
    const std::int64_t deep_x[8][2] = {{0, dy},  {dx, 0},   {-dx, 0},  {0, -dy},
                                       {dx, dy}, {-dx, dy}, {dx, -dy}, {-dx, -dy}};
    const std::int64_t others[8][2] = {{dx, 0},  {0, dy},   {0, -dy},  {-dx, 0},
                                       {dx, dy}, {dx, -dy}, {-dx, dy}, {-dx, -dy}};
    for (const auto& [tx, ty] : ex > ey ? deep_x : others) {
      std::int64_t x = OnGrid(tx != 0 ? cx + tx : ox, ox, o.at.x),
                   y = OnGrid(ty != 0 ? cy + ty : oy, oy, o.at.y);
      for (int k = 0; k <= 20; ++k) {
        const int steps = k <= 10 ? -k : k - 10;
        const std::int64_t px = tx != 0 ? x : OnGrid(x + steps * grid_, ox, o.at.x);
        const std::int64_t py = tx != 0 ? OnGrid(y + steps * grid_, oy, o.at.y) : y;
        if (!IsFree(px, py, w, h)) continue;
        const auto mx = static_cast<TCoord>(px - ox), my = static_cast<TCoord>(py - oy);
        o.at = {o.at.x + mx, o.at.y + my};
        o.box = {o.box.x1 + mx, o.box.y1 + my, o.box.x2 + mx, o.box.y2 + my};
        return o.moved = true;
      }
    }
    return false;
  }

  std::int64_t OnGrid(std::int64_t target, std::int64_t center, std::int64_t reference) const {
    const std::int64_t d = target - center, v = reference + d;
    std::int64_t n = std::llrint(static_cast<double>(v) / static_cast<double>(grid_));
    if (d >= 1 && v % grid_ > 0) ++n;
    return target + n * grid_ - v;
  }

  bool IsFree(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h) const {
    const auto coord = [](std::int64_t v) { return static_cast<TCoord>(v); };
    const TCoordRect place{coord(x - Half(w)), coord(y - Half(h)), coord(x + Half(w)), coord(y + Half(h))};
    if (place.x1 < edge_.x1 || place.y1 < edge_.y1 || place.x2 > edge_.x2 || place.y2 > edge_.y2)
      return false;
    for (const Body& body : bodies_) {
      if ((body.locked || body.mark == 1) && Overlap(place, body.box)) return false;
    }
    return true;
  }

  std::vector<Body> bodies_;
  const TCoordRect edge_;
  const std::int64_t grid_;
  TCoord clearance_ = 0;
};

}  // namespace Ketril::Tools
