// One walk over the text of a board, which reads it or rewrites it. Both know an expression by the same
// function, which tells for each word in it the field of the object that it holds. Reading puts the word's
// value into the field. Rewriting reads the word again, by the same conversion, and replaces it when the
// field has another value by now; so every word that no tool had a hand in stays as it was, to the byte, and
// nothing has to be remembered about words. Words that nobody knows are passed over by both.
//
// A word that may stand only once counts where it stands first.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Editor/Files/ArcGeometry.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Files/FileStyle.h"
#include "Editor/Files/PassWords.h"
#include "Editor/Files/SExpression.h"
#include "Editor/Files/SourceTable.h"
#include "Editor/Files/TextEdits.h"

namespace Ketril::Editor {

class BoardPass : PassWords {
 public:
  // Reads `board.file` into the board, which is empty. Raises FileError.
  static void Read(Board& board, FileWarnings& warnings);
  // The text of the board as it is now, piece by piece, from that which it was read from. Objects that are
  // new get an identifier.
  static void Rewrite(Board& board, const TextSink& sink);

 private:
  // The list that the pass is in.
  struct Level {
    std::size_t first_key = 0;  // of those that were seen in it
    Item item;
    std::uint32_t lock_at = 0;                   // behind the words that come before a bare `locked`
    std::uint32_t last_begin = 0, last_end = 0;  // of the last list in it
  };
  class Enter {  // the pass is in a list as long as this lives
   public:
    explicit Enter(BoardPass& pass) : pass_(pass), outer_(pass.level_) {
      pass.level_ = {pass.seen_.size(), pass.item_, pass.item_.word.end, 0, 0};
    }
    ~Enter() {
      pass_.seen_.resize(pass_.level_.first_key);
      pass_.level_ = outer_;
    }
    Enter(const Enter&) = delete;
    Enter& operator=(const Enter&) = delete;

   private:
    BoardPass& pass_;
    const Level outer_;
  };
  BoardPass(Board& board, FileWarnings* warnings);
  void Walk();

  // Walks the list's items: `visit(item, key)`, the key as by _word or _bare. Once: passes over lists and
  // words that were there before.
  template <class Visit>
  void Each(Visit&& visit);
  template <class Visit>
  void EachOnce(Visit&& visit);
  bool IsFirst(std::uint64_t key);  // notes it as seen
  bool Seen(std::uint64_t key) const;
  void Require(std::uint64_t key, const char* what) const;  // an error unless it was seen
  void Warn(std::uint32_t position, const std::string& message);

  // Words. A function with a field puts the value into it, or replaces the word for it.
  Nanometres TakeNanometres(const SExpressionWord& word) const;
  double TakeNumber(const SExpressionWord& word) const;
  Measure TakeMeasure();
  Place TakePlace();
  static std::u16string Resolved(const SExpressionWord& word);
  Outline TakeOutline();
  bool TakeFill();  // of `(fill yes)`, `(fill solid)`, `(fill none)`, `(fill)`
  void Put(const SExpressionWord& word, const std::string& text) {
    if (edits_) edits_->Replace(word.begin, word.end, text);
  }
  void PutPlace(const Place& place, TCoordPoint wanted);
  void PutOutline(const Outline& outline, const std::vector<TCoordPoint>& wanted);
  void PutMeasure(const Measure& measure, TCoord wanted);
  void Length(TCoord& field) { Measured(TakeMeasure(), field); }
  void Measured(const Measure& measure, TCoord& field);
  void Placed(const Place& place, TCoordPoint& field);
  void Point(TCoordPoint& field) { Placed(TakePlace(), field); }
  void Offset(TCoordPoint& field);  // relative to the object and turned with it
  void Number(double& field);
  std::int32_t TakeInteger(SExpressionWord& word);
  void Integer(std::int32_t& field);
  void Angle(double& field);
  void PlaceAndAngle(TCoordPoint& field, double& angle);
  void String(std::u16string& field) { Worded(in_.Word("a text"), field); }
  void Worded(const SExpressionWord& word, std::u16string& field);
  void Layer(TV7_Layer& field);
  void Flag(const Item& item, bool& field);
  void Outlined(std::vector<TCoordPoint>& field);

