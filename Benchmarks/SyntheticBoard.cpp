#include "Benchmarks/SyntheticBoard.h"

#include <cmath>
#include <cstdio>

namespace Ketril::Benchmarks {

namespace {

constexpr int kNets = 200;
constexpr double kPitch = 0.8;  // mm between tracks

}  // namespace

std::string SyntheticBoard(std::int64_t tracks) {
  std::string text =
      "(kicad_pcb (version 20171130) (host ketril \"1.0\")\n"
      "  (general\n    (thickness 1.6)\n  )\n"
      "  (layers\n    (0 F.Cu signal)\n    (31 B.Cu signal)\n    (44 Edge.Cuts user)\n  )\n"
      "  (net 0 \"\")\n";
  char line[300];
  for (int net = 1; net <= kNets; ++net) {
    std::snprintf(line, sizeof line, "  (net %d N%d)\n", net, net);
    text += line;
  }
  text +=
      "  (net_class Default \"\"\n    (clearance 0.2)\n    (trace_width 0.25)\n    (via_dia 0.6)\n    "
      "(via_drill 0.3)\n  )\n";
  const auto columns = static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(tracks))));
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

}  // namespace Ketril::Benchmarks
