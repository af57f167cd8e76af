// The person before the editor, whose answers are bytes.
#pragma once

#include "Editor/Client/Client.h"
#include "Fuzz/Support/Bytes.h"

namespace Ketril::Fuzz {

// Takes each answer from `bytes` as it is at that moment; without bytes left everything is cancelled, so that
// every series of picks ends.
Editor::ClientSetup RandomUser(Bytes& bytes);

}  // namespace Ketril::Fuzz
