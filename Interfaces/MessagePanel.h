// The workspace around the editors of one user: where tools leave messages for him to read.
#pragma once

#include "Interfaces/Interface.h"

namespace Ketril {

class IOrvexWorkSpace : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IOrvexWorkSpace"};
  // A new line at the end of the message panel: its class, as "[Warning]", the text, who says it, and the
  // number of the picture before it.
  virtual Status AddMessage(const std::u16string& message_class, const std::u16string& text,
                            const std::u16string& source, std::int32_t image) noexcept = 0;
  // Brings the message panel to the front.
  virtual Status ShowMessagePanel() noexcept = 0;
};

// The module that has the workspace, and its entry that gives it; null when there is none.
using WorkspaceManager_GetWorkspace = IOrvexWorkSpace* (*)();
inline constexpr const char* kModule_WorkspaceManager = "WorkspaceManager.DLL";
inline constexpr const char* kEntry_GetWorkspace = "GetWorkspace";

}  // namespace Ketril
