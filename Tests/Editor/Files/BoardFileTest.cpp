#include "Editor/Files/BoardFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <sstream>

#include "Editor/Files/FileStyle.h"
#include "Editor/Files/SExpression.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/DescribeBoard.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril::Tests {
namespace {

using namespace Editor;

constexpr TCoord Mm(double mm) {
  return ToUnits(static_cast<Nanometres>(mm * 1e6 + (mm < 0 ? -0.5 : 0.5)));
}

// A board of few words around some objects.
std::string BoardText(int version, const std::string& objects) {
  const char* const head = version < 20200628 ? R"(
  (layers (0 Front signal) (1 Inner power) (31 Back signal) (37 F.SilkS user) (36 B.SilkS user) (44 Edge.Cuts user))
  (net 0 "") (net 1 GND) (net 2 +5V)
  (net_class Default "" (clearance 0.2) (via_drill 0.4) (add_net GND))
)"
                                              : R"(
	(layers (0 "F.Cu" signal "Front") (4 "In1.Cu" power) (2 "B.Cu" signal) (37 "F.SilkS" user) (44 "Edge.Cuts" user))
	(setup (aux_axis_origin 10 20))
	(net 0 "") (net 1 "GND") (net 2 "+5V")
)";
  return "(kicad_pcb (version " + std::to_string(version) + ")" + head + objects + "\n)\n";
}

Ref<Board> Read(int version, const std::string& objects) {
  return ReadBoardText(BoardText(version, objects), "board");
}

template <class T>
auto& Data(const Ref<Board>& board, std::size_t n = 0) {
  T* const object = Find<T>(*board, n);
  if (!object) throw std::runtime_error("no such object");
  return object->data;
}

// A file of lengths that no program reads would be the end of the board.
TEST(BoardFile, IsNotWrittenWithObjectsOutOfReach) {
  const Ref<Board> board = BoardFromText("track 0,0 10,0 w10 top");
  auto* const track = Find<Track>(*board);
  track->Write([&] { track->data.p2.x = kMaxUnits - Mm(100); });
  EXPECT_NO_THROW(ReadBoardText(WriteBoardText(*board)));
  track->Write([&] { track->data.p2.x = kMaxUnits; });
  try {
    WriteBoardText(*board);
    FAIL();
  } catch (const FileError& error) {
    EXPECT_NE(std::string(error.what()).find("Track (0mil,0mil)"), std::string::npos) << error.what();
  }
}

