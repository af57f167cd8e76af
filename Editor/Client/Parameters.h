// The named parameters with which the editor starts a tool.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Editor/HostObject.h"
#include "Interfaces/ParameterList.h"

namespace Ketril::Editor {

// Pairs in order, each name once. The text forms are made from the pairs and taken apart into them: what has
// no = is dropped. 8-bit text is UTF-8, also in streams.
class Parameters final : public HostObject<IParameterList> {
 public:
  bool GetModified() override { return modified_; }
  void SetModified(bool modified) override { modified_ = modified; }
  void SetFromAnsi(const char* text) override;
  void SetFromWide(const char16_t* text) override;
  void AddParameter(const std::u16string& name, const std::u16string& value) override;
  void RemoveParameter(const std::u16string& name) override;
  bool GetParameter(const std::u16string& name, std::u16string& value) override;
  std::int32_t GetLength() override { return static_cast<std::int32_t>(GetText().size()); }
  void CopyToBuffer(char16_t* buffer, std::int32_t size) override;
  std::string GetAnsi() override;
  std::u16string GetWide() override { return GetText(); }
  std::u16string GetText() override;
  void LoadFromStream(IByteStream& stream, std::int32_t size) override;
  void SaveToStream(IByteStream& stream, std::int32_t size) override;
  void AppendEnd() override {}  // the pairs have an end of their own
  void Clear() override;
  void BeginFastRead() override {}
  void EndFastRead() override {}

 private:
  using Pair = std::pair<std::u16string, std::u16string>;
  Pair* Find(const std::u16string& name);

  std::vector<Pair> pairs_;
  bool modified_ = false;
};

}  // namespace Ketril::Editor
