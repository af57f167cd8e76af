// The report commands.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "Interfaces/ParameterList.h"
#include "Interfaces/Reports.h"

namespace Ketril::Tools {

void ReportSpecs(TBoard* board, IParameterList* parameters, IReportOutputOptions* options,
                 const std::u16string& file_name);
void ReportNetlistStatus(TBoard* board, const std::u16string& file_name, IReportOutputOptions* options);
void CreateReportForComponent(TBoard* board, const std::u16string& file_name, IPCB_Library* library);
void CreateReportForLibrary(TBoard* board, const std::u16string& file_name, IPCB_Library* library);

}  // namespace Ketril::Tools