TEST(BoardFile, ReadsObjects) {
  struct Case {
    const char* name;
    int version;
    const char* text;
    std::function<bool(const Ref<Board>&)> holds;
  };
  const Case cases[] = {
      {"a member of a turned footprint on the back", 20171130,
       "(module L:R (layer Back) (at 10 20 90) (pad 1 smd rect (at 1 0.5 180) (size 1 2) (layers Back "
       "B.Mask)))",
       [](auto& b) {
         const PadData& pad = Data<Pad>(b);
         return pad.center == TCoordPoint{Mm(10.5), Mm(-19)} && pad.rotation == 180 &&
                Find<Pad>(*b)->state.layer == TV7_Layer(eV6_BottomLayer) &&
                Find<Component>(*b)->Members().size() == 1;
       }},
      {"a member before its footprint's place", 20211014,
       R"((footprint "R" (layer "F.Cu") (fp_line (start 1 0) (end 2 0) (layer "F.SilkS") (width 0.1)) (at 10 20)))",
       [](auto& b) {
         return Data<Track>(b).p1 == TCoordPoint{Mm(11), Mm(-20)};
       }},
      {"the texts of a footprint", 20171130,
       "(module R (layer Front) (at 0 0) (fp_text reference R1 (at 0 0) (layer F.SilkS) hide) (fp_text value "
       "10k (at 0 0)"
       " (layer F.SilkS)) (fp_text user %R (at 0 0) (layer F.SilkS) (effects (font (size 1 2)) (justify left "
       "mirror))))",
       [](auto& b) {
         const TextData& user = Data<Text>(b, 2);
         const Component& part = *Find<Component>(*b);
         return part.Designator() == u"R1" && part.NameText()->Has(kFlag_Hidden) &&
                part.CommentText()->data.string == u"10k" && user.string == u"${REFERENCE}" &&
                user.size == Mm(1) && user.letter_width == Mm(2) && user.width == Mm(0.125) &&
                user.mirrored && user.horizontal == TextAlign::Low;
       }},
      {"properties as texts", 20240108,
       R"((footprint "R" (layer "F.Cu") (at 0 0) (property "Reference" "U1" (at 0 0 0) (layer "F.SilkS") (hide yes))
          (property "Sheet" "x")))",
       [](auto& b) {
         return Find<Component>(*b)->Designator() == u"U1" && b->objects.Count(eTextObject) == 1;
       }},
      {"a drawn arc by centre and angle", 20171130,
       "(gr_arc (start 0 0) (end 1 0) (angle -90) (layer Edge.Cuts) (width 0.1))",
       [](auto& b) {
         const ArcData& arc = Data<Arc>(b);
         return arc.radius == Mm(1) && arc.angle1 == 0 && arc.angle2 == 90;
       }},
      {"a clockwise arc by three points", 20211014,
       R"((arc (start 0 -1) (mid 0.707107 -0.707107) (end 1 0) (width 0.2) (layer "F.Cu") (net 1)))",
       [](auto& b) {
         // At this radius a unit is 1.5e-4 degrees, and each point may be off by one.
         const ArcData& arc = Data<Arc>(b);
         return std::abs(arc.radius - Mm(1)) <= 1 && std::abs(std::remainder(arc.angle1, 360)) < 3e-4 &&
                std::abs(arc.angle2 - 90) < 3e-4;
       }},
      {"an arc that is straight", 20211014,
       R"((arc (start 0 0) (mid 1 0) (end 2 0) (width 0.2) (layer "F.Cu") (net 1)))",
       [](auto& b) {
         return Data<Track>(b).p2 == TCoordPoint{Mm(2), 0};
       }},
      {"a filled circle covers its disc", 20211014,
       R"((gr_circle (center 0 0) (end 1 0) (layer "F.Cu") (width 0.2) (fill solid)))",
       [](auto& b) { return Data<Arc>(b).radius == Mm(0.55) && Data<Arc>(b).width == Mm(1.1); }},
      {"a via without a drill has its net class's", 20171130,
       "(via (at 1 2) (size 0.8) (layers Front Back) (net 1))",
       [](auto& b) { return Data<Via>(b).hole == Mm(0.4); }},
      {"a blind via named from below", 20211014,
       R"((via blind locked (at 1 2) (size 0.8) (drill 0.3) (layers "B.Cu" "In1.Cu") (free) (net 2)))",
       [](auto& b) {
         const Via& via = *Find<Via>(*b);
         return via.data.low == TV7_Layer(eV6_MidLayer1) && via.data.high == TV7_Layer(eV6_BottomLayer) &&
                via.Has(kFlag_Locked) && via.GetNet()->data.name == u"+5V";
       }},
      {"a locked track by its status", 20171130,
       "(segment (start 0 0) (end 1 1) (width 0.2) (layer Inner) (net 1) (status 40010))",
       [](auto& b) {
         return Find<Track>(*b)->Has(kFlag_Locked) &&
                Find<Track>(*b)->state.layer == TV7_Layer(eV6_MidLayer1);
       }},
      {"a slot, upright and off the centre", 20211014,
       R"((footprint "J" (layer "F.Cu") (at 0 0) (pad "" np_thru_hole oval (at 0 0) (size 1 2)
          (drill oval 0.5 1 (offset 0.1 0.2)) (layers "*.Cu" "*.Mask"))))",
       [](auto& b) {
         const Pad& pad = *Find<Pad>(*b);
         return pad.data.hole == Mm(0.5) && pad.data.hole_width == Mm(1) && pad.data.hole_rotation == 90 &&
                !pad.data.plated && pad.data.stack[0].offset == TCoordPoint{Mm(0.1), Mm(-0.2)} &&
                pad.state.layer == TV7_Layer(eV6_MultiLayer) && pad.data.layers.empty();
       }},
      {"a custom pad and the margins of its footprint", 20211014,
       R"((footprint "J" (layer "F.Cu") (at 0 0) (solder_mask_margin 0.1) (pad "1" smd custom (at 0 0) (size 1 1)
          (layers "F.Paste") (options (anchor rect)) (primitives (gr_poly (pts (xy 0 0) (xy 1 0) (xy 1 1)) (width 0))))))",
       [](auto& b) {
         const PadData& pad = Data<Pad>(b);
         return pad.stack[0].shape == eRectangular && pad.stack[0].custom.size() == 1 &&
                pad.stack[0].custom[0][2] == TCoordPoint{Mm(1), Mm(-1)} && pad.mask.solder == Mm(0.1);
       }},
      {"sizes by layer", 20241229,
       R"((via (at 0 0) (size 0.5) (drill 0.2) (layers "F.Cu" "B.Cu") (padstack (mode front_inner_back)
          (layer "Inner" (size 0.4)) (layer "B.Cu" (size 0.6))) (net 0)))",
       [](auto& b) {
         const Via& via = *Find<Via>(*b);
         return via.SizeOn(eV6_TopLayer) == Mm(0.5) && via.SizeOn(eV6_MidLayer1) == Mm(0.4) &&
                via.SizeOn(eV6_BottomLayer) == Mm(0.6) && !via.GetNet();
       }},
      {"a zone, its hole and its stroked fill", 20171130,
       "(zone (net 1) (net_name GND) (layer Back) (connect_pads yes (clearance 0.3)) (min_thickness 0.2) "
       "(fill yes)"
       " (polygon (pts (xy 0 0) (xy 9 0) (xy 9 9))) (polygon (pts (xy 5 1) (xy 6 1) (xy 6 2)))"
       " (filled_polygon (pts (xy 0 0) (xy 9 0) (xy 9 9))))",
       [](auto& b) {
         const Region& fill = *Find<Region>(*b);
         return Data<Polygon>(b).rings.size() == 2 && Data<Polygon>(b).rings[1].hole &&
                Data<Polygon>(b).solid_connect && fill.data.line_width == Mm(0.2) && fill.GetNet() &&
                fill.state.layer == TV7_Layer(eV6_BottomLayer);
       }},
      {"a teardrop is no polygon", 20221018,
       R"((zone (net 1) (net_name "GND") (layer "F.Cu") (attr (teardrop (type padvia))) (filled_areas_thickness no)
          (polygon (pts (xy 0 0) (xy 1 0) (xy 1 1))) (filled_polygon (layer "F.Cu") (pts (xy 0 0) (xy 1 0) (xy 0.9 1)))))",
       [](auto& b) {
         return Find<Region>(*b)->Has(kFlag_TearDrop) && b->objects.Count(ePolyObject) == 0 &&
                Data<Region>(b).rings[0].points[2] == TCoordPoint{Mm(0.9), Mm(-1)};
       }},
      {"a net that the table lacks", 20211014,
       R"((segment (start 0 0) (end 1 1) (width 0.2) (layer "F.Cu") (net 7)))",
       [](auto& b) { return Find<Track>(*b)->GetNet()->data.name == u"Net-7"; }},
      {"layers, their names and the origin", 20211014, "",
       [](auto& b) {
         return b->CopperLayers().size() == 3 && b->FindLayer(eV6_TopLayer)->user_name == u"Front" &&
                b->setup.origin == TCoordPoint{Mm(10), Mm(-20)} &&
                b->FindLayer(kEdgeLayer)->file_number == 44;
       }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const Ref<Board> board = Read(c.version, c.text);
    EXPECT_TRUE(c.holds(board));
    board->objects.ForEach(TObjectSet::All(), [](Primitive& object) { object.file_changed = true; });
    EXPECT_EQ(WriteBoardText(*board), board->file.text);
  }
}

