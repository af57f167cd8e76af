// Random objects of every kind that has copper, for the tests of copper.
#pragma once

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "Editor/Model/Copper.h"
#include "Editor/Model/Shapes.h"
#include "Tests/Editor/Model/SmallBoard.h"

namespace Ketril::Editor {

struct CopperKind {
  std::string name;
  std::function<Ref<Primitive>(Random&)> make;
};

// A new object with that data, on the top layer and on no board.
template <class T, class Data>
Ref<Primitive> Loose(const Data& data) {
  const Ref<T> object = MakeHost<T>();
  object->data = data;
  object->state.layer = eV6_TopLayer;
  return Ref<Primitive>(object.Get());
}

// Objects of 1000 to 8000 units in a field of 20000: some overlap, some are near, some are apart.
inline std::vector<CopperKind> CopperKinds() {
  static constexpr int kField = 20000;
  const auto size = [](Random& random) { return 1000 + random.Below(7000); };
  const auto degrees = [](Random& random) {
    return random.Below(2) ? 45.0 * random.Below(8) : random.Below(36000) / 100.0;
  };
  const auto pad = [=](std::function<void(PadLayer&, Random&)> shape) {
    return [=](Random& random) {
      PadData data;
      data.center = random.Point(kField);
      data.rotation = degrees(random);
      PadLayer& layer = data.stack[0];
      layer.x_size = size(random);
      layer.y_size = size(random);
      if (random.Below(3) == 0) layer.offset = {random.Below(1000), random.Below(1000)};
      shape(layer, random);
      return Loose<Pad>(data);
    };
  };
  const auto star = [=](TCoordPoint at, int count, int reach, Random& random) {
    std::vector<TCoordPoint> ring;
    for (int i = 0; i < count; ++i) {
      const double angle = 2 * M_PI * i / count, radius = reach / 2.0 + random.Below(reach / 2);
      ring.push_back({at.x + int(radius * std::cos(angle)), at.y + int(radius * std::sin(angle))});
    }
    return ring;
  };
  return {
      {"track",
       [=](Random& random) {
         const int shape = random.Below(3);
         TrackData data{random.Point(kField), random.Point(kField), size(random) / 4};
         if (shape == 0) data.p2 = {data.p1.x, data.p2.y};
         if (shape == 1) data.p2 = {data.p2.x, data.p1.y};
         return Loose<Track>(data);
       }},
      {"arc",
       [=](Random& random) {
         return Loose<Arc>(ArcData{random.Point(kField), random.Below(4) ? size(random) : random.Below(500),
                                   degrees(random), degrees(random), size(random) / 4});
       }},
      {"circle",
       [=](Random& random) {
         return Loose<Arc>(ArcData{random.Point(kField), size(random), 0, 360, size(random) / 4});
       }},
      {"round pad", pad([](PadLayer&, Random&) {})},
      {"rectangular pad", pad([](PadLayer& layer, Random&) { layer.shape = eRectangular; })},
      {"octagonal pad", pad([](PadLayer& layer, Random&) { layer.shape = eOctagonal; })},
      {"rounded pad", pad([](PadLayer& layer, Random& random) {
         layer.shape = eRoundedRectangular;
         layer.corner_ratio = random.Below(51) / 100.0;
       })},
      {"chamfered pad", pad([](PadLayer& layer, Random& random) {
         layer.shape = random.Below(2) ? eRoundedRectangular : eRectangular;
         layer.corner_ratio = 0.25;
         layer.chamfer_ratio = random.Below(51) / 100.0;
         layer.chamfer_corners = static_cast<std::uint8_t>(1 + random.Below(15));
       })},
      {"trapezoid pad", pad([](PadLayer& layer, Random& random) {
         layer.shape = eRectangular;
         layer.trapezoid.x = random.Below(layer.y_size) - layer.y_size / 2;
       })},
      {"custom pad", pad([=](PadLayer& layer, Random& random) {
         layer.custom = {star({2000, 1000}, 12, 4000, random), star({-3000, 0}, 3, 2000, random)};
       })},
      {"via",
       [=](Random& random) {
         ViaData data;
         data.center = random.Point(kField);
         data.size = size(random);
         data.hole = data.size / 2;
         return Loose<Via>(data);
       }},
      {"fill",
       [=](Random& random) {
         const TCoordPoint at = random.Point(kField);
         return Loose<Fill>(
             FillData{{at.x, at.y, at.x + size(random), at.y + size(random)}, degrees(random)});
       }},
      {"text",
       [=](Random& random) {
         TextData data;
         data.anchor = random.Point(kField);
         data.string = u"AB";
         data.size = data.letter_width = size(random) / 4;
         data.width = data.size / 8;
         data.rotation = degrees(random);
         data.horizontal = TextAlign::Low;
         return Loose<Text>(data);
       }},
      {"region",
       [=](Random& random) {
         const TCoordPoint at = random.Point(kField);
         RegionData data;
         data.rings = {{star(at, 100, 8000, random), false}, {star(at, 20, 3800, random), true}};
         data.line_width = random.Below(2) * 200;
         return Loose<Region>(data);
       }},
      {"drawn outline",
       [=](Random& random) {
         RegionData data;
         data.rings = {{star(random.Point(kField), 9, 8000, random), false}};
         data.filled = false;
         data.closed = random.Below(2) == 0;
         data.line_width = 400;
         return Loose<Region>(data);
       }},
  };
}

}  // namespace Ketril::Editor
