#include "Editor/Files/FootprintFile.h"

#include <gtest/gtest.h>

#include <fstream>

#include "Editor/Files/SExpression.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril::Tests {
namespace {

using namespace Editor;
namespace fs = std::filesystem;

const std::string kOld = R"((module OLD (layer F.Cu) (tedit 5B1F1A2C)
  (fp_text reference REF** (at 0 -2) (layer F.SilkS))
  (pad 1 smd rect (at 1 0.5) (size 2 1) (layers F.Cu F.Mask)))
)";
const std::string kNew = R"((footprint "NEW" (version 20240108) (generator "x")
  (layer "F.Cu")
  (pad "1" thru_hole circle (at -1 0) (size 2 2) (drill 1) (layers "*.Cu" "*.Mask"))
  (fp_line (start 0 0) (end 1 0) (stroke (width 0.1) (type solid)) (layer "F.Fab")))
)";

std::vector<TCoord> PadPlaces(const LibComponent& footprint) {
  std::vector<TCoord> places;
  for (const Ref<Primitive>& member : footprint.Members())
    if (const Pad* pad = As<Pad>(member.Get())) places.push_back(pad->data.center.x);
  return places;
}

TEST(FootprintFile, IsReadInEachVersion) {
  const Ref<LibComponent> old_one = ReadFootprintText(kOld), new_one = ReadFootprintText(kNew);
  EXPECT_EQ(old_one->data.pattern, u"OLD");
  EXPECT_EQ(new_one->data.pattern, u"NEW");
  EXPECT_EQ(PadPlaces(*old_one), std::vector<TCoord>{393701});
  EXPECT_EQ(PadPlaces(*new_one), std::vector<TCoord>{-393701});
  EXPECT_EQ(new_one->Members().back()->state.layer, MakeFootprintBoard()->FindLayer("F.Fab")->id);
}

TEST(FootprintFile, WhatIsWrongIsToldWithItsPlace) {
  const std::tuple<std::string, std::size_t, std::size_t> rows[] = {
      {"", 1, 1},
      {"(kicad_pcb (version 20240108))", 1, 1},
      {"(footprint \"A\" (version 20991231))", 1, 25},
      {"(footprint \"A\" (pad \"1\" smd rect (at x 0)))", 1, 38},
      {"(footprint \"A\"\n (pad \"1\" smd rect (at 0 x)))", 2, 26},
      {"(footprint \"A\"\n (layer \"F.Cu\")", 2, 16},
      {"(footprint \"A\" (layer \"F.Cu\")) (footprint \"B\")", 1, 32},
  };
  for (const auto& [text, line, column] : rows) {
    try {
      (void)ReadFootprintText(text, "file");
      ADD_FAILURE() << text;
    } catch (const FileError& error) {
      EXPECT_EQ(std::pair(error.line, error.column), std::pair(line, column)) << error.what();
    }
  }
}

TEST(FootprintFile, AFolderIsALibrary) {
  const TempFolder folder;
  fs::create_directories(folder / "inner.kicad_mod");
  EXPECT_THROW(ReadFootprints(folder), FileError);
  std::ofstream(folder / "b.kicad_mod") << kOld;
  std::ofstream(folder / "a.kicad_mod") << kNew;
  std::ofstream(folder / "readme.txt") << "no footprint";
  const Ref<Library> library = ReadFootprints(folder);
  ASSERT_EQ(library->components.size(), 2u);
  EXPECT_EQ(library->components[0]->data.pattern, u"NEW");
  EXPECT_EQ(library->current, 2u);
  EXPECT_EQ(ReadFootprints(folder / "b.kicad_mod")->current, 0u);
}

}  // namespace
}  // namespace Ketril::Tests
