// The stored options as readers and writers of a server's see them.
#pragma once

#include <optional>

#include "Editor/Client/OptionsStore.h"
#include "Editor/HostObject.h"
#include "Interfaces/Workspace.h"

namespace Ketril::Editor {

// The stored value as a Boolean; empty when it is not there, or is none.
std::optional<bool> ReadBoolean(const OptionsStore& store, const std::u16string& section,
                                const std::u16string& key);

// The store outlives both.
class OptionsReader final : public HostObject<IOptionsReader> {
 public:
  explicit OptionsReader(const OptionsStore& store) : store_(store) {}
  Status ReadBoolean(const std::u16string& section, const std::u16string& key, bool otherwise,
                     bool& value) noexcept override;
  Status ReadString(const std::u16string& section, const std::u16string& key, const std::u16string& otherwise,
                    std::u16string& value) noexcept override;

 private:
  const OptionsStore& store_;
};

class OptionsWriter final : public HostObject<IOptionsWriter> {
 public:
  explicit OptionsWriter(OptionsStore& store) : store_(store) {}
  Status WriteBoolean(const std::u16string& section, const std::u16string& key, bool value) noexcept override;
  Status WriteInteger(const std::u16string& section, const std::u16string& key,
                      std::int32_t value) noexcept override;
  Status WriteString(const std::u16string& section, const std::u16string& key,
                     const std::u16string& value) noexcept override;

 private:
  Status Write(const char* method, const std::u16string& section, const std::u16string& key,
               const std::u16string& value) noexcept;
  OptionsStore& store_;
};

}  // namespace Ketril::Editor
