// Parameter text taken apart into a list, with typed reads and writes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "DLLs/Tools/Frame/NumberText.h"

namespace Ketril::Tools::Rt_Param {

// Walks the segments of a text of parameters, which | separates, and calls `pair(name, value, is_last)` for
// each that has a =. The first = ends the name. Nothing is trimmed; the arguments are views into `text`.
template <class Pair>
void ForEachPair(std::u16string_view text, Pair&& pair) {
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find(u'|', start), text.size());
    const std::u16string_view segment = text.substr(start, end - start);
    if (const std::size_t equals = segment.find(u'='); equals != segment.npos)
      pair(segment.substr(0, equals), segment.substr(equals + 1), end == text.size());
    start = end + 1;
  }
}

// "True" and "False" in any case, with blanks at the ends; a text of blanks is false. Gives whether `text`
// was one of these; if not, it leaves `value` alone.
bool ReadBoolean(std::u16string_view text, bool& value);

// Pairs in order. Names compare without regard to case, for the ASCII letters, and keep the case they came
// in. A name may be there several times: the first counts. A search walks the list.
class TParameterList {
 public:
  void ClearAllParameters() { parameters_.clear(); }

  // Adds the pairs of a text; with `replace`, one whose name is there already changes that one's value.
  void SetState(std::u16string_view text, bool replace);
  void AddParameter(std::u16string_view name, std::u16string_view value, bool replace);
  // The first pair of the name; false when there is none. A further one of that name then comes to light.
  bool SetState_RemoveByName(std::u16string_view name);

  // The whole list as text, without a leading |; a value of no characters is written as one blank.
  void SetState_FromString(std::u16string_view text);
  std::u16string GetState_ToString() const;

  // Typed reads. The name is trimmed. A missing name and a value that does not convert give false and leave
  // `value` alone. Numbers are read as by ReadNumber, Booleans as by ReadBoolean.
  bool GetState_ParameterAsString(std::u16string_view name, std::u16string& value) const;
  // The text belongs to the list and holds until the list changes.
  bool GetState_ParameterAsPChar(std::u16string_view name, const char16_t*& value) const;
  bool GetState_ParameterAsWord(std::u16string_view name, std::uint16_t& value) const {
    return Read(name, value);
  }
  bool GetState_ParameterAsInteger(std::u16string_view name, std::int32_t& value) const {
    return Read(name, value);
  }
  bool GetState_ParameterAsInt64(std::u16string_view name, std::int64_t& value) const {
    return Read(name, value);
  }
  bool GetState_ParameterAsSmallInt(std::u16string_view name, std::int16_t& value) const {
    return Read(name, value);
  }
  bool GetState_ParameterAsLongInt(std::u16string_view name, std::int32_t& value) const {
    return Read(name, value);
  }
  bool GetState_ParameterAsReal(std::u16string_view name, double& value) const { return Read(name, value); }
  bool GetState_ParameterAsDouble(std::u16string_view name, double& value) const { return Read(name, value); }
  bool GetState_ParameterAsBoolean(std::u16string_view name, bool& value) const { return Read(name, value); }
  bool GetState_ParameterAsWordBool(std::u16string_view name, bool& value) const { return Read(name, value); }

  // Typed writes append a pair, whether or not the name is there; the last one replaces the first of the
  // name.
  void SetState_AddParameterAsString(std::u16string_view name, std::u16string_view value) {
    AddParameter(name, value, false);
  }
  void SetState_AddParameterAsInteger(std::u16string_view name, std::int32_t value) {
    AddParameter(name, Int64ToText(value), false);
  }
  void SetState_AddParameterAsInt64(std::u16string_view name, std::int64_t value) {
    AddParameter(name, Int64ToText(value), false);
  }
  void SetState_AddParameterAsDouble(std::u16string_view name, double value) {
    AddParameter(name, DoubleToText(value), false);
  }
  void SetState_AddParameterAsBoolean(std::u16string_view name, bool value) {
    AddParameter(name, value ? u"True" : u"False", false);
  }
  void SetState_AddOrReplaceParameter(std::u16string_view name, std::u16string_view value) {
    AddParameter(name, value, true);
  }

 private:
  struct TParameter {
    std::u16string Name;
    std::u16string Value;
  };

  // The value of the first pair of the trimmed name; null when there is none.
  const std::u16string* Find(std::u16string_view name) const;

  template <class T>
  bool Read(std::u16string_view name, T& value) const {
    const std::u16string* const text = Find(name);
    if constexpr (std::same_as<T, bool>) {
      return text && ReadBoolean(*text, value);
    } else {
      return text && ReadNumber(*text, value);
    }
  }

  std::vector<TParameter> parameters_;
};

}  // namespace Ketril::Tools::Rt_Param
