// The board itself: its head, its layers, nets and net classes; and where new objects go.
#include <algorithm>
#include <iterator>

#include "Editor/AllCores.h"
#include "Editor/Files/BoardComposer.h"
#include "Editor/Files/BoardPass.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

// New expressions stand behind the last one of their group.
enum Section : std::uint8_t { kHead, kFootprints, kGraphics, kTracks, kZones, kOthers };

Section SectionOf(std::string_view keyword) {
  if (keyword.starts_with("gr_") || keyword == "dimension") return kGraphics;
  switch (KeywordHash(keyword)) {
    case "general"_word:
    case "layers"_word:
    case "setup"_word:
    case "net"_word:
      return kHead;
    case "module"_word:
    case "footprint"_word:
      return kFootprints;
    case "segment"_word:
    case "via"_word:
    case "arc"_word:
      return kTracks;
    case "zone"_word:
      return kZones;
    default:
      return kOthers;
  }
}

constexpr std::int32_t kMostNets = 100000000;

}  // namespace

void BoardPass::Read(Board& board, FileWarnings& warnings) {
  CheckText(board.file.text, board.file.path);
  BoardPass pass(board, &warnings);
  pass.Walk();
  pass.AddRooms();
  for (Via* via : pass.without_hole_) via->data.hole = pass.DefaultHole(via->GetNet());
}

void BoardPass::Rewrite(Board& board, const TextSink& sink) {
  BoardPass pass(board, nullptr);
  TextEdits edits(board.file.text);
  FileWords words(board);
  std::vector<Primitive*> free;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    const Group* const owner = object.Owner();
    if (!owner || !owner->on_board || !owner->HasMember(object)) free.push_back(&object);
  });
  SourceTable objects(free);
  pass.edits_ = &edits;
  pass.words_ = &words;
  pass.objects_ = &objects;
  pass.Walk();
  edits.Apply(sink);
}

void BoardPass::Walk() {
  Item root;
  if (in_.AtEnd()) in_.Fail(in_.Position(), "the file is empty");
  if (!in_.Next(root) || !root.is_list || root.word.text != "kicad_pcb") {
    in_.Fail(root.begin, "this is no board: a board begins with '(kicad_pcb'");
  }
  item_ = root;
  const Enter level(*this);
  Each([&](const Item& item, std::uint64_t key) {
    BoardItem(item, key);
    in_.Leave(1);
    if (item.is_list) sections_[SectionOf(item.word.text)] = {item.begin, in_.Position()};
  });
  Require("version"_word, "version");
  if (edits_) InsertNewObjects();
  const std::uint32_t end = in_.Position();
  if (!in_.AtEnd()) in_.Fail(std::max(end, in_.Position()), "text stands behind the end of the board");
}

void BoardPass::BoardItem(const Item& item, std::uint64_t key) {
  if (!item.is_list) return;
  // What follows is read by it.
  if (key != "version"_word) Require("version"_word, "version at its begin");
  switch (key) {
    case "net"_word:
      NetItem(item);
      return;
    case "net_class"_word:
      Object(item, nullptr, &BoardPass::NetClass);
      return;
    case "module"_word:
    case "footprint"_word:
      FootprintItem(item);
      return;
    case "via"_word:
      Object(item, nullptr, &BoardPass::ViaFields);
      return;
    case "group"_word:
      GroupItem();
      return;
    default:
      break;
  }
  if (Graphic(item, key, nullptr) || !IsFirst(key)) return;
  switch (key) {
    case "version"_word:
      Version();
      break;
    case "general"_word:
      General();
      break;
    case "title_block"_word:
      TitleBlock();
      break;
    case "layers"_word:
      Layers();
      break;
    case "setup"_word:
      Setup();
      break;
    default:
      break;
  }
}

void BoardPass::Version() {
  SExpressionWord word;
  const std::int32_t version = TakeInteger(word);
  if (version < kOldestVersion || version > kNewestVersion) {
    in_.Fail(word.begin,
             "the board has version " + std::string(word.text) + ", which is " +
                 (version < kOldestVersion ? "too old" : "newer than this program"),
             std::string("Known are the versions ") + kKnownVersions);
  }
  if (!edits_) board_.file.version = version;
}

