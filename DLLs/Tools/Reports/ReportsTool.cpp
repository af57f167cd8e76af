#include "DLLs/Tools/Reports/ReportsTool.h"

#include "DLLs/Tools/Reports/ComponentReport.h"
#include "DLLs/Tools/Reports/NetReporter.h"
#include "DLLs/Tools/Reports/Reports.h"

namespace Ketril::Tools {

void ReportSpecs(TBoard* board, IParameterList* parameters, IReportOutputOptions* options,
                 const std::u16string& file_name) {
  TBoardReporter(parameters, board, file_name, options).Execute();
}

void ReportNetlistStatus(TBoard* board, const std::u16string& file_name, IReportOutputOptions* options) {
  TNetReporter(board).CreateReport()->WriteToFile(file_name, options);
}

void CreateReportForComponent(TBoard* board, const std::u16string& file_name, IPCB_Library* library) {
  // Both wrappers belong to the object scope.
  TComponentReport report(board, file_name, new TPCBComponentLibrary(Ref<IPCB_Library>(library)));
  report.CreateComponentReport();
  report.LoadReportIntoTextEditor();
}

void CreateReportForLibrary(TBoard* board, const std::u16string& file_name, IPCB_Library* library) {
  TComponentReport report(board, file_name, new TPCBComponentLibrary(Ref<IPCB_Library>(library)));
  report.CreateLibraryReport();
  report.LoadReportIntoTextEditor();
}

}  // namespace Ketril::Tools
