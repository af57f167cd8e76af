// The options of the teardrop tools, as the host keeps them: texts by section and key.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/HostLink.h"
#include "Interfaces/Client.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

// False when there is none, or nothing but blanks. Raises EHostError.
inline bool FindStoredOption(const Ref<IClient>& client, const std::u16string& section,
                             const std::u16string& key, std::u16string& text) {
  bool found = false;
  text.clear();
  On(client).Call(&IClient::ReadOption, section, key, text, found);
  return found && !Platform::Trim(text).empty();
}

}  // namespace Ketril::Tools
