// Placement from files of every kind, good and bad, through the export.
#include "DLLs/Tools/Placement/PlaceFromFile.h"

#include <random>

#include "Editor/Client/Progress.h"
#include "Editor/HostCall.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril::Tools {
namespace {

using Editor::HostGate;

std::string Number(double value) {
  std::ostringstream text;
  text << value;
  return text.str();
}

// The messages by short names, so that rows are short and the sentences stand once.
std::string Short(std::string text) {
  static const std::pair<std::string, std::string> kNames[] = {
      {"Unknown pick and place file format", "unknown"},
      {"Problem encountered with pick and place file, check format.", "problem"},
      {"Invalid data found in pick and place file, some components were skipped, see messages panel for "
       "details\rMake sure any data entries containing spaces are enclosed in quotes",
       "skipped"},
      {"Could not read pick and place file header:", "header:"},
      {"Skipped component ", "-"},
      {", incorrect number of data columns found", " columns"},
      {", invalid data found", " data"},
      {"; skipped; panel", "!"},
      {" column data not found.", "?"}};
  for (const auto& [sentence, name] : kNames) {
    for (std::size_t at = text.find(sentence); at != text.npos; at = text.find(sentence))
      text.replace(at, sentence.size(), name);
  }
  return text;
}

class PlaceFromFileTest : public PlacementBoard {
 protected:
  ~PlaceFromFileTest() override { HostGate::Disarm(); }

  void Place(const std::string& bytes, const std::string& name = "parts.txt") {
    told.clear();
    records.clear();
    const std::filesystem::path file = folder_ / name;
    std::ofstream(file, std::ios::binary) << bytes;
    Tools_PlaceFromFile(board.Get(), file.u16string());
  }
  // "R1 100,200 B 90 1k": where the reference point is, in mil.
  std::string State(std::size_t n) const {
    const auto& component = *Tests::Find<Editor::Component>(*board, n);
    const auto mil = [](TCoord value) { return Number(value / 1e4); };
    std::string text = Platform::ToUtf8(component.Designator()) + " " + mil(component.data.reference.x) +
                       "," + mil(component.data.reference.y) +
                       (component.state.layer == TV7_Layer(eV6_TopLayer) ? " T " : " B ") +
                       Number(component.data.rotation);
    if (const Editor::Text* comment = component.CommentText())
      text += " " + Platform::ToUtf8(comment->data.string);
    return text;
  }

  std::string told;  // in short, "; " between
  std::string records;

  const Tests::TempFolder folder_;

 private:
  void Tell(const std::u16string& text) {
    told = Short(told + (told.empty() ? "" : "; ") + Platform::ToUtf8(text));
  }
  Editor::ClientSetup UserOfFiles() {
    Editor::ClientSetup setup = User();
    setup.show_message = [this](const std::u16string& text, Platform::TDialogKind kind) {
      EXPECT_EQ(kind, Platform::TDialogKind::Error);
      Tell(text);
    };
    setup.messages.add = [this](const Editor::PanelMessage& message) {
      EXPECT_EQ(message.message_class, u"[Warning]");
      EXPECT_EQ(message.source, u"Place From File");
      EXPECT_EQ(message.image, 72);
      Tell(message.text);
    };
    setup.messages.show = [this] { Tell(u"panel"); };
    setup.record_placement = [this](const Editor::PlacementLine& line) {
      records += std::to_string(line.line) + Platform::ToUtf8(line.designator) + "PULCI"[line.outcome];
    };
    return setup;
  }
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(UserOfFiles())};
};

constexpr const char* kBoard = R"(
  component R1 at 100,100 { pad -50,0 60x60 top name 1; pad 50,0 60x60 top name 2; text 0,80 "1k" comment }
  component J1 at 900,100 locked { pad 0,0 60x60 }
)";