void BoardPass::General() {
  const Enter level(*this);
  EachOnce([&](const Item&, std::uint64_t key) {
    if (key == "thickness"_word) Length(board_.setup.thickness);
  });
}

void BoardPass::TitleBlock() {
  const Enter level(*this);
  EachOnce([&](const Item&, std::uint64_t key) {
    if (key == "title"_word) String(board_.file.title);
  });
}

void BoardPass::Layers() {
  const Enter level(*this);
  Each([&](const Item& item, std::uint64_t) {
    if (item.is_list) LayerLine(item);
  });
  const auto from_the_top = [](const BoardLayer& layer) {
    return IsSignalLayer(layer.id) ? layer.id.ID : ~0u;
  };
  if (!edits_) std::ranges::stable_sort(board_.layers, {}, from_the_top);
  layers_ = LayerNames(board_);
}

// `(0 "F.Cu" signal "front")`
void BoardPass::LayerLine(const Item& item) {
  BoardLayer layer;
  const auto number = item.word.text;
  double value = 0;
  if (ParseNumber(number, value) != NumberError::None || value < 0 || value > 1e6) {
    in_.Fail(item.word.begin, "a layer's number is expected here, not '" + std::string(number) + "'");
  }
  layer.file_number = static_cast<std::int32_t>(value);
  layer.file_name = in_.Word("a layer's name").text;
  const SExpressionWord kind = in_.Word("a layer's kind");
  layer.kind = kind.text;
  // Copper may have a name of its own in the oldest version, and is known by its number there.
  constexpr std::int32_t kBottomNumber = 31;
  const bool is_copper = layer.kind != "user";
  const bool has_own_names = !FileVersion(board_.file.version).QuotesAll();
  layer.id = LayerOfName(layer.file_name);
  if (has_own_names && is_copper && layer.file_number <= kBottomNumber) {
    layer.id = layer.file_number == kBottomNumber ? TV7_Layer(eV6_BottomLayer)
                                                  : TV7_Layer(static_cast<TV6_Layer>(layer.file_number + 1));
    if (layer.id != LayerOfName(layer.file_name)) layer.user_name = Platform::ToUtf16(layer.file_name);
  }
  const BoardLayer* const known = board_.FindLayer(layer.id);
  if (edits_) {
    const bool is_first = std::ranges::find(layer_lines_, layer.id) == layer_lines_.end();
    layer_lines_.push_back(layer.id);
    if (!known || has_own_names || !is_first) return;
    if (!in_.HasWord()) {
      if (!known->user_name.empty()) InsertWord(kind.end, words_->Text(known->user_name));
      return;
    }
    std::u16string name = known->user_name;
    if (known->file_name == layer.file_name) String(name);
    return;
  }
  if (in_.HasWord() && !has_own_names) layer.user_name = Resolved(in_.Word("a layer's other name"));
  if (layer.id == TV7_Layer(eV6_NoLayer)) {
    Warn(item.begin, "the layer '" + layer.file_name + "' is not known");
  } else if (known) {
    Warn(item.begin, "the layer '" + layer.file_name + "' is in the table twice");
  } else {
    board_.layers.push_back(std::move(layer));
  }
}

void BoardPass::Setup() {
  const Enter level(*this);
  BoardSetup& setup = board_.setup;
  EachOnce([&](const Item&, std::uint64_t key) {
    switch (key) {
      case "aux_axis_origin"_word:
        Point(setup.origin);
        break;
      case "pad_to_mask_clearance"_word:
        Length(setup.solder_mask_margin);
        break;
      case "pad_to_paste_clearance"_word:
        Length(setup.paste_margin);
        break;
      case "pad_to_paste_clearance_ratio"_word:
        Number(setup.paste_ratio);
        break;
      default:
        break;
    }
  });
}

// `(net 1 "GND")`; number 0 is no net.
void BoardPass::NetItem(const Item& item) {
  const SExpressionCursor begin = in_;
  SExpressionWord word;
  const std::int32_t number = TakeInteger(word);
  in_ = begin;
  if (number > kMostNets) in_.Fail(word.begin, "this number of a net is out of range");
  if (number <= 0) return;
  Object(item, nullptr, &BoardPass::NetFields);
}

