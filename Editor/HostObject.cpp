#include "Editor/HostObject.h"

namespace Ketril::Editor {

std::int64_t LiveObjects::count_ = 0;

}  // namespace Ketril::Editor
