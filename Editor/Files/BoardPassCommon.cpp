// What all objects have: layer, net, identifier, and whether they are locked or hidden.
#include <algorithm>
#include <array>
#include <charconv>

#include "Editor/Files/BoardPass.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

constexpr std::uint32_t kLockedStatus = 0x40000;  // the oldest version locks tracks by a bit

}  // namespace

bool BoardPass::Common(const Item& item, std::uint64_t key, Primitive& primitive) {
  switch (key) {
    case "layer"_word:
    case "layers"_word:
      Layer(primitive.state.layer);
      return true;
    case "net"_word:
      NetOf(item, primitive);
      return true;
    case "tstamp"_word:
    case "uuid"_word:
      Stamp(primitive);
      return true;
    case "locked"_word:
    case "locked"_bare:
      SayFlag(item, locked_, primitive, kFlag_Locked);
      return true;
    case "hide"_word:
    case "hide"_bare:
      SayFlag(item, hidden_, primitive, kFlag_Hidden);
      return true;
    case "status"_word:
      Status(primitive);
      return true;
    default:
      return false;
  }
}

void BoardPass::SayFlag(const Item& item, Said& said, Primitive& primitive, std::uint32_t flag) {
  const bool has_word = item.is_list && in_.HasWord();
  const SExpressionWord word = has_word ? in_.Word("yes or no") : SExpressionWord{};
  const bool value = !has_word || word.text != "no";
  if (!edits_) {
    if (value) primitive.Set(flag, true);
  } else if (!value) {
    said.no = word;
  } else if (primitive.Has(flag)) {
    said.yes = true;
  } else if (has_word) {
    Put(word, "no");
  } else {
    DropItem(item);
  }
}

void BoardPass::EndCommon(Primitive& primitive) {
  if (!edits_) return;
  if (primitive.Has(kFlag_Locked) && !locked_.yes) SayLocked(primitive);
  if (primitive.Has(kFlag_Hidden) && !hidden_.yes && primitive.Owner()) {
    if (!hidden_.no.text.empty()) {
      Put(hidden_.no, hidden_.yes_word);
    } else {
      InsertList(words_->version.IsTabbed() ? "(hide yes)" : "hide");
    }
  }
  const bool is_graphic = level_.item.word.text.find('_') == 2;  // gr_line, fp_line
  if (primitive.GetNet() && !Seen("net"_word) && (!is_graphic || words_->version.HasNetGraphics())) {
    InsertList(primitive.kind == ePadObject
                   ? words_->NetWithName(primitive.GetNet())
                   : "(net " + std::to_string(words_->NetNumber(primitive.GetNet())) + ")");
  }
  if (FileWords::NeedsIdentifier(primitive) && primitive.source_id.IsEmpty()) {
    InsertList(words_->Identifier(primitive).substr(1));
  }
}

void BoardPass::SayLocked(const Primitive& primitive) {
  const FileVersion version = words_->version;
  const bool has_status = primitive.kind == eTrackObject || primitive.kind == eViaObject;
  if (!locked_.no.text.empty()) {
    Put(locked_.no, locked_.yes_word);
  } else if (version.IsTabbed()) {
    if (primitive.kind != ePadObject) InsertList("(locked yes)");
  } else if (primitive.kind == ePolyObject) {
    if (version.QuotesAll()) InsertList("(locked)");
  } else if (version.QuotesAll() || primitive.kind == eComponentObject) {
    InsertWord(level_.lock_at, "locked");
  } else if (has_status) {
    InsertList("(status 40000)");
  }
}

bool BoardPass::NetOf(const Item& item, Primitive& primitive) {
  SExpressionWord word;
  const std::int32_t number = std::max(TakeInteger(word), 0);  // none is 0; a few files have -1
  if (!edits_) {
    if (number > 0) primitive.SetNet(NetByNumber(number, word.begin));
    return false;
  }
  Ketril::Editor::Net* const net = primitive.GetNet();
  const std::int32_t wanted = words_->NetNumber(net);
  if (number == wanted) {
    if (in_.HasWord()) PutRenamed(in_.Word("a name"), net);
  } else if (!net && primitive.kind == ePadObject) {
    DropItem(item);
  } else {
    Put(word, std::to_string(wanted));
    if (in_.HasWord()) Put(in_.Word("a name"), net ? words_->Text(net->data.name) : "\"\"");
  }
  return number != wanted;
}

void BoardPass::PutRenamed(const SExpressionWord& name, const Ketril::Editor::Net* net) {
  const auto renamed = renamed_.find(net);
  if (renamed != renamed_.end() && Resolved(name) == renamed->second) Put(name, words_->Text(net->data.name));
}

Ketril::Editor::Net* BoardPass::NetByNumber(std::int32_t number, std::uint32_t position) {
  const auto [entry, is_new] = nets_.try_emplace(number, nullptr);
  if (is_new) {
    Warn(position, "the net " + std::to_string(number) + " is not in the table of nets");
    const Ref<Ketril::Editor::Net> net = MakeHost<Ketril::Editor::Net>();
    net->data.number = number;
    net->data.name = Platform::ToUtf16("Net-" + std::to_string(number));
    net->source_id = {position, position + 1};  // where it is named, since it stands nowhere else
    board_.Load(net.Get());
    entry->second = net.Get();
  }
  return entry->second;
}

void BoardPass::Stamp(Primitive& primitive) {
  const SExpressionWord word = in_.Word("an identifier");
  if (word.text.empty()) return;
  const std::uint32_t begin = word.begin + (word.quoted ? 1 : 0);
  if (!edits_) {
    // A free pad's is that of its footprint, which comes first.
    if (primitive.source_id.IsEmpty()) {
      primitive.source_id = {begin, begin + static_cast<std::uint32_t>(word.text.size())};
    }
  } else if (primitive.source_id.begin == begin) {
    const std::u16string id = primitive.UniqueId();
    if (id != Platform::ToUtf16(word.text)) Put(word, word.quoted ? words_->Text(id) : Platform::ToUtf8(id));
  }
}

void BoardPass::Status(Primitive& primitive) {
  const SExpressionWord word = in_.Word("a status");
  std::uint32_t bits = 0;
  const char* const end = word.text.data() + word.text.size();
  const auto [stop, error] = std::from_chars(word.text.data(), end, bits, 16);
  if (error != std::errc() || stop != end) {
    in_.Fail(word.begin,
             "a status in hexadecimal digits is expected here, not '" + std::string(word.text) + "'");
  }
  const bool is_locked = (bits & kLockedStatus) != 0;
  if (!edits_) {
    if (is_locked) primitive.Set(kFlag_Locked, true);
  } else if (is_locked && primitive.Has(kFlag_Locked)) {
    locked_.yes = true;
  } else {
    std::array<char, 9> text{};
    std::to_chars(text.data(), text.data() + 8, bits ^ kLockedStatus, 16);
    if (is_locked) {
      Put(word, text.data());
    } else {
      locked_.no = word;
      locked_.yes_word = text.data();
    }
  }
}

}  // namespace Ketril::Editor