// Lines that are in one text only.
std::string Difference(const std::string& before, const std::string& after) {
  std::string difference;
  const auto add = [&](const char* mark, const std::string& from, const std::string& other) {
    std::istringstream stream(from);
    for (std::string line; std::getline(stream, line);) {
      if (("\n" + other).find("\n" + line + "\n") == std::string::npos) difference += mark + line + "\n";
    }
  };
  add("- ", before, after);
  add("+ ", after, before);
  return difference;
}

constexpr char kChanged[] = R"(  (footprint "L:R" (layer "F.Cu")
    (tstamp 11111111-0000-4000-8000-000000000001)
    (at 10 20)
    (pad "1" smd rect (at 1.000 0) (size 1 2) (layers "F.Cu" "F.Paste" "F.Mask")
      (net 1 "GND") (unknown "(" x))
    (pad "2" smd rect (at -1 0) (size 1 2) (layers "F.Cu" "F.Paste" "F.Mask"))
  )
  (segment (start 1.10 2.20) (end 3 4) (width 0.25) (layer "F.Cu") (net 1) (tstamp 22222222-0000-4000-8000-000000000002))
  (via (at 5 6) (size 0.8) (drill 0.4) (layers "F.Cu" "B.Cu") (net 1) (tstamp 33333333-0000-4000-8000-000000000003)))";

