// The named parameters of a command: the library's own parameter list, and typed reads from any.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "DLLs/Tools/Frame/CountedObject.h"
#include "DLLs/Tools/Frame/Rt_Param.h"
#include "Interfaces/ParameterList.h"

namespace Ketril::Tools {

// Where the value of a parameter stands in the text, in code units.
struct TParameterValue {
  std::size_t Start = 0;
  std::size_t Length = 0;
};

// An index over the text of a parameter list. Names are trimmed and in upper case; the first pair of a name
// counts. Values are without the characters up to the blank at both ends, except that the last segment of the
// text keeps its trailing ones.
class TFastReader {
 public:
  // `needs_unicode_processing` says that the text holds a unicode part, as TParameterList saves it: its
  // values are put in place of the plain ones, and it goes out of the text.
  void SetState(std::u16string data, bool needs_unicode_processing);

  // `name` is in upper case already and is not trimmed. The result holds as long as the reader.
  std::optional<std::u16string_view> Find(const std::u16string& name) const;
  const std::u16string& Data() const { return FData; }

 private:
  void ParseData();
  void ProcessUnicode();
  std::u16string_view View(TParameterValue value) const;

  std::u16string FData;
  std::unordered_map<std::u16string, TParameterValue> FParams;
  bool FNeedsUnicodeProcessing = false;
};

// While set, every list reads through its index, as between BeginFastRead and EndFastRead.
extern bool FastReadOfAllLists;

// A text of parameters; each change of it, loading too, sets the modified flag. The text is what counts: a
// value with | in it, given to AddParameter, falls apart into what the text then says. The text holds no
// character of code 0.
//
// Reading has two paths. The fast one asks the index for the name as it was given; the normal one asks the
// parsed list for the trimmed name, and gives names and values as they stand, blanks included. AddParameter
// writes the text anew: its own name in upper case, no leading |, an empty value as one blank. Of a name that
// is there twice it replaces, and RemoveParameter removes, the first.
//
// 8-bit text is Latin-1 here, one byte for each UTF-16 code unit, with ? for what that cannot hold, so that
// positions are the same in both. What a value loses by it a stream carries in its unicode part, behind the
// text: for each name with a value outside ASCII the pair "UNICODE__NAME", the code units in decimal, joined
// by commas. The marker "|UNICODE=EXISTS" then stands right ahead of the text. Names that begin with UNICODE_
// are therefore reserved; what other names lose stays lost.
class TParameterList final : public CountedObject<IParameterList> {
 public:
  bool GetModified() override { return FModified; }
  void SetModified(bool modified) override { FModified = modified; }
  void SetFromAnsi(const char* text) override;      // null counts as empty
  void SetFromWide(const char16_t* text) override;  // null counts as empty
  void AddParameter(const std::u16string& name, const std::u16string& value) override;
  void RemoveParameter(const std::u16string& name) override;
  bool GetParameter(const std::u16string& name, std::u16string& value) override;
  std::int32_t GetLength() override;
  // `buffer` has room for `size` units, or for the whole text, and the zero.
  void CopyToBuffer(char16_t* buffer, std::int32_t size) override;
  std::string GetAnsi() override;
  std::u16string GetWide() override { return Text(); }
  std::u16string GetText() override { return Text(); }
  // Takes what the stream has, if that is less than `size` or than the length that it gives; a negative one
  // is nothing. The text ends at the first zero byte.
  void LoadFromStream(IByteStream& stream, std::int32_t size) override;
  // With `size` -1 writes the length of what follows, its closing zero included, as four bytes, the lowest
  // first. Any other `size` leaves that out.
  void SaveToStream(IByteStream& stream, std::int32_t size) override;
  void AppendEnd() override;
  void Clear() override;
  void BeginFastRead() override { ++FFastParamListCount; }
  void EndFastRead() override { --FFastParamListCount; }

 private:
  const std::u16string& Text();
  const TFastReader& FastReader();
  Rt_Param::TParameterList& SlowParams();
  void SetText(std::u16string text);
  void WriteSlowParams();
  void WorkOutUnicodeParameters();

  std::u16string FData;  // read it through Text
  bool FDataChanged = false;
  std::optional<TFastReader> FFastReader;
  Rt_Param::TParameterList FSlowParams;
  bool FModified = false;
  std::int32_t FFastParamListCount = 0;
  std::u16string FUnicodeParameters;  // as of the last save
  bool FNeedsUnicodeProcessing = false;
};

// Typed reads. An empty reference, a missing name and a value that does not convert give false and leave
// `value` alone; numbers are read as by ReadNumber.
bool GetParameterAsString(IParameterList* parameters, const std::u16string& name, std::u16string& value);
bool GetParameterAsInteger(IParameterList* parameters, const std::u16string& name, std::int32_t& value);
bool GetParameterAsDouble(IParameterList* parameters, const std::u16string& name, double& value);

}  // namespace Ketril::Tools
