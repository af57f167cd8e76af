// Pads and their holes as SVG.
#pragma once

#include "Editor/Model/Copper.h"
#include "Editor/Picture/Svg.h"

namespace Ketril::Editor {

// The pad's copper as it is on `layer`, in the colour of the group that it stands in.
void DrawPad(Svg& svg, const Pad& pad, TV7_Layer layer);
// Its hole, round or a slot; nothing when it has none.
void DrawPadHole(Svg& svg, const Pad& pad);

}  // namespace Ketril::Editor