// Behind the title and the units, up to the data.
std::string Headed(const std::string& data, const std::string& units = "mil",
                   const std::string& names = "Designator Comment Layer Center-X Center-Y Rotation") {
  return "Norvan Studio Pick and Place Locations\nx\nUnits used: " + units + "\n\n" + names + "\n" + data;
}
std::string Blanks(const std::string& data) {
  return "Designator Pattern Mid X\n" + data;
}
std::string Csv(const std::string& data) {
  return "\"Designator\",\"Pattern\"\r\n\"\"\r\n" + data;
}

TEST_F(PlaceFromFileTest, EveryFileGetsWhatItDeserves) {
  const struct {
    const char* name;  // "CSV" at its begin is the extension, too
    std::string bytes;
    const char* told;
    const char* after;  // R1; empty: as before
  } rows[] = {
      {"empty", "", "unknown", ""},
      {"another first line", "Part X Y\nR1 1 2\n", "unknown", ""},
      {"title and a blank", "Norvan Studio Pick and Place Locations \n", "unknown", ""},
      {"byte-order mark", "\xEF\xBB\xBF" + Blanks("R1 P 1mil 1mil 0 0 0 0 T 0"), "unknown", ""},
      {"UTF-16", std::string("D\0e\0s\0", 6), "unknown", ""},
      {"quoted, under another extension", Csv(R"("R1","P","1mil","1mil")"), "unknown", ""},
      {"CSV without quotes", "Designator,Pattern\nR1,P,1mil,1mil,0,0,0,0,T,0\n", "", ""},

      {"no units", "Norvan Studio Pick and Place Locations\nUnits used:\nmil\n",
       "header:\rUnits not found in header.", ""},
      {"units without a value", "Norvan Studio Pick and Place Locations\nUnits used: \n\nDesignator\n",
       "header:\rUnits not found in header.", ""},
      {"ends at its units", "Norvan Studio Pick and Place Locations\nUnits used: mm\n",
       "header:\rNo data in file.", ""},
      {"no names of columns", "Norvan Studio Pick and Place Locations\nUNITS USED: mm\n\n",
       "header:\rDesignator?\rCenter-X?\rCenter-Y?\rLayer?\rRotation?\rComment?", ""},
      {"columns of other names", Headed("", "mm", "designator X-Center Center-Y Layers ROTATION Comment"),
       "header:\rCenter-X?\rLayer?", ""},
      {"names in one quote", Headed("", "mm", "\"Designator Center-X Center-Y Layer Rotation Comment"),
       "header:\rDesignator?\rCenter-X?\rCenter-Y?\rLayer?\rRotation?\rComment?", ""},
      {"no line of data", Headed(""), "", ""},
      {"names in any order, with units, twice",
       Headed("x 90 200 \"10 k\" 300 Bot R1 7\n", "mil",
              "Pin ROTATION center-y(mil) \"comment\" 'Center-X [mil]' Layer Designator Rotation"),
       "", "R1 300,200 B 90 10 k"},

      {"blank line", Headed("\nR1 2k T 300 200 0\n"), "- columns!", "R1 300,200 T 0 2k"},
      {"a column too few", Headed("R1 2k T 300 200\n"), "-R1 columns!", ""},
      {"a column too many", Headed("R1 2 k T 300 200 0\n"), "-R1 columns!", ""},
      {"commas part no bare values", Headed("R1,2k,T,300,200,0\n"), "-R1,2k,T,300,200,0 columns!", ""},
      {"quotes and commas", Headed("\"R1\",\"2, k\",\"TopLayer\",\"300\",\"200\",\"0\"\n"), "",
       "R1 300,200 T 0 2, k"},
      {"quotes of both kinds", Headed("'R1' '2\"' T 300 \"200\" 0\n"), "", "R1 300,200 T 0 2\""},
      {"tabs, CR LF, no end of line", Headed("\r\n\t R1\t2k \tT\t300\t200\t180"), "- columns!",
       "R1 300,200 T 180 2k"},
      {"a quote that is not closed", Headed("R1 2k T 300 200 \"0\nR1 \"2k T 300 200 0\n"), "-R1 columns!",
       "R1 300,200 T 0 2k"},
      {"empty rotation in quotes", Headed("R1 2k T 300 200 \"\"\n"), "-R1 data!", ""},
      {"empty designator", Headed("'' 2k T 300 200 0\n"), "- data!", ""},
      {"empty comment", Headed("R1 '' T 300 200 0\n"), "", "R1 300,200 T 0 1k"},
      {"empty coordinate", Headed("R1 2k T \"\" 200 0\n"), "-R1 data!", ""},
      {"coordinate that is none", Headed("R1 2k T 3x0 200 0\nr1 3k T 300 200 0"), "-R1 data!",
       "R1 300,200 T 0 3k"},
      {"rotation that is none", Headed("R1 2k T 300 200 90,5\n"), "", "R1 300,200 T 0 2k"},
      {"unknown, and locked", Headed("R9 2k T 300 200 0\nJ1 2k T 300 200 0\n"), "", ""},
      {"side of neither", Headed("R1 2k left 300 200 0\n"), "", "R1 300,200 T 0 2k"},
      {"side in small letters", Headed("R1 2k bottom 300 200 0\n"), "", "R1 300,200 T 0 2k"},
      {"decimal commas in mm", Headed("R1 2k T 7,62mm 5,08MM 0\n", "mm"), "", "R1 300,200 T 0 2k"},
      {"mils in a file in mm", Headed("R1 2k T 300mil 200mil 0\n", "mm"), "-R1 data!", ""},
      {"unit that nobody knows", Headed("R1 2k T 3in 2 0\n", "in"), "-R1 data!", ""},
      {"NULs between values", Headed(std::string("R1\0 2k T 300 200 0\n", 19)), "", ""},
      {"another code page", Headed("R1 10\xB5 T 300 200 0\n"), "", "R1 300,200 T 0 10\xEF\xBF\xBD"},

      {"fixed columns", Blanks("\nR1 P 300mil 5.08mm 0 0 0 0 B 90 2 k, 5% \n"), "",
       "R1 300,200 B 90 2 k, 5%"},
      {"CSV in name alone, no comment", Blanks("R1\tP  300mil 200mil 0 0 0 0 T 90"), "",
       "R1 300,200 T 90 1k"},
      {"ends before its side", Blanks("R1 P 300mil 200mil 0 0 0 0\nR1 P 1mil 1mil 0 0 0 0 T 0"), "problem",
       "R1 300,200 T 0 1k"},
      {"ends behind its side", Blanks("R1 P 300mil 200mil 0 0 0 0 Top"), "", "R1 300,200 T 0 1k"},
      {"decimal comma", Blanks("R1 P 7,62mm 200mil 0 0 0 0 T 0\n"), "problem", ""},
      {"any side but T is the bottom", Blanks("R1 P 300mil 200mil 0 0 0 0 left 0\n"), "",
       "R1 300,200 B 0 1k"},
      {"a first token that is no component", Blanks("# R1 P 1mil 1mil\nJ1\nR1 P 300mil 200mil 0 0 0 0 T 0\n"),
       "", "R1 300,200 T 0 1k"},
      {"the display unit", Blanks("R1 P 300 200 0 0 0 0 T 0\n"), "", "R1 300,200 T 0 1k"},
      {"CSV", Csv("\"R1\",\"\",\"300mil\",\"200mil\",\"0\",\"0\",\"0\",\"0\",\"T\",\"90\",\"2, k\"\r\n"), "",
       "R1 300,200 T 90 2, k"},
      {"CSV with blanks", Csv("R1 , P, 300mil 200mil,0,0,0,0,B,-90,2k,more\n"), "", "R1 300,200 B 270 2k"},
      {"CSV of empty values without quotes, which are none", Csv("R1,,300mil,200mil,0,0,0,0,T,0\n"), "",
       "R1 200,0 B 180 1k"},
      {"CSV whose quote is not closed", Csv("\"R1,P,300mil,200mil,0,0,0,0,T,0\n"), "", ""},
      {"CSV with an empty side", Csv("R1,P,300mil,200mil,0,0,0,0,\"\",90\n"), "problem", "R1 300,200 T 0 1k"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Load(kBoard);
    Place(row.bytes, std::string(row.name).starts_with("CSV") ? "parts.csv" : "parts.txt");
    EXPECT_EQ(told, row.told);
    EXPECT_EQ(State(0), *row.after ? row.after : "R1 100,100 T 0 1k");
    EXPECT_EQ(State(1), "J1 900,100 T 0");
    EXPECT_FALSE(board->progress->IsOpen());
  }
}

TEST_F(PlaceFromFileTest, FilesThatAreNone) {
  Load(kBoard);
  const std::u16string folder = std::filesystem::temp_directory_path().u16string();
  for (const std::u16string& name :
       {std::u16string(), folder, folder + u"/no/parts.csv", folder + u"/\xD800.csv"}) {
    told.clear();
    Tools_PlaceFromFile(board.Get(), name);
    EXPECT_EQ(told, "unknown");
  }
  EXPECT_EQ(board->document_changed, false);
}

TEST_F(PlaceFromFileTest, KeepsARecordOfItsLines) {
  Load(kBoard);
  Place(Headed("R1 2k T 300 200 0\nR9 2k T 1 1 0\nJ1 2k T 1 1 0\nR1 2k\nR1 2k T 1 x 0\n"));
  EXPECT_EQ(records, "6R1P7R9U8J1L9R1C10R1I");
  Place(Blanks("\nR9\nJ1\nR1 P 1 1 0 0 0 0 T\nR1 P x\nR1 P 2 2 0 0 0 0 T\n"));
  EXPECT_EQ(records, "3R9U4J1L5R1P6R1I") << "a bad coordinate ends the run";
}

// The pads' middle goes to the place, whatever the side and the rotation, and the place is counted from the
// origin.
TEST_F(PlaceFromFileTest, TheMiddleOfThePadsIsOnThePlace) {
  constexpr const char* kLopsided =
      "component U1 at 400,300 pattern R0402 { pad 100,10 60x60 top name 1; pad 300,150 20x40 top name 2; "
      "text 0,90 \"x\" "
      "comment }";
  for (const char* where : {"T 0", "T 90", "B 0", "B 270"}) {
    Load(kLopsided);
    board->setup.origin = {Mil(-1000), Mil(50)};
    Place(Blanks(std::string("U1 P 1500mil 20mil 0 0 0 0 ") + where));
    Editor::Extent pads;
    for (std::size_t n : {0, 1}) pads.Add(Tests::Find<Editor::Pad>(*board, n)->Reference());
    const TCoordRect box = pads.Rect();
    EXPECT_EQ(box.x1 + box.x2, 2 * Mil(500)) << where;
    EXPECT_EQ(box.y1 + box.y2, 2 * Mil(70)) << where;
    EXPECT_TRUE(board->document_changed);
  }
  // Without pads the middle is the board's zero, so the component moves by the place.
  Load("component U1 at 400,300 { track 0,0 9,9 w1 topoverlay }");
  Place(Blanks("U1 P 10mil 20mil 0 0 0 0 T 0"));
  EXPECT_EQ(State(0), "U1 410,320 T 0");
}

// Which calls change the component, in their order.
TEST_F(PlaceFromFileTest, ChangesOnlyWhatDiffers) {
  const auto calls = [&](const std::string& bytes) {
    Load(kBoard);
    HostGate::Arm(true);
    Place(bytes);
    HostGate::Disarm();
    std::string text;
    for (const std::string& call : HostGate::Record()) {
      for (const char* wanted : {"BeginModify", "EndModify", "MoveToXY", "FlipComponent", "RotateAroundXY",
                                 "SetState_String", "Progress.Step"}) {
        if (call.ends_with(wanted)) text += std::string(text.empty() ? "" : " ") + wanted;
      }
    }
    return text;
  };
  EXPECT_EQ(calls(Headed("R1 '' T 100 100 0\n")), "Progress.Step BeginModify EndModify");
  EXPECT_EQ(calls(Headed("R1 2k B 110 100 90\n")),
            "Progress.Step BeginModify MoveToXY FlipComponent RotateAroundXY SetState_String EndModify");
  EXPECT_EQ(calls(Blanks("R1 P 100mil 100mil 0 0 0 0 T 0")), "Progress.Step BeginModify MoveToXY EndModify");
  EXPECT_EQ(calls(Blanks("R1 P 100mil 100mil 0 0 0 0")), "Progress.Step BeginModify MoveToXY EndModify");
  EXPECT_EQ(calls(Blanks("J1 P 100mil 100mil 0 0 0 0\nR9\n")), "");
}

TEST_F(PlaceFromFileTest, ShowsItsProgress) {
  Load(kBoard);
  Editor::ProgressState last;
  Editor::SetProgressSink([&](const Editor::ProgressState& state) { last = state; });
  Place(Headed("R1 2k T 300 200 0\nR9 2k T 1 1 0\nR1 2k T 300 200 0\n"));
  Editor::SetProgressSink(nullptr);
  EXPECT_EQ(last.caption, u"Placing components");
  EXPECT_FALSE(last.running || last.can_cancel);
  EXPECT_EQ(last.maximum, 2);
  EXPECT_EQ(last.position, 2);
  Tools_PlaceFromFile(nullptr, u"nothing");
  EXPECT_EQ(told, "unknown");
}

// Through the files of the pick-and-place report, which have fixed columns.
TEST_F(PlaceFromFileTest, PutsBackWhatWasWrittenDown) {
  constexpr const char* kFour = R"(
    component U1 at 400,300 pattern R0402 { pad 100,10 60x60 top name 1; pad 300,150 20x40 top name 2 }
    component U2 at 900,300 pattern R0402 bottom rot 90 { pad 0,10 60x60 rect top name 1; track 0,0 30,40 w5 topoverlay }
    component U3 at 100,700 pattern R0402 rot 180 { pad -40,0 30x30 top name 1; pad 40,0 30x30 top name 2; text 0,50 "x" comment }
    component U4 at 700,800 pattern R0402 bottom { pad -45,5 30x70 hole 20 name 1; pad 40,0 30x30 hole 20 name 2 })";
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int run = 0; run < 20; ++run) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ", run " + std::to_string(run));
    Load(kFour);
    board->setup.origin = {Mil(123), Mil(-45)};
    Lines before, after;
    for (std::size_t n = 0; n < 4; ++n) before.push_back(State(n));
    board->setup.display_unit = eImperial;
    const std::u16string file = (folder_ / (run % 2 == 0 ? "parts.csv" : "parts.txt")).u16string();
    Tools_ReportPickNPlace(board.Get(), file, run % 2 == 0 ? u"CSV" : u"Text");
    for (std::size_t n = 0; n < 4; ++n) {
      auto& component = *Tests::Find<Editor::Component>(*board, n);
      if (random() % 2) component.FlipComponent();
      component.RotateAroundXY(static_cast<TCoord>(random() % 5000000), 7,
                               static_cast<double>(random() % 4) * 90);
      component.MoveByXY(static_cast<TCoord>(random() % 5000000), static_cast<TCoord>(random() % 5000000));
    }
    Tools_PlaceFromFile(board.Get(), file);
    for (std::size_t n = 0; n < 4; ++n) after.push_back(State(n));
    EXPECT_EQ(after, before);
    EXPECT_EQ(told, "");
  }
}

}  // namespace
}  // namespace Ketril::Tools
