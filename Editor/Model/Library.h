// A library of footprints.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/Groups.h"

namespace Ketril::Editor {

class Library final : public HostObject<IPCB_Library2> {
 public:
  std::u16string file_name;
  std::vector<Ref<LibComponent>> components;
  std::size_t current = 0;  // beyond the end for none

  KETRIL_HOST_READ(IPCB_Library, std::u16string, FileName, file_name)
  KETRIL_HOST_READ(IPCB_Library2, std::int32_t, ComponentCount, static_cast<std::int32_t>(components.size()))
  KETRIL_HOST_METHOD(IPCB_Library2, GetState_ComponentAt,
                     (std::int32_t index, Ref<IPCB_LibComponent>& component),
                     void(component = At(static_cast<std::size_t>(index))))
  KETRIL_HOST_READ(IPCB_Library2, Ref<IPCB_LibComponent>, CurrentComponent, At(current))

 private:
  // A negative index is beyond every end.
  Ref<IPCB_LibComponent> At(std::size_t index) const {
    return index < components.size() ? Ref<IPCB_LibComponent>(components[index].Get())
                                     : Ref<IPCB_LibComponent>();
  }
};

}  // namespace Ketril::Editor