const std::string kTrackGone =
    R"(-   (segment (start 1.10 2.20) (end 3 4) (width 0.25) (layer "F.Cu") (net 1) (tstamp 22222222-0000-4000-8000-000000000002))
)";

TEST(BoardFile, ChangesOnlyTheWordsThatDiffer) {
  struct Case {
    const char* name;
    std::function<void(Board&)> change;
    std::string difference;
  };
  const auto track = [](Board& b, auto edit) { Find<Track>(b)->Write([&] { edit(*Find<Track>(b)); }); };
  const Case cases[] = {
      {"one coordinate", [&](Board& b) { track(b, [](Track& t) { t.data.p1.y += Mm(1); }); },
       kTrackGone + "+   (segment (start 1.10 1.2) (end 3 4) (width 0.25) (layer \"F.Cu\") (net 1) (tstamp "
                    "22222222-0000-4000-8000-000000000002))\n"},
      {"layer, net and lock",
       [&](Board& b) {
         track(b, [&](Track& t) {
           t.state.layer = eV6_BottomLayer;
           t.SetNet(nullptr);
           t.Set(kFlag_Locked, true);
         });
       },
       kTrackGone +
           "+   (segment locked (start 1.10 2.20) (end 3 4) (width 0.25) (layer \"B.Cu\") (net 0) (tstamp "
           "22222222-0000-4000-8000-000000000002))\n"},
      {"a removed object", [](Board& b) { b.Remove(Find<Track>(b)); }, kTrackGone},
      {"a moved footprint",
       [](Board& b) { Find<Component>(b)->WriteWithMembers([&] { Find<Component>(b)->Move(Mm(1), 0); }); },
       "-     (at 10 20)\n+     (at 11 20)\n"},
      {"a turned footprint",
       [](Board& b) {
         Find<Component>(b)->WriteWithMembers([&] { Find<Component>(b)->Rotate({Mm(10), Mm(-20)}, 90); });
       },
       "-     (at 10 20)\n"
       "-     (pad \"1\" smd rect (at 1.000 0) (size 1 2) (layers \"F.Cu\" \"F.Paste\" \"F.Mask\")\n"
       "-     (pad \"2\" smd rect (at -1 0) (size 1 2) (layers \"F.Cu\" \"F.Paste\" \"F.Mask\"))\n"
       "+     (at 10 20 90)\n"
       "+     (pad \"1\" smd rect (at 1.000 0 90) (size 1 2) (layers \"F.Cu\" \"F.Paste\" \"F.Mask\")\n"
       "+     (pad \"2\" smd rect (at -1 0 90) (size 1 2) (layers \"F.Cu\" \"F.Paste\" \"F.Mask\"))\n"},
      {"a renamed net", [](Board& b) { Find<Net>(b)->Write([&] { Find<Net>(b)->data.name = u"A B"; }); },
       "-   (net 1 \"GND\")\n-       (net 1 \"GND\") (unknown \"(\" x))\n"
       "+   (net 1 \"A B\")\n+       (net 1 \"A B\") (unknown \"(\" x))\n"},
      {"a removed member", [](Board& b) { b.Remove(Find<Pad>(b, 1)); },
       "-     (pad \"2\" smd rect (at -1 0) (size 1 2) (layers \"F.Cu\" \"F.Paste\" \"F.Mask\"))\n"},
      {"a member of a component that went",
       [](Board& b) {
         Find<Component>(b)->WriteWithMembers([&] { Find<Component>(b)->RemoveMember(Find<Pad>(b, 1)); });
         b.Remove(Find<Component>(b));
         b.Remove(Find<Pad>(b));
       },
       ""},
      {"a new via of a new net",
       [](Board& b) {
         const Ref<Net> net = MakeHost<Net>();
         net->data.name = u"NEW";
         b.Add(net.Get());
         const Ref<Via> via = MakeHost<Via>();
         via->data.center = {Mm(1), Mm(-1)};
         via->SetUniqueId(u"44444444-0000-4000-8000-000000000004");
         via->SetNet(net.Get());
         b.Add(via.Get());
       },
       "+   (net 3 \"NEW\")\n"
       "+   (via (at 1 1) (size 1.27) (drill 0.7112) (layers \"F.Cu\" \"B.Cu\") (net 3) (tstamp "
       "44444444-0000-4000-8000-000000000004))\n"},
  };
  std::string head = BoardText(20211014, "");
  for (std::size_t at; (at = head.find(") (net ")) != std::string::npos;) head.replace(at, 2, ")\n  ");
  const std::string text = head.substr(0, head.rfind("\n)")) + kChanged + "\n)\n";
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const Ref<Board> board = ReadBoardText(text);
    board->journal.Begin();
    c.change(*board);
    const std::string after = WriteBoardText(*board);
    if (!c.difference.empty()) {
      EXPECT_EQ(Difference(text, after), c.difference);
    }
    EXPECT_EQ(Differences(DescribeBoard(*board, true), DescribeBoard(*ReadBoardText(after), true)), "");
    board->journal.Undo();
    if (c.difference.starts_with("-")) {
      EXPECT_EQ(WriteBoardText(*board), text);
    }
  }
}

