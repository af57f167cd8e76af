// The workspace around the editor, and its message panel.
#pragma once

#include "Interfaces/MessagePanel.h"

namespace Ketril::Tools {

// Asked for at each call; empty when there is none.
Ref<IOrvexWorkSpace> Workspace();

}  // namespace Ketril::Tools
