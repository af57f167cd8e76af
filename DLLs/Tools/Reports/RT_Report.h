// Reports as one XML document, written element by element and turned into files by style sheets.
//
//   report (root)
//     title, resource_path                  texts
//     date, time                            texts, by StartReport
//     filename/file                         by StartReport, of a report on a file
//     frontmatter (name, ...)               section (title, ...)           error
//     elapsed_time                          text, by EndReport
//   table [suppress_title, numeric_totals]  title, columns [use], type, then row [html_style]
//   columns/column [data_type]              what is in the header; a column may hold subcolumns
//   row/cell [html_style]                   what is in the cell
//   summary_table                           title, columns/column [type]
//   list/listelement, callback [viewname, document, process, parameters], file [filename],
//   hyperlink [address, description, open_In_New_Window], image [filename], text, linebreak, space, hr, h1,
//   h2, contents                            anywhere
//
// The state of the writer is the name of the current element: Start adds an element and makes it current, End
// goes back to its parent, Write leaves it current. A call that does not fit there raises
// EGeneralReportException and changes nothing; which calls look at it is told at each of them. A report lives
// on one thread.
#pragma once

#include <initializer_list>
#include <span>
#include <string>

#include "DLLs/Tools/Reports/RT_ReportTypes.h"
#include "DLLs/Tools/Reports/Variant.h"
#include "Interfaces/Reports.h"

namespace Ketril::Tools {

class TBaseReport {
 public:
  // `filename` is what the report is about, as its path; it may be empty.
  TBaseReport(const std::u16string& title, const std::u16string& filename);
  virtual ~TBaseReport() = default;
  TBaseReport(const TBaseReport&) = delete;
  TBaseReport& operator=(const TBaseReport&) = delete;

  virtual void StartReport();
  virtual void EndReport();  // in the report itself

  // In the report itself, both.
  void StartSection(const std::u16string& section_name);
  void WriteError(const std::u16string& text);
  void EndSection();
  void StartFrontMatter(const std::u16string& name);  // anywhere
  void EndFrontMatter();
  void WriteContents();

  // The first form is a table without a visible title, whose columns take the title's place; after the second
  // one the caller writes the columns; the others write them. A null or empty list writes nothing at all.
  void StartTable(const std::u16string& title);
  void StartTable(const std::u16string& title, TTableOptions options);
  void StartTable(const std::u16string& title, std::span<const std::u16string> column_headings,
                  TTableOptions options);
  void StartTableFromStringList(const std::u16string& title, const TStringList* column_headings,
                                TTableOptions options);
  // Also fills up the rows named "tr" that an HTML fragment may have brought: to the width of the widest.
  void EndTable();
  void WriteTableType(const std::u16string& table_type);  // in a table
  void StartColumns(bool use_title);
  void EndColumns();
  void StartColumnHeader(TColumnDataType data_type);
  void EndColumnHeader();
  void StartSubColumns();
  void EndSubColumns();
  void StartRow(const std::u16string& html_style = {});
  void EndRow();
  void StartCell(const std::u16string& html_style = {});
  void EndCell();
  // `column_names` may be the shorter of the two.
  void WriteReportSummary(const std::u16string& title, std::span<const std::u16string> column_types,
                          std::span<const std::u16string> column_names);

  void StartList();
  void EndList();
  void StartListElement();
  void EndListElement();

  // What is inside becomes a link that runs the process in the view. The view may be empty.
  void StartCallBack(const std::u16string& process, const std::u16string& parameters,
                     IServerDocumentView* view);
  void EndCallBack();
  void WriteHyperlinkText(const std::u16string& url, const std::u16string& description,
                          bool open_in_new_window);
  void WriteJumpToOrvexDocument(const std::u16string& text, const std::u16string& full_path);
  void WriteImage(const std::u16string& full_path);

  // With `preserve_lines` each line that is not empty becomes a text of its own, with a line break between.
  void WriteText(const Variant& value, bool preserve_lines = false);
  void WriteLineBreak();
  void WriteSpace();
  void WriteHorizontalLine();

  // Files. The name of what was written comes back: with several transformations that of the last, empty for
  // one that is switched off. `generating_document` is the path of the document that the report is on: the
  // report goes to the output folder of its project, else beside it. See RT_ReportOutput.cpp.
  std::u16string WriteToFile(const std::u16string& generating_document, const std::u16string& report_name,
                             bool show);
  // Without options, as without a transformation: by the default style sheet.
  std::u16string WriteToFile(const std::u16string& generating_document, IReportOutputOptions* options);
  std::u16string WriteToFile(const std::u16string& generating_document,
                             IReportOutputTransformation* transformation);
  // Raises EGeneralReportException when the style sheet cannot be used.
  std::u16string WriteToString(const std::u16string& style_sheet) const;
  // By the style sheet, whose "file_extension" decides the extension. A sheet that is not there is told to
  // the user, and nothing is written; one that fails is told, and raises EGeneralReportException.
  std::u16string WriteTransformed(const std::u16string& output_file, const std::u16string& style_sheet) const;
  std::u16string WriteAsXML(const std::u16string& output_file) const;  // with the extension "xml"

 protected:
  // Raises EGeneralReportException with `message` unless the current element has that name.
  void Require(std::u16string_view name, const char* message) const;
  IXMLNode Start(std::u16string_view name);
  void End(std::u16string_view name, const char* message);
  // An element under the current one, with a text.
  IXMLNode Add(std::u16string_view name, std::u16string_view text = {});
  void WriteColumnHeader(const std::u16string& heading, TColumnDataType data_type);
  IXMLNode StartStyled(std::u16string_view name, const std::u16string& html_style);

  std::u16string FFilename;
  IXMLDocument FXMLDocument;
  IXMLNode FCurrentNode;
  TDate FStartDate;
  TTime FStartTime;
};

// Writes of several elements at once.
class TGeneralReport : public TBaseReport {
 public:
  using TBaseReport::TBaseReport;

  void WriteLine(const std::u16string& text);
  void WriteHeading(const std::u16string& text);
  void WriteSectionHeading(const std::u16string& text);
  void WriteRow(std::span<const Variant> values, std::span<const std::u16string> html_styles = {});
  void WriteRow(std::initializer_list<Variant> values) { WriteRow(std::span(values.begin(), values.size())); }
  void WriteCell(const std::u16string& text, const std::u16string& html_style = {});  // in a row
  void WriteCallBackText(const std::u16string& text, const std::u16string& process,
                         const std::u16string& parameters, IServerDocumentView* view);
  void WriteFrontMatter(const std::u16string& name, const Variant& value);  // in the report itself
};

}  // namespace Ketril::Tools
