#include "Interfaces/Tools.h"

namespace Ketril {

void TMethodImplementationIntercept() {}

void* dbkFCallWrapperAddr = nullptr;

}  // namespace Ketril