void BoardPass::NetFields(Ketril::Editor::Net& net) {
  Integer(net.data.number);
  const SExpressionWord name = in_.Word("the net's name");
  if (!edits_) {
    net.data.name = Resolved(name);
    if (!nets_.try_emplace(net.data.number, &net).second) {
      Warn(name.begin, "the net " + std::to_string(net.data.number) + " is in the table twice");
    }
  } else if (std::u16string old = Resolved(name); old != net.data.name) {
    Put(name, words_->Text(net.data.name));
    renamed_[&net] = std::move(old);
    net.ForEach([&](Primitive& member) {
      for (const Primitive* object = &member; object; object = object->Owner()) touched_.insert(object);
    });
  }
  in_.Leave(1);
}

// `(net_class "Default" "" (clearance 0.2) ... (add_net "GND"))`, before version 20200628.
void BoardPass::NetClass(ObjectClass& net_class) {
  ObjectClassData& data = net_class.data;
  String(data.name);
  std::unordered_set<std::u16string> listed;
  Each([&](const Item& item, std::uint64_t key) {
    if (key == "add_net"_word) {
      std::u16string name = Resolved(in_.Word("a net's name"));
      if (!edits_) {
        data.members.push_back(std::move(name));
      } else if (std::ranges::find(data.members, name) == data.members.end()) {
        DropItem(item);
      } else {
        listed.insert(std::move(name));
      }
      return;
    }
    if (!IsFirst(key)) return;
    switch (key) {
      case "clearance"_word:
        Length(data.sizes.clearance);
        break;
      case "trace_width"_word:
        Length(data.sizes.track_width);
        break;
      case "via_dia"_word:
        Length(data.sizes.via_size);
        break;
      case "via_drill"_word:
        Length(data.sizes.via_hole);
        break;
      default:
        break;
    }
  });
  if (!edits_) return;
  for (const std::u16string& name : data.members) {
    if (!listed.contains(name)) InsertList("(add_net " + words_->Text(name) + ")");
  }
}

TCoord BoardPass::DefaultHole(const Ketril::Editor::Net* net) {
  const auto [entry, is_new] = default_holes_.try_emplace(net, 0);
  if (is_new) {
    // The classes of later versions are not in this file; their vias name their hole.
    const bool has_classes = !FileVersion(board_.file.version).QuotesAll();
    const ObjectClass* const net_class = has_classes ? board_.ClassOf(net) : nullptr;
    entry->second =
        net_class && net_class->data.sizes.via_hole > 0 ? net_class->data.sizes.via_hole : ViaData().hole;
  }
  return entry->second;
}

void BoardPass::InsertNewObjects() {
  struct New {
    Section section;
    std::uint32_t at;
    std::string text;
  };
  // Those of a section that the board does not have stand at its end, in the order of the sections.
  const SourceSpan close = {in_.Position() - 1, in_.Position() - 1};
  const SourceSpan last = level_.last_end > 0 ? SourceSpan{level_.last_begin, level_.last_end} : close;
  const auto compose = [&](Primitive& object) {
    std::vector<New> added;
    for (const std::string& text : BoardComposer(*words_, {}).Expressions(object)) {
      const Section section = SectionOf(std::string_view(text).substr(1, text.find(' ') - 1));
      const SourceSpan place = sections_[section].IsEmpty() ? last : sections_[section];
      added.push_back({section, place.end, words_->LayOut(text, edits_->BlanksBefore(place.begin))});
    }
    return added;
  };
  const std::vector<Primitive*> missing = objects_->Missing();
  std::vector<std::vector<New>> all(missing.size());
  // In their order, as nets get their numbers on the way.
  std::vector<std::size_t> sharing;
  for (std::size_t i = 0; i < missing.size(); ++i) {
    if (BoardComposer::CanShareWords(missing[i])) {
      words_->Prepare(*missing[i]);
      sharing.push_back(i);
    } else {
      all[i] = compose(*missing[i]);
    }
  }
  board_.index.Update();  // so that the searches change nothing
  ForEachOnAllCores(sharing.size(), [&](std::size_t k) { all[sharing[k]] = compose(*missing[sharing[k]]); });
  std::vector<New> added;
  for (std::vector<New>& texts : all) std::ranges::move(texts, std::back_inserter(added));
  std::ranges::stable_sort(added, {}, &New::section);
  for (New& object : added) edits_->Insert(object.at, std::move(object.text));
}

}  // namespace Ketril::Editor