// Everything new, in each version; what a version cannot say comes back as the next best thing.
TEST(BoardFile, NewObjectsReadBack) {
  constexpr char kObjects[] =
      "layers 4\n"
      "track 100,100 300,100 w10 top net A locked; track 0,0 1000,0 w5 mech1; track 0,0 50,50 w8 topoverlay\n"
      "arc 500,500 r50 0..90 w10 topoverlay; arc 500,500 r50 90..30 w10 mech1\n"
      "via 100,100 30/15 net A; via 200,100 30/15 mid1..bottom net B\n"
      "pad 700,100 60x40 rect hole 30 name 1 net A; pad 800,100 60x60 round top name 2 rot 45 net A\n"
      "text 100,900 \"Hello - (1)\" h60 rot 90 topoverlay\n"
      "region 0,0 100,0 100,100 topoverlay; region 0,0 100,0 100,100 top teardrop net A\n"
      "zone 0,0 900,0 900,900 0,900 bottom net A\n"
      "component U1 at 500,500 bottom rot 30 { pad -50,0 60x60 rounded name 1 net A; text 0,80 \"10k\" "
      "comment;\n"
      "  track -50,0 50,0 w5 topoverlay }\n";
  for (const int version : {20171130, 20211014, 20221018, 20240108, 20241229}) {
    SCOPED_TRACE(version);
    const Ref<Board> board = BoardFromText(kObjects);
    board->file.version = version;
    const std::string text = WriteBoardText(*board);
    const Ref<Board> again = ReadBoardText(text, "new");
    EXPECT_EQ(Differences(DescribeBoard(*board, true), DescribeBoard(*again, true), 4), "") << text;
    EXPECT_EQ(WriteBoardText(*again), text);
  }
}

