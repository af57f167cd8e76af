// Parameter lists: any text read on both paths, any bytes loaded as a stream, and what must hold of a list
// after each of them.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#include "DLLs/Tools/Frame/CoordText.h"
#include "DLLs/Tools/Frame/RT_ParameterList.h"
#include "Fuzz/Support/Check.h"

namespace {

using namespace Ketril;
using Fuzz::Check;
using namespace Ketril::Tools;

class MemoryStream final : public IByteStream {
 public:
  std::size_t Read(void* data, std::size_t size) override {
    const std::size_t got = Bytes.copy(static_cast<char*>(data), size, position_);
    position_ += got;
    return got;
  }
  void Write(const void* data, std::size_t size) override {
    Bytes.append(static_cast<const char*>(data), size);
  }

  std::string Bytes;

 private:
  std::size_t position_ = 0;
};

std::u16string Value(TParameterList& list, const std::u16string& name, bool& found) {
  std::u16string value;
  found = list.GetParameter(name, value);
  return value;
}

// Both paths find a name that stands trimmed in the text, with the same value but for its blanks.
void CheckPaths(TParameterList& list) {
  std::set<std::u16string> seen;
  const std::u16string text = list.GetText();
  Rt_Param::ForEachPair(text, [&](std::u16string_view name, std::u16string_view value, bool) {
    const std::u16string key = Platform::AsciiUpper(Platform::Trim(name));
    const bool first = seen.insert(key).second;
    bool fast = false;
    list.BeginFastRead();
    const std::u16string fast_value = Value(list, key, fast);
    list.EndFastRead();
    Check(fast, "the fast path knows each name");
    Check(!first || Platform::Trim(fast_value) == Platform::Trim(value), "the first value on the fast path");
    bool normal = false;
    const std::u16string normal_value = Value(list, key, normal);
    const bool has_blanks = key.size() < name.size();
    Check(normal || has_blanks, "the normal path knows each name without blanks");
    const bool same = normal_value == value || (normal_value.empty() && value == u" ");
    Check(!first || has_blanks || same, "the first value on the normal path");
  });
}

std::string Saved(TParameterList& list, std::int32_t size) {
  MemoryStream stream;
  list.SaveToStream(stream, size);
  return stream.Bytes;
}

// What is read back is the same, save what 8-bit text cannot hold of names and of later pairs of a name.
void CheckReload(TParameterList& list, std::int32_t size) {
  const std::u16string text = list.GetText();
  const std::u16string upper = Platform::AsciiUpper(text);
  if (upper.starts_with(u"|UNICODE=EXISTS") || upper.find(u"UNICODE_") != upper.npos) return;
  MemoryStream stream;
  stream.Bytes = Saved(list, size);
  const auto again = MakeCounted<TParameterList>();
  again->LoadFromStream(stream, size);
  Check(again->GetAnsi() == list.GetAnsi(), "the plain form survives");
  std::set<std::u16string> seen;
  Rt_Param::ForEachPair(text, [&](std::u16string_view name, std::u16string_view value, bool) {
    const std::u16string key = Platform::AsciiUpper(Platform::Trim(name));
    for (const char16_t unit : key)
      if (unit == u'?' || unit > 0xFF) return;
    if (!seen.insert(key).second) return;
    bool found = false;
    again->BeginFastRead();
    Check(Platform::Trim(Value(*again, key, found)) == Platform::Trim(value), "the value survives");
    again->EndFastRead();
  });
  const auto third = MakeCounted<TParameterList>();
  stream = {};
  stream.Bytes = Saved(*again, size);
  third->LoadFromStream(stream, size);
  Check(third->GetText() == again->GetText(), "a loaded list saves and loads as it is");
}

void CheckNumbers(TParameterList& list, const std::u16string& name) {
  std::int32_t integer = 0;
  double real = 0;
  std::u16string text;
  if (GetParameterAsInteger(&list, name, integer))
    Check(GetParameterAsDouble(&list, name, real) && real == integer, "an integer is a number");
  TUnit unit{};
  if (GetParameterAsString(&list, name, text) && StringToCoordUnit(text, eMetric, integer, unit)) {
    TCoord again = 0;
    const bool converts = StringToCoordUnit(CoordUnitToString(integer, unit), eImperial, again, unit);
    Check(!converts || std::abs(std::int64_t{again} - integer) < 200, "coordinate text reads back");
  }
}

void CheckList(TParameterList& list, const std::u16string& name, const std::u16string& value) {
  CheckPaths(list);
  CheckReload(list, -1);
  CheckReload(list, INT32_MAX);
  list.AddParameter(name, value);
  CheckPaths(list);
  CheckReload(list, -1);
  CheckNumbers(list, name);
  list.AppendEnd();
  CheckPaths(list);
  list.RemoveParameter(name);
  CheckPaths(list);
  Check(static_cast<std::size_t>(list.GetLength()) == list.GetWide().size(), "the length");
}

}  // namespace

// The first byte says how the rest is taken.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t kind = data[0];
  const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::u16string wide = Platform::ToUtf16(bytes.substr(0, bytes.find('\0')));
  const std::u16string name = wide.substr(0, wide.find_first_of(u"|="));
  const std::u16string value = wide.substr(wide.size() / 2, 20);

  const auto list = MakeCounted<TParameterList>();
  switch (kind % 4) {
    case 0:
      list->SetFromWide(wide.c_str());
      break;
    case 1:
      list->SetFromAnsi(bytes.c_str());
      break;
    default:
      MemoryStream stream;
      stream.Bytes = bytes;
      list->LoadFromStream(stream, kind % 4 == 2 ? -1 : static_cast<std::int8_t>(kind) * 1000);
  }
  CheckList(*list, name, value);
  return 0;
}