  // Rewriting: at the end of a list.
  void InsertList(const std::string& expression);
  void InsertList(Primitive& object);  // a member that the text does not have
  // The object's expressions, laid out to stand after the blanks.
  std::string Anew(Primitive& object, std::string_view blanks);
  void InsertWord(std::uint32_t at, const std::string& word) { edits_->Insert(at, " " + word); }
  void DropItem(const Item& item);  // the cursor is behind it then
  // The object cannot be said by changing words: its expression is written anew.
  void CannotRewrite() { cannot_ = true; }

  // Expressions of objects: `fields` is a member function that takes the object. Reading makes the object and
  // hands it to its owner, or the board; rewriting finds it, and drops the expression when it is gone.
  template <class T>
  void Object(const Item& item, Group* owner, void (BoardPass::*fields)(T&));
  template <class T>
  void RewriteObject(const Item& item, T& object, void (BoardPass::*fields)(T&));
  // The lists that hold members: `walk` goes over them; then come the members that are new.
  template <class Body>
  void WithMembers(Group& group, Body&& walk);

  // BoardPassCommon.cpp: what all objects have. False for another word.
  bool Common(const Item& item, std::uint64_t key, Primitive& primitive);
  void EndCommon(Primitive& primitive);  // what should be said and is not
  void SayFlag(const Item& item, Said& said, Primitive& primitive, std::uint32_t flag);
  bool NetOf(const Item& item, Primitive& primitive);  // true when it was replaced
  Ketril::Editor::Net* NetByNumber(std::int32_t number, std::uint32_t position);
  void PutRenamed(const SExpressionWord& name, const Ketril::Editor::Net* net);
  void SayLocked(const Primitive& primitive);
  void Stamp(Primitive& primitive);
  void Status(Primitive& primitive);

  // BoardPassHeader.cpp
  void BoardItem(const Item& item, std::uint64_t key);
  void Version();
  void General();
  void TitleBlock();
  void Layers();
  void LayerLine(const Item& item);
  void Setup();
  void NetItem(const Item& item);
  void NetFields(Ketril::Editor::Net& net);
  void NetClass(ObjectClass& net_class);
  TCoord DefaultHole(const Ketril::Editor::Net* net);  // of a via that names none
  void InsertNewObjects();

  // BoardPassTracks.cpp
  bool Graphic(const Item& item, std::uint64_t key, Group* owner);
  void ArcOrLine(const Item& item, Group* owner);
  void Line(Track& track);
  void StraightArc(Track& track);
  void CurvedLine(Arc& arc);
  void PutArc(const Place (&places)[3], const ArcData& was, const ArcData& wanted, bool clockwise);
  void PutArcByAngle(const Place (&places)[2], const SExpressionWord& angle, const ArcData& was,
                     const ArcData& wanted);
  void Circle(Arc& arc);
  Measure Stroke();

  // BoardPassVias.cpp
  void ViaFields(Via& via);
  void PutSpan(Via& via, TV7_Layer from, TV7_Layer to, const SExpressionWord (&words)[2], bool is_blind);
  void EndVia(Via& via);
  void ViaStack(const Item& item, Via& via);
  void ViaStackLayer(ViaData& via);
  TPadMode TakeStackMode();
  std::vector<TV7_Layer> TakeStackLayers();

