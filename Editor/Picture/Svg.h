// A small writer of SVG: lengths in millimetres, y down, at a resolution of a tenth of a micrometre.
#pragma once

#include <string>
#include <string_view>

#include "Interfaces/Types.h"

namespace Ketril::Editor {

// What can be written besides plain text: a number, a length in units, a place ("x,y"), and text with the
// signs of XML as entities.
struct Num {
  explicit Num(double v) : value(v) {}
  double value;
};
struct Mm {
  explicit Mm(double u) : units(u) {}
  double units;
};
struct At {
  TCoordPoint point;
};
struct Xml {
  std::string_view text;
};

class Svg {
 public:
  Svg& operator<<(std::string_view text) {
    text_ += text;
    return *this;
  }
  Svg& operator<<(Num number);
  Svg& operator<<(Mm length);
  Svg& operator<<(At place);
  Svg& operator<<(Xml text);

  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
};

}  // namespace Ketril::Editor
