#include "DLLs/Tools/Frame/RT_ParameterList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <random>

namespace Ketril::Tools {
namespace {

class MemoryStream final : public IByteStream {
 public:
  explicit MemoryStream(std::string bytes = {}) : Bytes(std::move(bytes)) {}
  std::size_t Read(void* data, std::size_t size) override {
    const std::size_t got = Bytes.copy(static_cast<char*>(data), size, Position);
    Position += got;
    return got;
  }
  void Write(const void* data, std::size_t size) override {
    Bytes.append(static_cast<const char*>(data), size);
  }

  std::string Bytes;
  std::size_t Position = 0;
};

Ref<TParameterList> ListOf(const std::u16string& text) {
  auto list = MakeCounted<TParameterList>();
  list->SetFromWide(text.c_str());
  return list;
}

Ref<TParameterList> Loaded(const std::string& bytes, std::int32_t size) {
  MemoryStream stream(bytes);
  auto list = MakeCounted<TParameterList>();
  list->LoadFromStream(stream, size);
  return list;
}

std::string Saved(TParameterList& list, std::int32_t size) {
  MemoryStream stream;
  list.SaveToStream(stream, size);
  return stream.Bytes;
}

constexpr const char16_t* kMissing = u"(missing)";

std::u16string Get(TParameterList& list, const std::u16string& name) {
  std::u16string value = u"left over";
  const bool found = list.GetParameter(name, value);
  EXPECT_TRUE(found || value.empty());
  return found ? value : kMissing;
}

std::u16string FastGet(TParameterList& list, const std::u16string& name) {
  list.BeginFastRead();
  std::u16string value = Get(list, name);
  list.EndFastRead();
  return value;
}

std::string Bytes(const char* text, std::size_t zeros = 1) {
  return text + std::string(zeros, '\0');
}

TEST(ParameterList, ReadsOnBothPaths) {
  const struct {
    const char* Name;
    const char16_t *Text, *Query, *Normal, *Fast;
  } rows[] = {
      {"leading bar, other case", u"|A=1|B=2", u"b", u"2", u"2"},
      {"no leading bar", u"A=1|B=2", u"A", u"1", u"1"},
      {"= in the value", u"X=a=b", u"X", u"a=b", u"a=b"},
      {"first of two", u"A=1|a=2", u"A", u"1", u"1"},
      {"empty value", u"A=|B=1", u"A", u"", u""},
      {"segment without =", u"A|B=1||", u"A", kMissing, kMissing},
      {"other letters keep their case", u"\u00E4=1", u"\u00C4", kMissing, kMissing},
      {"blanks in the query", u"A=1|B=2", u" a ", u"1", kMissing},
      {"blanks around the name", u" A =1|B=2", u"A", kMissing, u"1"},
      {"blanks around a value", u"A=\t 1 \n|B=2", u"A", u"\t 1 \n", u"1"},
      {"blanks around the last value", u"A=\t 1 \n", u"A", u"\t 1 \n", u"1 \n"},
      {"a bar makes it not the last", u"A= 1 |", u"A", u" 1 ", u"1"},
  };
  for (const auto& row : rows) {
    const auto list = ListOf(row.Text);
    EXPECT_EQ(Get(*list, row.Query), row.Normal) << row.Name;
    EXPECT_EQ(FastGet(*list, row.Query), row.Fast) << row.Name;
    FastReadOfAllLists = true;
    EXPECT_EQ(Get(*list, row.Query), row.Fast) << row.Name;
    FastReadOfAllLists = false;
  }
}

TEST(ParameterList, EachChangeReachesBothPathsAndTheText) {
  MemoryStream stream(Bytes("M=8"));
  const struct {
    const char* Name;
    std::function<void(TParameterList&)> Change;
    const char16_t *Text, *M;
  } rows[] = {
      {"add", [](auto& list) { list.AddParameter(u"x", u""); }, u"k=1|M=2|m=3|X= ", u"2"},
      {"replace", [](auto& list) { list.AddParameter(u"m", u"7"); }, u"k=1|M=7|m=3", u"7"},
      {"replace by pairs", [](auto& list) { list.AddParameter(u"K", u"1|M=5"); }, u"k=1|M=5|M=2|m=3", u"5"},
      {"remove", [](auto& list) { list.RemoveParameter(u"M"); }, u"k=1|m=3", u"3"},
      {"wide", [](auto& list) { list.SetFromWide(u"|M=4"); }, u"|M=4", u"4"},
      {"8-bit", [](auto& list) { list.SetFromAnsi("M=\xE4"); }, u"M=\u00E4", u"\u00E4"},
      {"end", [](auto& list) { list.AppendEnd(); }, u"|k=1|M=2|m=3\r", u"2"},
      {"clear", [](auto& list) { list.Clear(); }, u"", kMissing},
      {"load", [&](auto& list) { list.LoadFromStream(stream, 4); }, u"M=8", u"8"},
  };
  for (const auto& row : rows) {
    const auto list = ListOf(u"|k=1|M=2|m=3");
    list->SetModified(false);
    EXPECT_EQ(Get(*list, u"M") + FastGet(*list, u"M"), u"22");
    list->RemoveParameter(u"none");
    EXPECT_FALSE(list->GetModified());
    row.Change(*list);
    EXPECT_EQ(Get(*list, u"m"), row.M) << row.Name;
    EXPECT_EQ(FastGet(*list, u"m"), row.M) << row.Name;
    EXPECT_EQ(list->GetText(), row.Text) << row.Name;
    EXPECT_TRUE(list->GetModified()) << row.Name;
  }
}

TEST(ParameterList, CopiesTheText) {
  const auto list = ListOf(u"A=\u0416\u00E4");
  EXPECT_EQ(list->GetLength(), 4);
  EXPECT_EQ(list->GetAnsi(), "A=?\xE4");
  for (const std::int32_t size : {-1, 7, 3, 0, -9}) {
    std::u16string buffer(8, u'x');
    list->CopyToBuffer(buffer.data(), size);
    const std::size_t copied = size == -1 ? 4 : std::clamp(size, 0, 4);
    EXPECT_EQ(buffer, list->GetWide().substr(0, copied) + u'\0' + std::u16string(7 - copied, u'x')) << size;
  }
}

TEST(ParameterList, SavesToTheByte) {
  const auto list = MakeCounted<TParameterList>();
  EXPECT_EQ(Saved(*list, 0), Bytes(""));
  EXPECT_EQ(Saved(*list, -1), Bytes("\x01", 4));
  list->AddParameter(u"a", u"1");
  EXPECT_EQ(Saved(*list, 0), Bytes("A=1"));
  list->AddParameter(u"name", u"\u00E4\U0001F600");
  const std::string saved = Bytes("|UNICODE=EXISTSA=1|NAME=\xE4??|UNICODE__NAME=228,55357,56832");
  EXPECT_EQ(Saved(*list, 0), saved);
  EXPECT_EQ(Saved(*list, -1), Bytes("\x3A", 3) + saved);
}

TEST(ParameterList, LoadsWhatOthersSaved) {
  const std::string big(9000, 'x');
  const struct {
    const char* Name;
    std::string Bytes;
    std::int32_t Size;
    std::u16string Text;
  } rows[] = {
      {"marker in another case", "|unicode=existsA=?|unicode__a=1046", 99, u"A=\u0416"},
      {"text with bars", "|UNICODE=EXISTS|A=? |B=1||UNICODE__A=1046", 99, u"|A=\u0416 |B=1|"},
      {"another length", "|UNICODE=EXISTSA=??|UNICODE__A=1046", 99, u"A=??"},
      {"beyond a code unit", "|UNICODE=EXISTSA=?|UNICODE__A=65536", 99, u"A=?"},
      {"no bar can come in", "|UNICODE=EXISTSA=?|UNICODE__A=124", 99, u"A=?"},
      {"no plain pair", "|UNICODE=EXISTSA=?|UNICODE_=1|UNICODE__B=1", 99, u"A=?"},
      {"only extra pairs", "|UNICODE=EXISTSUNICODE__B=1|A=2", 99, u""},
      {"without the marker", "A=?|UNICODE__A=1046", 99, u"A=?|UNICODE__A=1046"},
      {"up to the zero", Bytes("A=1") + "B", 99, u"A=1"},
      {"negative size", "A=1", -2, u""},
      {"length ahead", Bytes("\x03", 3) + "A=12", -1, u"A=1"},
      {"length too large", "\xFF\xFF\xFF\x7F" + big, -1, std::u16string(9000, u'x')},
      {"length negative", "\xFF\xFF\xFF\xFF" + big, -1, u""},
      {"length cut short", "\x03", -1, u""},
  };
  for (const auto& row : rows) EXPECT_EQ(Loaded(row.Bytes, row.Size)->GetText(), row.Text) << row.Name;
}

TEST(ParameterList, RandomListsSurviveSaveAndLoad) {
  const std::uint32_t seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const std::u16string units = u"aZ=, \t\u007F\u0080\u00FF?\u0416\U0001F600\uFFFF";
  for (int run = 0; run < 300; ++run) {
    auto list = MakeCounted<TParameterList>();
    std::map<std::u16string, std::u16string> pairs;
    for (std::uint32_t left = random() % 8; left > 0; --left) {
      const std::u16string name = u"N\u00E4" + Int64ToText(random() % 10);
      std::u16string value(random() % 6, u' ');
      for (char16_t& unit : value) unit = units[random() % units.size()];
      list->AddParameter(name, value);
      pairs[name] = value.empty() ? u" " : value;
    }
    const std::int32_t size = random() % 2 ? -1 : 1 << 20;
    list = Loaded(Saved(*list, size), size);
    for (const auto& [name, value] : pairs) {
      ASSERT_EQ(Get(*list, name), value);
      ASSERT_EQ(Platform::Trim(FastGet(*list, name)), Platform::Trim(value));
    }
    ASSERT_EQ(list->GetText().find(u"UNICODE"), std::u16string::npos);
  }
}

TEST(ParameterList, ReadsNumbers) {
  const struct {
    const char16_t* Text;
    std::optional<std::int32_t> Integer;
    std::optional<double> Double;
  } rows[] = {
      {u" +7\r", 7, 7},
      {u"-2147483648", INT32_MIN, -2147483648.0},
      {u"2147483648", {}, 2147483648.0},
      {u"", 0, 0},
      {u" ", 0, 0},
      {u"-.5e1", {}, -5},
      {u"1,5", {}, {}},
      {u"+-1", {}, {}},
      {u"inf", {}, {}},
      {u"1e999", {}, {}},
      {u"\u0661", {}, {}},
  };
  for (const auto& row : rows) {
    const auto list = ListOf(std::u16string(u"A=") + row.Text);
    std::int32_t integer = -77;
    double real = -77;
    EXPECT_EQ(GetParameterAsInteger(list.Get(), u"A", integer), row.Integer.has_value());
    EXPECT_EQ(GetParameterAsDouble(list.Get(), u"A", real), row.Double.has_value());
    EXPECT_FALSE(GetParameterAsDouble(list.Get(), u"B", real) || GetParameterAsDouble(nullptr, u"A", real));
    EXPECT_EQ(integer, row.Integer.value_or(-77));
    EXPECT_EQ(real, row.Double.value_or(-77));
  }
}

TEST(ParsedList, KeepsTypesAndOrder) {
  Rt_Param::TParameterList list;
  list.SetState_AddParameterAsInt64(u"I", INT64_MIN);
  list.SetState_AddParameterAsDouble(u"D", 0.1);
  list.SetState_AddParameterAsBoolean(u"B", true);
  list.SetState_AddParameterAsInteger(u"w", 65535);
  list.SetState(u"b=0|w=1", false);
  EXPECT_EQ(list.GetState_ToString(), u"I=-9223372036854775808|D=0.1|B=True|w=65535|b=0|w=1");
  double real = 0;
  bool yes = false;
  std::uint16_t word = 0;
  std::int16_t small = 5;
  EXPECT_TRUE(list.GetState_ParameterAsReal(u" d", real) && real == 0.1);
  EXPECT_TRUE(list.GetState_ParameterAsBoolean(u"b", yes) && yes);
  EXPECT_TRUE(list.GetState_ParameterAsWord(u"W", word) && word == 65535);
  EXPECT_FALSE(list.GetState_ParameterAsSmallInt(u"w", small) ||
               list.GetState_ParameterAsWordBool(u"w", yes));
  EXPECT_TRUE(small == 5 && yes);

  list.SetState(u"W=3|X=4|x=5", true);
  EXPECT_TRUE(list.SetState_RemoveByName(u"I") && !list.SetState_RemoveByName(u"I"));
  EXPECT_EQ(list.GetState_ToString(), u"D=0.1|B=True|w=3|b=0|w=1|X=5");
}

}  // namespace
}  // namespace Ketril::Tools