TEST(BoardFile, FailuresNameThePlace) {
  std::string deep = "(kicad_pcb (version 20211014) ";
  for (int i = 0; i < 100000; ++i) deep += "(a ";
  const std::string valid = BoardText(20211014, "");
  struct Case {
    const char* name;
    std::string text;
    const char* message;
  };
  const Case cases[] = {
      {"empty", "", "f:1:1: the file is empty"},
      {"blank", " \n ", "f:2:2: the file is empty"},
      {"no list", "hello", "f:1:1: this is no board"},
      {"another kind of file", "\n(kicad_sch (version 1))", "f:2:1: this is no board"},
      {"no version", "(kicad_pcb)", "f:1:1: this list has no version"},
      {"too new", "(kicad_pcb (version 20260206))", "f:1:21: the board has version 20260206, which is newer"},
      {"too old", "(kicad_pcb\n (version 3))", "f:2:11: the board has version 3, which is too old"},
      {"cut off", valid.substr(0, valid.size() - 3),
       "the file ends within a list: 1 closing parenthesis is missing"},
      {"one parenthesis more", valid + ")", "f:7:1: text stands behind the end"},
      {"100,000 levels", deep, "f:1:3028: lists are nested deeper than 1000 levels"},
      {"a text without end", "(kicad_pcb (version 20211014) (a \"b", "f:1:34: a text in quotes begins here"},
      {"a zero byte", std::string("(kicad_pcb \0)", 13), "f:1:12: a byte of zero"},
      {"not UTF-8", "(kicad_pcb \xc3\xa4 \xff)", "f:1:14: the text is not UTF-8"},
      {"a surrogate", "(kicad_pcb \xed\xa0\x80)", "f:1:12: the text is not UTF-8"},
      {"a length out of range", BoardText(20211014, "(via (at 3000 0) (size 1))"),
       "f:5:10: the length 3000 is out of range"},
      {"no number", BoardText(20211014, "(via (at 0 x1) (size 1))"),
       "f:5:12: a length is expected here, not 'x1'"},
      {"a word missing", BoardText(20211014, "(via (at 0) (size 1))"), "f:5:11: y is missing here"},
      {"a list missing", BoardText(20211014, "(segment (start 0 0))"), "f:5:1: this list has no end"},
      {"a place beyond the range",
       BoardText(20211014, R"((footprint "a" (at 2000 0) (fp_line (start 2000 0))))"),
       "f:5:44: this place is out of range"},
      {"a huge arc", BoardText(20171130, "(gr_arc (start -2000 0) (end 2000 0) (angle 1) (width 1))"),
       "this arc's radius is out of range"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    try {
      (void)ReadBoardText(c.text, "f");
      ADD_FAILURE() << "no error";
    } catch (const FileError& error) {
      EXPECT_NE(std::string(error.what()).find(c.message), std::string::npos) << error.what();
    }
  }
  // Wherever a file ends too early, it says so.
  const std::string text = BoardText(20211014, kChanged);
  for (std::size_t length = 0; length + 2 < text.size(); ++length) {
    EXPECT_THROW((void)ReadBoardText(text.substr(0, length)), FileError) << length;
  }
}

class BoardFolder : public testing::Test {
 protected:
  void Put(const char* name, const std::string& text) { std::ofstream(folder_ / name) << text; }
  const TempFolder folder_;
};

TEST_F(BoardFolder, CompanionsComeAlong) {
  Put("b.kicad_pcb", BoardText(20211014, kChanged));
  Put("b.kicad_pro", R"({"net_settings": {"classes": [{"name": "Default", "clearance": 0.2},
      {"name": "Power", "via_drill": 0.5, "nets": ["GND"]}], "netclass_patterns": [{"netclass": "Power", "pattern": "+*"}],
      "netclass_assignments": {"X": ["Power"]}}})");
  FileWarnings warnings;
  const Ref<Board> board = ReadBoard(folder_ / "b.kicad_pcb", &warnings);
  EXPECT_TRUE(warnings.empty());
  EXPECT_EQ(board->ClassOf(board->FindNet(u"+5V"))->data.sizes.via_hole, Mm(0.5));
  EXPECT_EQ(Data<ObjectClass>(board, 1).members, (std::vector<std::u16string>{u"GND", u"X"}));

  const std::filesystem::path extras = folder_ / "c.ketril.json";
  SaveBoard(*board, folder_ / "c.kicad_pcb");
  EXPECT_FALSE(std::filesystem::exists(extras));
  Find<Track>(*board)->Write([&] {
    Find<Track>(*board)->state.union_index = 7;
    Find<Track>(*board)->Set(kFlag_TearDrop, true);
  });
  SaveBoard(*board, folder_ / "c.kicad_pcb");
  const Ref<Board> again = ReadBoard(folder_ / "c.kicad_pcb", &warnings);
  EXPECT_EQ(Describe(*Find<Track>(*again)), Describe(*Find<Track>(*board)));

  Put("c.kicad_pro", "{broken");
  EXPECT_EQ(Find<Track>(*ReadBoard(folder_ / "c.kicad_pcb", &warnings))->state.union_index, 7);
  EXPECT_EQ(warnings.size(), 1u);
  for (const char* text : {"{\"version\": 2}", "{", "[]", "{\"version\": 1, \"rules\": 3}"}) {
    Put("c.ketril.json", text);
    EXPECT_THROW((void)ReadBoard(folder_ / "c.kicad_pcb"), FileError) << text;
  }
}