  // BoardPassPads.cpp
  void PadFields(Pad& pad);
  bool PadWord(const Item& item, std::uint64_t key, Pad& pad, PadLayer& copper, PadWords& words);
  void Margin(const Item& item, TCoord& margin, TMaskExpansionMode& mode);
  void PadDrill(const Item& item, Pad& pad, PadLayer& copper, PadWords& words);
  void PadLayers(const Item& item, Pad& pad);
  void PadStack(const Item& item, Pad& pad);
  void PadStackLayer(std::vector<PadLayer>& stack);
  void EndPad(Pad& pad, const PadWords& words);

  // BoardPassCopper.cpp
  bool CopperWord(const Item& item, std::uint64_t key, PadLayer& copper, CopperWords& words);
  void EndCopper(PadLayer& copper, const CopperWords& words);
  void Chamfers(const Item& item, PadLayer& copper);
  void Primitives(const Item& item, PadLayer& copper);
  PartWords TakePartWords(std::uint64_t kind);
  static std::vector<TCoordPoint> PathOfPart(std::uint64_t kind, const PartWords& words);
  void PadPrimitive(std::uint64_t kind, std::vector<std::vector<TCoordPoint>>& polygons);

  // BoardPassFootprints.cpp
  void FootprintItem(const Item& item);
  void Footprint(Component& component);
  void FootprintWord(const Item& item, std::uint64_t key, Component& component, FootprintWords& words);
  void EndFootprint(Component& component, const FootprintWords& words);
  void FootprintPlace(Component& component);
  void FindPlaceAhead(Component& component);
  void PropertyItem(const Item& item, Component& component);
  void FreePad(Pad& pad);

  // BoardPassTexts.cpp
  void TextFields(Text& text);
  void FootprintText(Text& text);
  void Property(Text& text);
  void TextBox(Text& text);
  void TextString(Text& text);
  void TextWord(const Item& item, std::uint64_t key, Text& text);
  void EndText(Text& text);
  void Effects(Text& text);
  void Font(Text& text);
  void Justify(const Item& item, Text& text);
  void DimensionFields(Dimension& dimension);
  bool DimensionMember(const Item& item, std::uint64_t key, Dimension& dimension);
  void DimensionWord(const Item& item, std::uint64_t key, Dimension& dimension);
  void DimensionStyle(DimensionData& data);
  void DimensionLine(Track& track);

  // BoardPassShapes.cpp
  TCoordPoint Corner(const Place& x, const Place& y) const;  // of the one's x and the other's y
  void PolygonShape(Region& region);
  void Rectangle(Region& region);
  void PutRectangle(const Place& start, const Place& end, const std::vector<TCoordPoint>& corners,
                    const std::vector<Ring>& rings);
  void Curve(Region& region);
  void PutCurve(const Outline& outline, const std::vector<Ring>& rings);
  void ShapeWord(const Item& item, std::uint64_t key, Region& region);
  void EndShape(Region& region, bool filled);  // `filled` when the list does not say

  // BoardPassZones.cpp
  void ZoneItem(const Item& item, Group* owner);
  void Zone(Polygon& polygon);
  void ZoneWord(const Item& item, std::uint64_t key, Polygon& polygon, ZoneWords& words);
  void ZoneLayers(const Item& item, Polygon& polygon);
  void PutNetName(const ZoneWords& words, const Ketril::Editor::Net* net);
  void ZoneOutline(std::vector<Ring>& rings, std::size_t& count);
  void ZoneFill(Region& region);
  void RegionZone(Region& region);
  void Connections(Polygon& polygon);
  void KeepOut(Polygon& polygon);
  void FillSettings(Polygon& polygon);

  // BoardPassRooms.cpp
  void PlacementFields(PlacementArea& area);
  void ComponentClasses(std::vector<std::u16string>& classes);
  void GroupItem();
  void NameGroups();
  void AddRooms();  // reading: behind everything that they may hold

  Board& board_;
  SExpressionCursor in_;
  FileWarnings* const warnings_;
  LayerNames layers_;
  std::unordered_map<std::int32_t, Ketril::Editor::Net*> nets_;
  std::vector<TV7_Layer> layer_lines_;  // that were passed, when rewriting
  std::unordered_map<const Ketril::Editor::Net*, TCoord> default_holes_;
  std::vector<FileGroup> groups_;
  std::vector<Via*> without_hole_;  // that were read: theirs is known when all net classes are

