#include "DLLs/Tools/Frame/PCB_Layer.h"

#include <gtest/gtest.h>

#include <climits>

#include "DLLs/Tools/Frame/Exceptions.h"

namespace Ketril::Tools {
namespace {

using Maker = TV7_Layer (*)(int);

TEST(PCB_Layer, ConstructorsAndNames) {
  constexpr std::uint32_t kSignal = 257u << 16, kPlane = 260u << 16, kMechanical = 1024u << 16;
  const struct {
    Maker Make;
    int Number;
    std::uint32_t ID;
    const char16_t* Name;
  } rows[] = {
      {SignalLayer, 1, 1, u"Top Layer"},
      {SignalLayer, 31, 31, u"Mid Layer 30"},
      {SignalLayer, 32, kSignal + 32, u"Mid Layer 31"},
      {SignalLayer, 65534, kSignal + 65534, u"Mid Layer 65533"},
      {SignalLayer, 65535, 32, u"Bottom Layer"},
      {MidLayer, 0, 1, u"Top Layer"},
      {MidLayer, 1, 2, u"Mid Layer 1"},
      {MidLayer, 31, kSignal + 32, u"Mid Layer 31"},
      {MidLayer, 65534, 32, u"Bottom Layer"},
      {InternalPlaneLayer, 1, 39, u"Internal Plane 1"},
      {InternalPlaneLayer, 16, 54, u"Internal Plane 16"},
      {InternalPlaneLayer, 17, kPlane + 17, u"Internal Plane 17"},
      {MechanicalLayer, 1, 57, u"Mechanical Layer 1"},
      {MechanicalLayer, 65535, kMechanical + 65535, u"Mechanical Layer 65535"},
      {DielectricLayer, 3, (2048u << 16) + 3, u"Dielectric Layer 3"},
      {TopCoverlayOutlineLayer, 2, (2049u << 16) + 2, u"Top Coverlay Outline Layer 2"},
      {BottomCoverlayOutlineLayer, 32, (2050u << 16) + 32, u"Bottom Coverlay Outline Layer 32"},
  };
  for (const auto& row : rows) {
    const TV7_Layer layer = row.Make(row.Number);
    EXPECT_EQ(layer.ID, row.ID) << row.Number;
    EXPECT_EQ(LayerToString(layer), row.Name);
    EXPECT_EQ(ToV6(layer), row.ID < 83 ? row.ID : 0);
    EXPECT_EQ(IsSignalLayer(layer), row.Make == SignalLayer || row.Make == MidLayer) << row.ID;
    EXPECT_EQ(IsInternalPlaneLayer(layer), row.Make == InternalPlaneLayer) << row.ID;
  }
  EXPECT_EQ(LayerToString(eV6_TopSolder), u"Top Solder Mask");
  EXPECT_EQ(LayerToString(eV6_KeepOutLayer), u"Keep Out Layer");
  EXPECT_EQ(LayerToString(eV6_ViaHoleLayer), u"Via Hole Layer");
  EXPECT_EQ(LayerToString(kLayer_DRCDetail), u"DRC Details");
  for (const TV7_Layer unnamed : {TV7_Layer(83, 0), TV7_Layer(31, 257), TV7_Layer(65535, 257),
                                  TV7_Layer(0, 260), TV7_Layer(4, 512), TV7_Layer(65535, 65535)}) {
    EXPECT_EQ(LayerToString(unnamed), u"No Layer") << unnamed.ID;
    EXPECT_FALSE(IsLayerValue(unnamed)) << unnamed.ID;
  }
}

TEST(PCB_Layer, NumbersThatNoLayerHas) {
  const struct {
    Maker Make;
    int Number;
    const char* Message;
  } rows[] = {
      {SignalLayer, 0, "Creating SignalLayer(0)"},
      {SignalLayer, 65536, "Creating SignalLayer(65536)"},
      {MidLayer, -1, "Creating SignalLayer(0)"},
      {MidLayer, INT_MAX, "Creating SignalLayer(2147483648)"},
      {InternalPlaneLayer, 65536 + 17, "Creating InternalPlaneLayer(65553)"},
      {MechanicalLayer, -5, "Creating MechanicalLayer(-5)"},
      {DielectricLayer, 0, "Creating DielectricLayer(0)"},
      {TopCoverlayOutlineLayer, 33, "Creating TopCoverlayOutlineLayer(33)"},
  };
  for (const auto& row : rows) {
    try {
      row.Make(row.Number);
      ADD_FAILURE() << row.Message;
    } catch (const ELayerException& e) {
      EXPECT_STREQ(e.what(), row.Message);
    }
  }
}

}  // namespace
}  // namespace Ketril::Tools
