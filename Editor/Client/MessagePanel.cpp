#include "Editor/Client/MessagePanel.h"

#include "Editor/HostCall.h"

namespace Ketril::Editor {

Status PanelWorkspace::AddMessage(const std::u16string& message_class, const std::u16string& text,
                                  const std::u16string& source, std::int32_t image) noexcept {
  return HostCall("IOrvexWorkSpace.AddMessage", [&] {
    if (panel_.add) panel_.add({message_class, text, source, image});
  });
}

Status PanelWorkspace::ShowMessagePanel() noexcept {
  return HostCall("IOrvexWorkSpace.ShowMessagePanel", [&] {
    if (panel_.show) panel_.show();
  });
}

}  // namespace Ketril::Editor