  Placement placement_;
  MaskData mask_;         // of the footprint, for pads that say nothing
  TCoord clearance_ = 0;  // the same
  Level level_;
  std::vector<std::uint64_t> seen_;
  Item item_;             // the last one that began
  Said locked_, hidden_;  // of the object that the pass is in
  SourceSpan text_cache_;
  bool zone_is_teardrop_ = false;
  TV7_Layer zone_layer_;    // of fills that name none
  SourceSpan sections_[6];  // of the board: the last expression of each

  // Rewriting only.
  TextEdits* edits_ = nullptr;
  FileWords* words_ = nullptr;
  SourceTable* objects_ = nullptr;  // of the group that the pass is in, or of the board
  std::unordered_map<const Ketril::Editor::Net*, std::u16string> renamed_;  // with the name in the file
  std::unordered_set<const Primitive*> touched_;  // what names a renamed net, with its owners
  bool cannot_ = false;
  bool moved_ = false;  // the footprint that the pass is in
};

template <class Visit>
void BoardPass::Each(Visit&& visit) {
  in_.ForEach([&](const Item& item) {
    item_ = item;
    const unsigned depth = in_.Depth() - (item.is_list ? 1 : 0);
    const std::uint64_t key = KeywordHash(item.word.text);
    visit(item, item.is_list ? key : ~key);
    in_.Leave(depth);
    if (item.is_list) {
      level_.last_begin = item.begin;
      level_.last_end = in_.Position();
    }
  });
}

template <class Visit>
void BoardPass::EachOnce(Visit&& visit) {
  Each([&](const Item& item, std::uint64_t key) {
    if (IsFirst(key)) visit(item, key);
  });
}

template <class T>
void BoardPass::Object(const Item& item, Group* owner, void (BoardPass::*fields)(T&)) {
  if (!edits_) {
    const Ref<T> object = MakeHost<T>();
    const Enter level(*this);
    locked_ = hidden_ = {};
    (this->*fields)(*object);
    object->source = {item.begin, in_.Position()};
    if (owner) {
      owner->AddMember(object.Get());
    } else {
      board_.Load(object.Get());
    }
  } else if (T* object = As<T>(objects_->Find(item.begin))) {
    if (owner || object->file_changed || touched_.contains(object)) {
      RewriteObject(item, *object, fields);
    } else {
      in_.LeaveAt(object->source.end);
    }
  } else {
    DropItem(item);
  }
}

template <class T>
void BoardPass::RewriteObject(const Item& item, T& object, void (BoardPass::*fields)(T&)) {
  const std::size_t edits = edits_->Count();
  const bool outer_cannot = std::exchange(cannot_, false);
  const Said outer_locked = std::exchange(locked_, {}), outer_hidden = std::exchange(hidden_, {});
  {
    const Enter level(*this);
    (this->*fields)(object);
  }
  locked_ = outer_locked;
  hidden_ = outer_hidden;
  if (std::exchange(cannot_, outer_cannot)) {
    edits_->ForgetFrom(edits);
    edits_->Replace(item.begin, in_.Position(), Anew(object, edits_->BlanksBefore(item.begin)));
  }
}

template <class Body>
void BoardPass::WithMembers(Group& group, Body&& walk) {
  if (!edits_) return walk();
  std::vector<Primitive*> members;
  for (const Ref<Primitive>& member : group.Members()) {
    if (member->on_board) members.push_back(member.Get());
  }
  SourceTable table(members);
  SourceTable* const outer = std::exchange(objects_, &table);
  walk();
  objects_ = outer;
  for (Primitive* member : table.Missing()) InsertList(*member);
}

}  // namespace Ketril::Editor
