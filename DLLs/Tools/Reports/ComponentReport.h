// The reports on a footprint library: on its current component, and the list of its components.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesLibrary.h"
#include "DLLs/Tools/Reports/TextReportFile.h"

namespace Ketril::Tools {

// `ABoard` is the library's editing board, on which its current component lies. Needs an open object scope;
// raises EHostError when the host fails, and Exception when the library does not list its components.
class TComponentReport {
 public:
  TComponentReport(TBoard* ABoard, std::u16string AOutputFileName, TPCBComponentLibrary* ACompLibrary);

  // Name, library, date, size of the component, and its objects by layer. A library without a current
  // component has no name there.
  void CreateComponentReport();
  // How many components the library has, and their names in order.
  void CreateLibraryReport();
  void LoadReportIntoTextEditor() const { Tools::LoadReportIntoTextEditor(OutputFileName); }

  void WriteHeader();
  void WriteSummary();

 private:
  void WriteLibraryAndDate();
  void WriteDimension();

  TBoard* Board;
  TTextReportFile f;
  std::u16string OutputFileName;
  TPCBComponentLibrary* CompLibrary;
  TLibComponent* Component;
};

}  // namespace Ketril::Tools
