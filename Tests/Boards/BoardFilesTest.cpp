// Every board file of a folder, read, changed and written: `BoardsTests --boards DIR`.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <random>
#include <sstream>

#include "Editor/Files/BoardFile.h"
#include "Editor/Files/SExpression.h"
#include "Tests/Boards/PlacementRoundTrip.h"
#include "Tests/Boards/ToolRuns.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tests {
namespace {

using namespace Editor;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::vector<Primitive*> FreeObjects(const Board& board) {
  std::vector<Primitive*> objects;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    if (!object.Owner() && object.kind != eNetObject && object.kind != eClassObject)
      objects.push_back(&object);
  });
  return objects;
}

class BoardFile : public testing::Test {
 public:
  explicit BoardFile(std::filesystem::path path) : path_(std::move(path)) {}

 protected:
  // Alone: what stands beside it is no part of what is written.
  void SetUp() override { board_ = ReadBoardText(ReadBoard(path_)->file.text); }

  // Reads what is written now, and compares it.
  void ExpectReadsBack(double tolerance) {
    const std::string text = WriteBoardText(*board_);
    const Ref<Board> again = ReadBoardText(text);
    EXPECT_EQ(Differences(DescribeBoard(*board_), DescribeBoard(*again), tolerance), "");
  }

  std::filesystem::path path_;
  Ref<Board> board_;
};

class Unchanged final : public BoardFile {
 public:
  using BoardFile::BoardFile;
  void TestBody() override {
    EXPECT_TRUE(WriteBoardText(*board_) == board_->file.text);
    // Every word compared with its field: none is replaced.
    board_->objects.ForEach(TObjectSet::All(), [](Primitive& object) { object.file_changed = true; });
    EXPECT_TRUE(WriteBoardText(*board_) == board_->file.text);
  }
};

class OneMoved final : public BoardFile {
 public:
  using BoardFile::BoardFile;
  void TestBody() override {
    const std::vector<std::string> before = Lines(board_->file.text);
    const std::vector<Primitive*> objects = FreeObjects(*board_);
    for (std::size_t i = 0; i < objects.size(); i += 1 + objects.size() / 12) {
      Primitive& object = *objects[i];
      object.Write([&] { object.Move(31, -17); });
      const std::vector<std::string> after = Lines(WriteBoardText(*board_));
      const std::string& text = board_->file.text;
      const auto first = std::count(text.begin(), text.begin() + object.source.begin, '\n');
      const auto last = std::count(text.begin(), text.begin() + object.source.end, '\n');
      ASSERT_EQ(before.size(), after.size()) << Describe(object);
      int changed = 0;
      for (std::size_t line = 0; line < before.size(); ++line) {
        if (before[line] == after[line]) continue;
        ++changed;
        EXPECT_TRUE(static_cast<long>(line) >= first && static_cast<long>(line) <= last) << after[line];
      }
      EXPECT_GT(changed, 0) << Describe(object);
      // A footprint stores its members relative to itself. (Zones in one are not, and some letters'
      // outlines.)
      if (object.kind == eComponentObject && text.find("render_cache") == std::string::npos) {
        EXPECT_EQ(changed, 1) << Describe(object);
      }
      object.Write([&] { object.Move(-31, 17); });
      EXPECT_TRUE(WriteBoardText(*board_) == text) << Describe(object);
    }
  }
};

class AllMoved final : public BoardFile {
 public:
  using BoardFile::BoardFile;
  void TestBody() override {
    std::mt19937 random(7);
    std::uniform_int_distribution<TCoord> way(-1000000, 1000000);
    for (Primitive* object : FreeObjects(*board_)) {
      const TCoord dx = way(random), dy = way(random);
      object->Write([&] { object->Move(dx, dy); });
    }
    ExpectReadsBack(0);
  }
};

class AllTurned final : public BoardFile {
 public:
  using BoardFile::BoardFile;
  void TestBody() override {
    int n = 0;
    board_->objects.ForEach({eComponentObject}, [&](Primitive& object) {
      auto& component = static_cast<Component&>(object);
      constexpr double kAngles[] = {90, 33.3, 180, -45};
      component.WriteWithMembers([&] {
        component.Rotate(component.data.reference, kAngles[n % 4]);
        if (n++ % 3 == 0) component.Flip();
      });
    });
    ExpectReadsBack(4);
  }
};

// Turned over and back again.
class FlippedTwice final : public BoardFile {
 public:
  using BoardFile::BoardFile;
  void TestBody() override {
    board_->objects.ForEach({eComponentObject}, [&](Primitive& object) {
      auto& component = static_cast<Component&>(object);
      ASSERT_EQ(component.FlipComponent(), Status::Ok);
    });
    ExpectReadsBack(4);
    board_->objects.ForEach({eComponentObject}, [&](Primitive& object) {
      ASSERT_EQ(static_cast<Component&>(object).FlipComponent(), Status::Ok);
    });
    const auto before = Lines(board_->file.text), after = Lines(WriteBoardText(*board_));
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t line = 0; line < before.size(); ++line)
      ASSERT_EQ(before[line], after[line]) << "line " << line + 1;
  }
};

class Thinned final : public BoardFile {
 public:
  using BoardFile::BoardFile;
  void TestBody() override {
    std::vector<Ref<Primitive>> removed;  // held: a room goes with the zone that draws it
    for (Primitive* object : FreeObjects(*board_)) removed.emplace_back(object);
    for (std::size_t i = 0; i < removed.size(); i += 2) board_->Remove(removed[i].Get());
    ExpectReadsBack(0);
  }
};

class CutOff final : public BoardFile {
 public:
  using BoardFile::BoardFile;
  void TestBody() override {
    const std::string& text = board_->file.text;
    std::mt19937 random(11);
    std::uniform_int_distribution<std::size_t> places(1, text.find_last_of(')'));
    for (int i = 0; i < 40; ++i) {
      const std::size_t length = places(random);
      try {
        (void)ReadBoardText(text.substr(0, length), "cut");
        ADD_FAILURE() << "no error at " << length;
      } catch (const FileError& error) {
        EXPECT_GT(error.line, 0u);
        EXPECT_GT(error.column, 0u);
      }
    }
  }
};

template <class Check>
void Register(const char* name, const std::filesystem::path& path) {
  const std::string board = path.parent_path().filename() / path.stem();
  testing::RegisterTest("Boards", (std::string(name) + "/" + board).c_str(), nullptr, nullptr, __FILE__,
                        __LINE__, [path]() -> testing::Test* { return new Check(path); });
}

int Run(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 3 || std::string_view(argv[1]) != "--boards") {
    std::cerr << "usage: BoardsTests --boards DIR\n";
    return 2;
  }
  int boards = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[2])) {
    if (entry.path().extension() != ".kicad_pcb") continue;
    ++boards;
    Register<Unchanged>("Unchanged", entry.path());
    Register<OneMoved>("OneMoved", entry.path());
    Register<AllMoved>("AllMoved", entry.path());
    Register<AllTurned>("AllTurned", entry.path());
    Register<FlippedTwice>("FlippedTwice", entry.path());
    Register<Thinned>("Thinned", entry.path());
    Register<CutOff>("CutOff", entry.path());
    RegisterToolRuns(entry.path());
    RegisterPlacementRoundTrip(entry.path());
  }
  if (boards == 0) {
    std::cerr << "no board file is in " << argv[2] << "\n";
    return 2;
  }
  return RUN_ALL_TESTS();
}

}  // namespace
}  // namespace Ketril::Tests

int main(int argc, char** argv) {
  return Ketril::Tests::Run(argc, argv);
}