// It could not be read again, although what it says of the line is near to its footprint.
TEST(BoardFile, AMemberBeyondTheRangeIsNotWritten) {
  const Ref<Board> board = ReadBoardText(BoardText(20211014, R"((footprint "a" (layer "F.Cu") (at 0 0)
    (fp_line (start 1000 0) (end 1001 0) (layer "F.SilkS") (width 0.1))))"));
  ASSERT_EQ(Find<Component>(*board)->MoveByXY(ToUnits(2000 * 1000000LL), 0), Status::Ok);
  EXPECT_THROW((void)WriteBoardText(*board), FileError);
}

TEST_F(BoardFolder, AFailedSaveLeavesTheTarget) {
  const Ref<Board> board = Read(20211014, kChanged);
  std::filesystem::create_directory(folder_ / "d.kicad_pcb");
  for (const char* name : {"d.kicad_pcb", "none/b.kicad_pcb", "/dev/full"}) {
    EXPECT_THROW(SaveBoard(*board, folder_ / name), FileError) << name;
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_), {}), 1);
  EXPECT_THROW((void)ReadBoard(folder_), FileError);
  EXPECT_THROW((void)ReadBoard(folder_ / "none"), FileError);
  SaveBoard(*board, folder_ / "b.kicad_pcb");
  EXPECT_EQ(TextOf(folder_ / "b.kicad_pcb"), board->file.text);
}

}  // namespace
}  // namespace Ketril::Tests
