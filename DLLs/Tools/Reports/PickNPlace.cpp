#include "DLLs/Tools/Reports/PickNPlace.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "DLLs/Tools/Frame/ComponentPads.h"
#include "DLLs/Tools/Frame/CoordText.h"
#include "DLLs/Tools/Frame/Hourglass.h"
#include "DLLs/Tools/Frame/Polling.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesStack.h"
#include "DLLs/Tools/Frame/Progress.h"
#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Reports/TextReportFile.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

// Designator, pattern, middle, reference point, reference pad, side, rotation.
using TFields = std::array<std::u16string, 10>;

// The last pad that is named as a first one is, else the first pad; 0 without pads.
TCoordPoint ReferencePad(TComp* component) {
  const TPrimitive* reference = nullptr;
  component->ProcessItems(
      [&](TPrimitive* primitive) {
        const auto* pad = dynamic_cast<const TPad*>(primitive);
        const std::u16string name = pad ? pad->Name() : u"";
        if (!reference || name == u"1" || name == u"A" || name == u"A1") reference = primitive;
      },
      {ePadObject});
  return reference ? TCoordPoint{reference->GetState_X(), reference->GetState_Y()} : TCoordPoint{};
}

std::u16string RotationText(double degrees) {
  NormalizeAngle(degrees);
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, static_cast<float>(degrees) + 0.0F,
                                 std::chars_format::fixed, 2);
  return Platform::ToUtf16(std::string_view(text, end.ptr));
}

// What a component's line says.
class TLineOf {
 public:
  explicit TLineOf(const TBoard* board)
      : origin_{board->OriginX(), board->OriginY()}, unit_(board->DisplayUnit()) {}

  TFields operator()(TComp* component) const {
    const TText* const name = component->Name();
    TFields fields{name ? name->Text() : u"No Text", component->Pattern()};
    const TCoordPoint points[] = {
        MiddleOfPads(component), {component->GetState_X(), component->GetState_Y()}, ReferencePad(component)};
    for (std::size_t i = 0; i < 3; ++i) {
      fields[2 + 2 * i] = Text(points[i].x, origin_.x);
      fields[3 + 2 * i] = Text(points[i].y, origin_.y);
    }
    fields[8] = component->Layer() == eV6_TopLayer ? u"T" : u"B";
    fields[9] = RotationText(component->Rotation());
    return fields;
  }

 private:
  std::u16string Text(TCoord value, TCoord origin) const {
    return CoordUnitToString(WrapToCoord(std::int64_t{value} - origin), unit_);
  }

  TCoordPoint origin_;
  TUnit unit_;
};

std::u16string CsvLine(const TFields& fields) {
  std::u16string line;
  for (const std::u16string& field : fields) line += (line.empty() ? u"\"" : u",\"") + field + u"\"";
  return line;
}

std::u16string FixedLine(const TFields& fields) {
  std::u16string line = LeftAligned(fields[0].substr(0, 10), 10) + u" " + LeftAligned(fields[1], 14);
  for (std::size_t i = 2; i < 8; ++i) line += RightAligned(fields[i], 14);
  return line + RightAligned(fields[8], 3) + RightAligned(fields[9], 14);
}

}  // namespace

void ReportPickNPlace(TBoard* board, const std::u16string& file_name, const std::u16string& format) {
  const bool csv = format == u"CSV";
  const auto line = csv ? CsvLine : FixedLine;
  {
    const THourglass hourglass;
    TTextReportFile file;
    file.WriteLine(line({u"Designator", u"Pattern", u"Mid X", u"Mid Y", u"Ref X", u"Ref Y", u"Pad X",
                         u"Pad Y", csv ? u"Layer" : u"TB", u"Rotation"}));
    file.WriteLine(csv ? u"\"\"" : u"");
    const std::vector<TComp*> components = board->GetSpatialSortedComponents();
    TProgress progress(board, u"Writing Component Information");
    progress.SetMaximum(static_cast<std::int32_t>(components.size()));
    const TLineOf line_of(board);
    for (TComp* component : components) {
      if (ToolAborted) break;
      progress.Step();
      file.WriteLine(line(line_of(component)));
    }
    file.WriteLine();
    file.PlaceAt(file_name);
  }
  DisplayReportFile(file_name, false);
}

}  // namespace Ketril::Tools
