#include "DLLs/Tools/Frame/RT_ParameterList.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace Ketril::Tools {
namespace {

constexpr std::u16string_view kMarker = u"|UNICODE=EXISTS";
constexpr std::u16string_view kExtraName = u"UNICODE_";
constexpr std::u16string_view kExtraNameAndJoint = u"UNICODE__";

std::string ToAnsi(std::u16string_view text) {
  std::string result(text.size(), '?');
  std::transform(text.begin(), text.end(), result.begin(),
                 [](char16_t unit) { return unit < 0x100 ? static_cast<char>(unit) : '?'; });
  return result;
}

std::u16string ToWide(std::string_view ansi) {
  std::u16string result(ansi.size(), u' ');
  std::transform(ansi.begin(), ansi.end(), result.begin(),
                 [](char byte) { return static_cast<char16_t>(static_cast<unsigned char>(byte)); });
  return result;
}

bool IsAscii(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

// The code units in decimal, joined by commas.
std::u16string EncodeUnits(std::u16string_view text) {
  std::u16string codes;
  for (const char16_t unit : text) {
    if (!codes.empty()) codes += u',';
    codes += Int64ToText(unit);
  }
  return codes;
}

// The reverse; empty when `codes` is no such text, or one of what no value can hold: a | or a zero.
std::optional<std::u16string> DecodeUnits(std::u16string_view codes) {
  std::u16string text;
  while (!codes.empty()) {
    const std::size_t comma = std::min(codes.find(u','), codes.size());
    const std::int64_t unit = TextToInt64(codes.substr(0, comma)).value_or(0);
    if (unit <= 0 || unit > 0xFFFF || unit == u'|') return {};
    text += static_cast<char16_t>(unit);
    codes.remove_prefix(std::min(comma + 1, codes.size()));
  }
  return text;
}

// Reads up to `size` bytes in portions, so that a wrong size takes no more memory than the stream has data.
std::string ReadBytes(IByteStream& stream, std::int64_t size) {
  std::string bytes;
  std::array<char, 4096> portion;
  while (size > 0) {
    const std::size_t wanted = std::min<std::size_t>(portion.size(), static_cast<std::size_t>(size));
    const std::size_t got = std::min(stream.Read(portion.data(), wanted), wanted);
    bytes.append(portion.data(), got);
    size = got < wanted ? 0 : size - static_cast<std::int64_t>(got);
  }
  return bytes;
}

constexpr std::int32_t kLengthAhead = -1;

// Four bytes, the lowest first; 0 when the stream has fewer.
std::int32_t ReadLength(IByteStream& stream) {
  const std::string bytes = ReadBytes(stream, 4);
  std::uint32_t length = 0;
  if (bytes.size() == 4)
    for (int i = 3; i >= 0; --i) length = length << 8 | static_cast<unsigned char>(bytes[i]);
  return static_cast<std::int32_t>(length);
}

void WriteLength(IByteStream& stream, std::size_t length) {
  std::array<char, 4> bytes;
  for (char& byte : bytes) {
    byte = static_cast<char>(length & 0xFF);
    length >>= 8;
  }
  stream.Write(bytes.data(), bytes.size());
}

}  // namespace

bool FastReadOfAllLists = false;

void TFastReader::SetState(std::u16string data, bool needs_unicode_processing) {
  FData = std::move(data);
  FNeedsUnicodeProcessing = needs_unicode_processing;
  ParseData();
  if (FNeedsUnicodeProcessing) ProcessUnicode();
}

void TFastReader::ParseData() {
  FParams.clear();
  Rt_Param::ForEachPair(FData, [&](std::u16string_view name, std::u16string_view value, bool is_last) {
    const std::u16string_view trimmed = Platform::Trim(value);
    const auto leading = static_cast<std::size_t>(trimmed.data() - value.data());
    const TParameterValue place{static_cast<std::size_t>(trimmed.data() - FData.data()),
                                is_last ? value.size() - leading : trimmed.size()};
    FParams.try_emplace(Platform::AsciiUpper(Platform::Trim(name)), place);
  });
}

void TFastReader::ProcessUnicode() {
  std::size_t end = FData.size();
  for (const auto& [name, value] : FParams) {
    if (!name.starts_with(kExtraName)) continue;
    const std::size_t bar = FData.rfind(u'|', value.Start - 1);  // a = at least stands ahead of a value
    end = std::min(end, bar == FData.npos ? 0 : bar);
    const auto plain = FParams.find(name.substr(std::min(kExtraNameAndJoint.size(), name.size())));
    if (plain == FParams.end()) continue;
    const std::optional<std::u16string> text = DecodeUnits(View(value));
    if (text && text->size() == plain->second.Length) FData.replace(plain->second.Start, text->size(), *text);
  }
  FData.resize(end);
  FNeedsUnicodeProcessing = false;
  ParseData();  // the pair that is now the last keeps its trailing blanks
}

std::u16string_view TFastReader::View(TParameterValue value) const {
  return std::u16string_view(FData).substr(value.Start, value.Length);
}

std::optional<std::u16string_view> TFastReader::Find(const std::u16string& name) const {
  const auto found = FParams.find(name);
  if (found == FParams.end()) return {};
  return View(found->second);
}

void TParameterList::SetFromAnsi(const char* text) {
  SetText(ToWide(text ? text : ""));
}

void TParameterList::SetFromWide(const char16_t* text) {
  SetText(text ? text : u"");
}

void TParameterList::AddParameter(const std::u16string& name, const std::u16string& value) {
  SlowParams().SetState_AddOrReplaceParameter(Platform::AsciiUpper(name), value);
  WriteSlowParams();
  FDataChanged = name.find_first_of(u"|=") != name.npos || value.find(u'|') != value.npos;
}

void TParameterList::RemoveParameter(const std::u16string& name) {
  if (SlowParams().SetState_RemoveByName(name)) WriteSlowParams();
}

bool TParameterList::GetParameter(const std::u16string& name, std::u16string& value) {
  if (FFastParamListCount > 0 || FastReadOfAllLists) {
    const auto found = FastReader().Find(Platform::AsciiUpper(name));
    value = found.value_or(u"");
    return found.has_value();
  }
  std::u16string text;  // `name` and `value` may be one object
  const bool found = SlowParams().GetState_ParameterAsString(name, text);
  value = std::move(text);
  return found;
}

std::int32_t TParameterList::GetLength() {
  return static_cast<std::int32_t>(Text().size());
}

void TParameterList::CopyToBuffer(char16_t* buffer, std::int32_t size) {
  if (!buffer) return;
  const std::size_t length = Text().size();
  const std::size_t copied = size == -1 ? length : std::min<std::size_t>(length, std::max(size, 0));
  buffer[Text().copy(buffer, copied)] = u'\0';
}

std::string TParameterList::GetAnsi() {
  return ToAnsi(Text());
}

void TParameterList::LoadFromStream(IByteStream& stream, std::int32_t size) {
  std::string bytes = ReadBytes(stream, size == kLengthAhead ? ReadLength(stream) : size);
  bytes.resize(std::min(bytes.find('\0'), bytes.size()));
  std::u16string text = ToWide(bytes);
  const bool marked = Platform::EqualsIgnoringAsciiCase(text.substr(0, kMarker.size()), kMarker);
  if (marked) text.erase(0, kMarker.size());
  SetText(std::move(text));
  FNeedsUnicodeProcessing = marked;
}

void TParameterList::SaveToStream(IByteStream& stream, std::int32_t size) {
  WorkOutUnicodeParameters();
  const std::u16string_view marker = FUnicodeParameters.empty() ? u"" : kMarker;
  const std::string bytes = ToAnsi(marker) + ToAnsi(Text()) + ToAnsi(FUnicodeParameters);
  const std::size_t length = bytes.size() + 1;  // with the closing zero
  if (size == kLengthAhead) WriteLength(stream, length);
  stream.Write(bytes.c_str(), length);
}

void TParameterList::AppendEnd() {
  SetText(Text() + u'\r');
}

void TParameterList::Clear() {
  SetText({});
}

const std::u16string& TParameterList::Text() {
  if (FNeedsUnicodeProcessing) {
    FFastReader.emplace().SetState(FData, true);
    FData = FFastReader->Data();
    FNeedsUnicodeProcessing = false;
  }
  return FData;
}

const TFastReader& TParameterList::FastReader() {
  const std::u16string& text = Text();
  if (!FFastReader) FFastReader.emplace().SetState(text, false);
  return *FFastReader;
}

Rt_Param::TParameterList& TParameterList::SlowParams() {
  if (FDataChanged) {
    FSlowParams.SetState_FromString(Text());
    FDataChanged = false;
  }
  return FSlowParams;
}

void TParameterList::SetText(std::u16string text) {
  FData = std::move(text);
  FDataChanged = true;
  FNeedsUnicodeProcessing = false;
  FFastReader.reset();
  FModified = true;
}

// The list stays what the text would parse to, except that it tells an empty value from a blank.
void TParameterList::WriteSlowParams() {
  SetText(FSlowParams.GetState_ToString());
  FDataChanged = false;
}

// Goes by the names of the plain form: they are what a reader will find, and a name that is not in it cannot
// be told from another. A reader will trim each value, since further pairs follow the last one.
void TParameterList::WorkOutUnicodeParameters() {
  FUnicodeParameters.clear();
  const std::u16string_view text = Text();
  if (IsAscii(text)) return;
  const std::u16string plain = ToWide(ToAnsi(text));
  std::unordered_set<std::u16string> names;
  Rt_Param::ForEachPair(plain, [&](std::u16string_view name, std::u16string_view value, bool) {
    const auto [key, is_first] = names.insert(Platform::AsciiUpper(Platform::Trim(name)));
    const std::u16string_view trimmed = Platform::Trim(value);
    const std::u16string_view whole =
        text.substr(static_cast<std::size_t>(trimmed.data() - plain.data()), trimmed.size());
    if (!is_first || IsAscii(whole)) return;
    FUnicodeParameters.append(u"|").append(kExtraNameAndJoint).append(*key);
    FUnicodeParameters.append(u"=").append(EncodeUnits(whole));
  });
}

bool GetParameterAsString(IParameterList* parameters, const std::u16string& name, std::u16string& value) {
  std::u16string text;
  if (!parameters || !parameters->GetParameter(name, text)) return false;
  value = std::move(text);
  return true;
}

bool GetParameterAsInteger(IParameterList* parameters, const std::u16string& name, std::int32_t& value) {
  std::u16string text;
  return GetParameterAsString(parameters, name, text) && ReadNumber(text, value);
}

bool GetParameterAsDouble(IParameterList* parameters, const std::u16string& name, double& value) {
  std::u16string text;
  return GetParameterAsString(parameters, name, text) && ReadNumber(text, value);
}

}  // namespace Ketril::Tools
