#include "Tests/Boards/PlacementRoundTrip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Model/Component.h"
#include "Interfaces/Tools.h"
#include "Platform/Text.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril::Tests {

namespace {

using Editor::Board;
using Editor::Component;
using Editor::Primitive;

struct Pose {
  TCoordPoint middle;  // of the pads' box
  TV7_Layer side;
  double rotation;
};

// The middle is that of the places of the pads. Of those that a file can name and move: unlocked ones with
// pads, and a name of their own that is no blank's prey.
std::map<Component*, Pose> Poses(const Board& board) {
  std::map<std::u16string, int> names;
  std::map<Component*, Pose> poses;
  board.objects.ForEach({eComponentObject},
                        [&](Primitive& object) { ++names[Editor::As<Component>(&object)->Designator()]; });
  board.objects.ForEach({eComponentObject}, [&](Primitive& object) {
    auto* const component = Editor::As<Component>(&object);
    const std::u16string name = component->Designator();
    TCoord x1 = INT32_MAX, y1 = INT32_MAX, x2 = INT32_MIN, y2 = INT32_MIN;
    for (const Ref<Primitive>& member : component->Members()) {
      if (member->kind != ePadObject) continue;
      const TCoordPoint place = member->Reference();
      x1 = std::min(x1, place.x), y1 = std::min(y1, place.y);
      x2 = std::max(x2, place.x), y2 = std::max(y2, place.y);
    }
    if (x1 > x2 || component->Has(Editor::kFlag_Locked) || names[name] > 1 || name.empty() ||
        name.find_first_of(u" \t\"") != name.npos || name.size() > 8)
      return;
    poses[component] = {{x1 / 2 + x2 / 2, y1 / 2 + y2 / 2}, component->state.layer, component->data.rotation};
  });
  return poses;
}

void Scatter(const std::map<Component*, Pose>& poses, std::mt19937& random) {
  std::uniform_int_distribution<TCoord> away(-4000000, 4000000);
  std::uniform_real_distribution<double> turn(0, 360);
  for (const auto& [component, pose] : poses) {
    component->RotateAroundXY(pose.middle.x, pose.middle.y, turn(random));
    if (random() % 2 == 0) component->FlipComponent();
    component->MoveByXY(away(random), away(random));
  }
}

class PlacementRoundTrip final : public testing::Test {
 public:
  explicit PlacementRoundTrip(std::filesystem::path path) : path_(std::move(path)) {}
  ~PlacementRoundTrip() override { Tools::ReleasePCBServer(); }

  // The reader turns a component about the middle that its pads' box had before the turn. Turned by no right
  // angle, a part that is not symmetrical then has its middle elsewhere: reading the file again mends that.
  void TestBody() override {
    std::mt19937 random(20261123);
    for (const auto& [format, name] : {std::pair{u"CSV", "parts.csv"}, {u"Text", "parts.txt"}}) {
      for (const TUnit unit : {eMetric, eImperial}) {
        const Ref<Board> board = Editor::ReadBoard(path_);
        board->setup.display_unit = unit;
        const auto before = Poses(*board);
        ASSERT_FALSE(before.empty());
        const TempFolder folder;
        const std::u16string file = (folder / name).u16string();
        Tools_ReportPickNPlace(board.Get(), file, format);
        Scatter(before, random);
        for (int reading = 0; reading < 2; ++reading) Tools_PlaceFromFile(board.Get(), file);
        ExpectSame(before, Poses(*board), name);
      }
    }
  }

 private:
  // Metric files give tenths of a micrometre at worst, imperial ones thousandths of a mil; box and pads
  // round.
  static void ExpectSame(const std::map<Component*, Pose>& before, const std::map<Component*, Pose>& after,
                         const char* file) {
    constexpr double kLength = 200, kAngle = 0.0051;
    for (const auto& [component, pose] : before) {
      const Pose& now = after.at(component);
      const double turned = std::abs(std::remainder(now.rotation - pose.rotation, 360));
      EXPECT_TRUE(std::abs(now.middle.x - pose.middle.x) <= kLength &&
                  std::abs(now.middle.y - pose.middle.y) <= kLength && now.side == pose.side &&
                  turned <= kAngle)
          << file << " " << Platform::ToUtf8(component->Designator()) << " off by "
          << now.middle.x - pose.middle.x << "," << now.middle.y - pose.middle.y << " turned " << turned;
    }
  }

  std::filesystem::path path_;
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(Editor::ClientSetup{})};
};

}  // namespace

void RegisterPlacementRoundTrip(const std::filesystem::path& path) {
  const std::string board = path.parent_path().filename() / path.stem();
  testing::RegisterTest("Tools", ("PlacementRoundTrip/" + board).c_str(), nullptr, nullptr, __FILE__,
                        __LINE__, [path]() -> testing::Test* { return new PlacementRoundTrip(path); });
}

}  // namespace Ketril::Tests
