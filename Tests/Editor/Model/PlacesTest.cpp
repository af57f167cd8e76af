// Where objects are: bounds, moves, turns, the other side of the board, the limits of coordinates.
#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "Editor/Model/ObjectFactory.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril {
void PrintTo(const TCoordRect& r, std::ostream* out) {
  *out << r.x1 / 1e4 << "," << r.y1 / 1e4 << " " << r.x2 / 1e4 << "," << r.y2 / 1e4 << " mil";
}
namespace Tests {
namespace {

using namespace Editor;

TEST(Bounds, AreThoseOfTheShape) {
  struct Row {
    const char* name;
    const char* text;
    double x1, y1, x2, y2;  // mil, to a thousandth
  };
  const Row rows[] = {{"track", "track 0,0 100,50 w10", -5, -5, 105, 55},
                      {"arc within a quadrant", "arc 0,0 r100 30..60 w10", 45, 45, 91.602540, 91.602540},
                      {"arc over two axes", "arc 0,0 r100 -45..100 w10", -22.364818, -75.710678, 105, 105},
                      {"arc over the start", "arc 0,0 r100 300..390 w10", 45, -91.602540, 105, 55},
                      {"full circle", "arc 10,0 r100 0..360 w10", -95, -105, 115, 105},
                      {"no sweep", "arc 0,0 r100 90..90 w10", -5, 95, 5, 105},
                      {"hole beyond the copper", "pad 0,0 10x10 hole 50", -25, -25, 25, 25},
                      {"fill, turned", "fill 0,0 200,100 rot 90", 50, -50, 150, 150},
                      {"text", "text 0,0 \"ABC\" h50", -80, -30, 80, 30},
                      {"text, turned", "text 0,0 \"ABC\" h50 rot 90", -30, -80, 30, 80},
                      {"zone", "zone 0,0 100,0 50,70 top", 0, 0, 100, 70}};
  for (const Row& row : rows) {
    const Ref<Board> board = BoardFromText(row.text);
    const TCoordRect box = Warehouse::Walk(board->objects, TObjectSet::All()).Next()->Bounds();
    const double expected[] = {row.x1, row.y1, row.x2, row.y2},
                 found[] = {double(box.x1), double(box.y1), double(box.x2), double(box.y2)};
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(found[i] / 1e4, expected[i], 1e-3) << row.name << ", side " << i;
  }
}

TEST(Bounds, OfAPadTakeInItsSlot) {
  const Ref<Pad> pad = MakeHost<Pad>();
  PadLayer& copper = pad->data.stack.front();
  copper.x_size = 100;
  copper.y_size = 60;
  copper.shape = eRectangular;
  copper.chamfer_corners = 2 | 8;
  copper.chamfer_ratio = 0.5;
  EXPECT_EQ(HullOf(copper).size(), 6u);
  pad->data.hole = 20;
  pad->data.hole_width = 200;
  pad->data.hole_type = eSlotHole;
  EXPECT_EQ(pad->Bounds(), (TCoordRect{-100, -30, 100, 30}));
  EXPECT_FALSE(pad->IsHoleSizeValid());
}

std::string RandomComponent(std::mt19937& random) {
  const auto number = [&](int low, int high) {
    return std::to_string(std::uniform_int_distribution<int>(low * 10, high * 10)(random) / 10.0);
  };
  const auto place = [&] { return number(-900, 900) + "," + number(-900, 900) + " "; };
  std::string text = "layers 6\ncomponent U1 at " + place() + " rot " + number(-180, 180) + " {\n";
  text +=
      "pad " + place() + number(1, 90) + "x" + number(1, 90) + " rounded rot " + number(-180, 180) + " top\n";
  text += "pad " + place() + number(1, 90) + "x" + number(1, 90) + " hole 9\n";
  text += "track " + place() + place() + " mech7\n";
  text += "arc " + place() + "r" + number(1, 90) + " " + number(-360, 360) + ".." + number(-360, 360) +
          " topoverlay\n";
  text += "via " + place() + "30/15 top..mid2\n";
  text += "fill " + place() + place() + " rot " + number(-180, 180) + " toppaste\n";
  text += "region " + place() + place() + place() + " mid1\n";
  return text + "text " + place() + "\"x\" rot " + number(-180, 180) + " topoverlay }";
}

TEST(Component, FlippedTwiceOrTurnedAllTheWayIsAsBefore) {
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int run = 0; run < 50; ++run) {
    const std::string text = RandomComponent(random);
    const Ref<Board> board = BoardFromText(text);
    Component& u1 = *Find<Component>(*board);
    Pad& pad = *Find<Pad>(*board);
    PadLayer& copper = pad.data.stack.front();
    copper.offset = {static_cast<TCoord>(random() % 1000), static_cast<TCoord>(random() % 1000)};
    copper.trapezoid = copper.offset;
    copper.chamfer_corners = random() % 16;
    pad.data.hole_rotation = random() % 90;
    pad.data.layers = {eV6_TopLayer, eV6_TopPaste, eV6_TopSolder};
    const auto before = DescribeBoard(*board);
    ASSERT_EQ(u1.FlipComponent(), Status::Ok);
    EXPECT_EQ(u1.state.layer, TV7_Layer(eV6_BottomLayer));
    EXPECT_EQ(Find<Track>(*board)->state.layer, TV7_Layer(static_cast<TV6_Layer>(eV6_Mechanical1 + 7)));
    ASSERT_EQ(u1.FlipComponent(), Status::Ok);
    ASSERT_EQ(Differences(before, DescribeBoard(*board)), "") << "seed " << seed << "\n" << text;

    for (double* angle : {&u1.data.rotation, &pad.data.rotation}) *angle = std::abs(*angle) / 2;
    std::vector<TCoordRect> boxes;
    for (const auto& member : u1.Members()) boxes.push_back(member->Bounds());
    const ComponentData data = u1.data;
    const PadData pad_data = pad.data;
    for (int i = 0; i < 4; ++i) u1.RotateAroundXY(123, -456, 90);
    EXPECT_EQ(u1.data, data) << "seed " << seed;
    EXPECT_EQ(pad.data, pad_data) << "seed " << seed;
    for (std::size_t i = 0; i < boxes.size(); ++i)
      EXPECT_EQ(u1.Members()[i]->Bounds(), boxes[i]) << "seed " << seed;
  }
}

TEST(Component, CarriesItsMembers) {
  const Ref<Board> board = BoardFromText(
      "component U1 at 500,500 { pad 50,0 60x40 rect name 1 top; text 0,-90 \"10k\" comment }\ntrack 0,0 9,9 "
      "w10");
  Component& u1 = *Find<Component>(*board);
  Pad& pad = *Find<Pad>(*board);
  EXPECT_EQ(u1.Bounds(), (TCoordRect{Mil(520), Mil(480), Mil(580), Mil(520)})) << "without its texts";
  u1.SetState_Rotation(90);
  EXPECT_EQ(pad.data.center, (TCoordPoint{Mil(500), Mil(550)}));
  u1.SetState_ReferenceX(Mil(100));
  EXPECT_EQ(pad.data.center, (TCoordPoint{Mil(100), Mil(550)}));
  u1.FlipComponent();
  EXPECT_EQ(u1.data.rotation, 90);
  EXPECT_TRUE(u1.NameText()->data.mirrored);
  EXPECT_EQ(pad.state.layer, TV7_Layer(eV6_BottomLayer));
  u1.SetLayer(eV6_TopLayer, true);
  EXPECT_EQ(pad.state.layer, TV7_Layer(eV6_TopLayer));
  EXPECT_EQ(pad.data.center, (TCoordPoint{Mil(100), Mil(550)}));
  EXPECT_FALSE(u1.NameText()->data.mirrored);
  EXPECT_TRUE(u1.file_changed && pad.file_changed);
  EXPECT_FALSE(Find<Track>(*board)->file_changed);
}

TEST(Component, PutsItsTextBesideItsBox) {
  const Ref<Board> board = BoardFromText("component U1 at 500,500 rot 180 { pad 0,0 200x100 rect top }");
  Component& u1 = *Find<Component>(*board);
  Text& name = *u1.NameText();  // 2 letters of 60 mil with a stroke of 10: 130 by 70
  struct Row {
    TTextAutoposition position;
    double x1, y1;  // of the text's box
  };
  const Row rows[] = {
      {eAutoPos_TopLeft, 400, 560},   {eAutoPos_CenterLeft, 260, 465},   {eAutoPos_BottomLeft, 400, 370},
      {eAutoPos_TopCenter, 435, 560}, {eAutoPos_CenterCenter, 435, 465}, {eAutoPos_BottomCenter, 435, 370},
      {eAutoPos_TopRight, 470, 560},  {eAutoPos_CenterRight, 610, 465},  {eAutoPos_BottomRight, 470, 370}};
  for (const Row& row : rows) {
    bool placed = false;
    ASSERT_EQ(u1.PlaceNameAutoposition(row.position, placed), Status::Ok);
    EXPECT_TRUE(placed);
    EXPECT_EQ(name.data.rotation, 0);
    EXPECT_EQ(name.Bounds(), (TCoordRect{Mil(row.x1), Mil(row.y1), Mil(row.x1 + 130), Mil(row.y1 + 70)}))
        << row.position;
  }
  bool placed = true;
  u1.PlaceNameAutoposition(eAutoPos_Manual, placed);
  EXPECT_FALSE(placed);
  placed = true;
  u1.PlaceCommentAutoposition(eAutoPos_TopLeft, placed);
  EXPECT_FALSE(placed) << "there is no comment";
}

// Under the sanitizers this finds every sum that overflows.
TEST(Limits, OfCoordinatesAreNoTrouble) {
  constexpr TCoord kLow = std::numeric_limits<TCoord>::min(), kHigh = std::numeric_limits<TCoord>::max();
  const Ref<Board> board = BoardFromText("component U1 at 0,0 { pad 1,1 9x9 name 1 net A }");
  Component& u1 = *Find<Component>(*board);
  const auto add = [&](auto object, auto&& fill) {
    fill(object->data);
    u1.AddMember(object.Get());
    object->SetNet(board->FindNet(u"A"));
  };
  add(MakeHost<Track>(), [&](TrackData& d) { d = {{kLow, kLow}, {kHigh, kHigh}, kHigh}; });
  add(MakeHost<Arc>(), [&](ArcData& d) { d = {{kHigh, kLow}, kHigh, -1e300, 1e300, kHigh}; });
  add(MakeHost<Via>(), [&](ViaData& d) { d.center = {kLow, kHigh}, d.size = kHigh; });
  add(MakeHost<Fill>(), [&](FillData& d) { d = {{kLow, kLow, kHigh, kHigh}, 45}; });
  add(MakeHost<Text>(), [&](TextData& d) {
    d.string = u"MM", d.anchor = {kHigh, kHigh}, d.size = d.letter_width = kHigh;
  });
  add(MakeHost<Region>(), [&](RegionData& d) {
    d.rings = {{{{kLow, kLow}, {kHigh, kLow}, {kLow, kHigh}}, false}};
  });
  add(MakeHost<Pad>(), [&](PadData& d) {
    d.center = {kLow, kLow};
    d.rotation = std::numeric_limits<double>::quiet_NaN();
    d.stack.front().x_size = kHigh;
    d.stack.front().offset = {kLow, kLow};
    d.stack.front().custom = {{{kLow, kLow}, {kHigh, 0}}};
  });
  for (const double degrees : {0.0, 90.0, 30.0, -1e300}) {
    for (const TCoord place : {kLow, TCoord{0}, kHigh}) {
      u1.RotateAroundXY(place, -(place + 1), degrees);
      u1.MoveToXY(place, place);
      u1.MoveByXY(place, place);
      u1.FlipComponent();
      bool placed = false;
      u1.PlaceNameAutoposition(eAutoPos_TopLeft, placed);
      TCoordRect box;
      EXPECT_EQ(u1.GetState_BoundingRectangle(box), Status::Ok);
      EXPECT_LE(box.x1, box.x2);
      double length = 0;
      EXPECT_EQ(board->FindNet(u"A")->GetState_RoutedLength(length), Status::Ok);
    }
  }
}

}  // namespace
}  // namespace Tests
}  // namespace Ketril
