#include "DLLs/Tools/Frame/Rt_Param.h"

namespace Ketril::Tools::Rt_Param {
namespace {

template <class List>
auto FirstOf(List& parameters, std::u16string_view name) {
  return std::find_if(parameters.begin(), parameters.end(), [&](const auto& parameter) {
    return Platform::EqualsIgnoringAsciiCase(parameter.Name, name);
  });
}

}  // namespace

bool ReadBoolean(std::u16string_view text, bool& value) {
  text = Platform::Trim(text);
  const bool yes = Platform::EqualsIgnoringAsciiCase(text, u"True");
  if (!yes && !text.empty() && !Platform::EqualsIgnoringAsciiCase(text, u"False")) return false;
  value = yes;
  return true;
}

void TParameterList::SetState(std::u16string_view text, bool replace) {
  ForEachPair(text, [&](std::u16string_view name, std::u16string_view value, bool) {
    AddParameter(name, value, replace);
  });
}

void TParameterList::AddParameter(std::u16string_view name, std::u16string_view value, bool replace) {
  const auto found = replace ? FirstOf(parameters_, name) : parameters_.end();
  if (found != parameters_.end()) {
    found->Value = value;
  } else {
    parameters_.push_back({std::u16string(name), std::u16string(value)});
  }
}

bool TParameterList::SetState_RemoveByName(std::u16string_view name) {
  const auto found = FirstOf(parameters_, name);
  if (found == parameters_.end()) return false;
  parameters_.erase(found);
  return true;
}

void TParameterList::SetState_FromString(std::u16string_view text) {
  ClearAllParameters();
  SetState(text, false);
}

std::u16string TParameterList::GetState_ToString() const {
  std::u16string text;
  for (const TParameter& parameter : parameters_) {
    if (!text.empty()) text += u'|';
    text.append(parameter.Name).append(u"=").append(parameter.Value.empty() ? u" " : parameter.Value);
  }
  return text;
}

const std::u16string* TParameterList::Find(std::u16string_view name) const {
  const auto found = FirstOf(parameters_, Platform::Trim(name));
  return found == parameters_.end() ? nullptr : &found->Value;
}

bool TParameterList::GetState_ParameterAsString(std::u16string_view name, std::u16string& value) const {
  const std::u16string* const text = Find(name);
  if (text) value = *text;
  return text;
}

bool TParameterList::GetState_ParameterAsPChar(std::u16string_view name, const char16_t*& value) const {
  const std::u16string* const text = Find(name);
  if (text) value = text->c_str();
  return text;
}

}  // namespace Ketril::Tools::Rt_Param
