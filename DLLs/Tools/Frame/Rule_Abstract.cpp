#include "DLLs/Tools/Frame/Rule_Abstract.h"

#include "DLLs/Tools/Frame/PrimitivesFactory.h"

namespace Ketril::Tools {

TRule* TRule::Replicate(TCopyMode) const {
  return CheckedCast<TRule>(CreatePrimitiveWrapper(HostReplica()));
}

}  // namespace Ketril::Tools
