#include "Benchmarks/SyntheticBoard.h"

#include <cmath>
#include <cstdio>

namespace Ketril::Benchmarks {

namespace {

constexpr int kNets = 200;
constexpr double kPitch = 0.8;  // mm between tracks

std::string Header() {
  std::string text =
      "(kicad_pcb (version 20171130) (host ketril \"1.0\")\n"
      "  (general\n    (thickness 1.6)\n  )\n"
      "  (layers\n    (0 F.Cu signal)\n    (31 B.Cu signal)\n    (44 Edge.Cuts user)\n  )\n"
      "  (net 0 \"\")\n";
  char line[50];
  for (int net = 1; net <= kNets; ++net) {
    std::snprintf(line, sizeof line, "  (net %d N%d)\n", net, net);
    text += line;
  }
  return text +
         "  (net_class Default \"\"\n    (clearance 0.2)\n    (trace_width 0.25)\n    (via_dia 0.6)\n    "
         "(via_drill 0.3)\n  )\n";
}

std::int64_t Columns(std::int64_t count) {
  return static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(count))));
}

}  // namespace

std::string SyntheticBoard(std::int64_t tracks) {
  std::string text = Header();
  char line[300];
  const std::int64_t columns = Columns(tracks);
  for (std::int64_t i = 0; i < tracks; ++i) {
    const double x = 20 + static_cast<double>(i % columns) * kPitch;
    const double y = 20 + static_cast<double>(i / columns) * kPitch;
    const int net = 1 + static_cast<int>(i / columns % kNets);
    const char* layer = i % 2 ? "B.Cu" : "F.Cu";
    std::snprintf(
        line, sizeof line,
        "  (segment (start %.6g %.6g) (end %.6g %.6g) (width 0.25) (layer %s) (net %d) (tstamp %08llX))\n", x,
        y, x + 0.55, y, layer, net, static_cast<unsigned long long>(0x5B000000 + i));
    text += line;
    if (i % 4 == 0) {
      std::snprintf(line, sizeof line,
                    "  (via (at %.6g %.6g) (size 0.6) (drill 0.3) (layers F.Cu B.Cu) (net %d))\n", x, y, net);
      text += line;
    }
  }
  return text + ")\n";
}

std::string BoardOfTrackEnds(std::int64_t tracks, TrackEnd end) {
  std::string text = Header();
  char line[400];
  const std::int64_t columns = Columns(tracks);
  constexpr double kColumn = 2.0, kRow = 1.2;
  for (std::int64_t i = 0; i < tracks; ++i) {
    const double x = 20 + static_cast<double>(i % columns) * kColumn;
    const double y = 20 + static_cast<double>(i / columns) * kRow;
    const int net = 1 + static_cast<int>(i % kNets);
    std::snprintf(line, sizeof line,
                  "  (segment (start %.7g %.7g) (end %.7g %.7g) (width 0.25) (layer F.Cu) (net %d))\n", x, y,
                  x + 1.2, y + 0.2, net);
    text += line;
    if (end == TrackEnd::Via) {
      std::snprintf(line, sizeof line,
                    "  (via (at %.7g %.7g) (size 0.6) (drill 0.3) (layers F.Cu B.Cu) (net %d))\n", x, y, net);
    } else {
      std::snprintf(line, sizeof line,
                    "  (module T:P (layer F.Cu) (tedit 0) (at %.7g %.7g)\n    (pad 1 smd rect (at 0 0) (size "
                    "0.8 0.6) (layers F.Cu F.Mask) (net %d N%d))\n  )\n",
                    x, y, net, net);
    }
    text += line;
  }
  return text + ")\n";
}

std::string BoardOfComponents(std::int64_t components, double pitch) {
  std::string text = Header();
  char line[500];
  const std::int64_t columns = Columns(components);
  const double margin = 10 + static_cast<double>(columns);  // mm, of the board around the components
  const auto place = [&](std::int64_t n) {
    return margin + static_cast<double>(n) * pitch + static_cast<double>(n / 4);
  };
  for (std::int64_t i = 0; i < components; ++i) {
    std::snprintf(line, sizeof line, "  (module T:Q (layer F.Cu) (tedit 0) (at %.7g %.7g)\n",
                  place(i % columns), place(i / columns));
    text += line;
    for (int pad = 0; pad < 4; ++pad) {
      const int net = 1 + static_cast<int>((i + pad) % kNets);
      std::snprintf(line, sizeof line,
                    "    (pad %d smd rect (at %.3g %.3g) (size 0.6 0.6) (layers F.Cu F.Mask) (net %d N%d))\n",
                    pad + 1, pad % 2 ? 0.7 : -0.7, pad / 2 ? 0.7 : -0.7, net, net);
      text += line;
    }
    text += "  )\n";
  }
  const double far = place(columns) + margin;
  const double corners[] = {0, 0, far, 0, far, far, 0, far, 0, 0};
  for (int side = 0; side < 8; side += 2) {
    std::snprintf(line, sizeof line,
                  "  (gr_line (start %.7g %.7g) (end %.7g %.7g) (layer Edge.Cuts) (width 0.1))\n",
                  corners[side], corners[side + 1], corners[side + 2], corners[side + 3]);
    text += line;
  }
  return text + ")\n";
}

std::string BoardOfPlanes(std::int64_t tracks) {
  constexpr double kSide = 200, kMargin = 20;
  std::string text = Header();
  char line[300];
  const std::int64_t columns = Columns(tracks);
  const double step = kSide / static_cast<double>(columns);
  for (std::int64_t i = 0; i < tracks; ++i) {
    const double x = kMargin + (static_cast<double>(i % columns) + 0.3) * step;
    const double y = kMargin + (static_cast<double>(i / columns) + 0.3) * step;
    std::snprintf(line, sizeof line,
                  "  (segment (start %.7g %.7g) (end %.7g %.7g) (width 0.1) (layer %s) (net %d))\n", x, y,
                  x + step / 3, y, i % 2 == 0 ? "F.Cu" : "B.Cu",
                  i % 5 < 2 ? 2 + static_cast<int>(i % (kNets - 1)) : 1);
    text += line;
  }
  for (const char* layer : {"F.Cu", "B.Cu"}) {
    std::string points;
    // The left edge is a comb, so that the pour has as many corners as a real one.
    constexpr int kTeeth = 4000;
    for (int i = 0; i <= 2 * kTeeth; ++i) {
      std::snprintf(line, sizeof line, " (xy %.7g %.7g)", kMargin + (i % 2) * 0.4,
                    kMargin + kSide * i / (2 * kTeeth));
      points += line;
    }
    points += " (xy 220 220) (xy 220 20)";
    text +=
        std::string("  (zone (net 1) (net_name N1) (layer ") + layer +
        ") (hatch edge 0.5) (connect_pads (clearance 0.2)) (min_thickness 0.1) (fill yes (thermal_gap 0.5) "
        "(thermal_bridge_width 0.5))\n    (polygon (pts (xy 20 20) (xy 20 220) (xy 220 220) (xy 220 20)))\n"
        "    (filled_polygon (pts" +
        points + "))\n  )\n";
  }
  return text + ")\n";
}

}  // namespace Ketril::Benchmarks
