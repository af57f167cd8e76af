// The tables of a report.
#include <algorithm>

#include "DLLs/Tools/Reports/RT_Report.h"

namespace Ketril::Tools {

namespace {

std::vector<IXMLNode> Named(const std::vector<IXMLNode>& nodes,
                            std::initializer_list<std::u16string_view> names) {
  std::vector<IXMLNode> found;
  std::ranges::copy_if(nodes, std::back_inserter(found), [&](IXMLNode node) {
    return std::ranges::find(names, node.NodeName()) != names.end();
  });
  return found;
}

// Makes the rows that are HTML's own as wide as the widest of them: a lone header spans the table, other
// short rows get empty cells.
void RepairHtmlRows(IXMLNode table) {
  const std::vector<IXMLNode> rows = Named(table.ChildNodes(), {u"tr"});
  const auto cells_of = [](IXMLNode row) { return Named(row.ChildNodes(), {u"td", u"th"}); };
  std::size_t width = 0;
  for (const IXMLNode row : rows) width = std::max(width, cells_of(row).size());
  for (const IXMLNode row : rows) {
    const std::vector<IXMLNode> cells = cells_of(row);
    if (cells.size() == 1 && width > 1 && cells[0].NodeName() == u"th") {
      cells[0].SetAttribute(u"colspan", Int64ToText(static_cast<std::int64_t>(width)));
      continue;
    }
    for (std::size_t i = cells.size(); i < width; ++i) row.AddChild(u"td");
  }
}

}  // namespace

void TBaseReport::StartTable(const std::u16string& title) {
  StartTable(title, ctSuppressTitle);
  StartColumns(true);
  EndColumns();
}

void TBaseReport::StartTable(const std::u16string& title, TTableOptions options) {
  const IXMLNode table = Start(u"table");
  if (options & ctSuppressTitle) table.SetAttribute(u"suppress_title", u"true");
  if (options & ctWriteNumericTotals) table.SetAttribute(u"numeric_totals", u"true");
  Add(u"title", title);
}

void TBaseReport::StartTable(const std::u16string& title, std::span<const std::u16string> column_headings,
                             TTableOptions options) {
  StartTable(title, options);
  StartColumns((options & ctSpanTitleAcrossHeader) != 0);
  for (const std::u16string& heading : column_headings) WriteColumnHeader(heading, ctNone);
  EndColumns();
}

void TBaseReport::StartTableFromStringList(const std::u16string& title, const TStringList* column_headings,
                                           TTableOptions options) {
  if (!column_headings || column_headings->empty()) return;
  StartTable(title, options);
  StartColumns((options & ctSpanTitleAcrossHeader) != 0);
  for (const TStringListItem& heading : *column_headings) WriteColumnHeader(heading.Text, heading.Object);
  EndColumns();
}

void TBaseReport::WriteColumnHeader(const std::u16string& heading, TColumnDataType data_type) {
  StartColumnHeader(data_type);
  WriteText(heading);
  EndColumnHeader();
}

void TBaseReport::EndTable() {
  Require(u"table", "Improperly placed EndTable");
  RepairHtmlRows(FCurrentNode);
  FCurrentNode = FCurrentNode.ParentNode();
}

void TBaseReport::WriteTableType(const std::u16string& table_type) {
  Require(u"table", "Improperly placed WriteTableType");
  Add(u"type", table_type);
}

void TBaseReport::StartColumns(bool use_title) {
  const IXMLNode columns = Start(u"columns");
  if (use_title) columns.SetAttribute(u"use", u"title");
}

void TBaseReport::EndColumns() {
  End(u"columns", "Improperly placed EndColumns");
}

void TBaseReport::StartColumnHeader(TColumnDataType data_type) {
  const IXMLNode column = Start(u"column");
  if (data_type == ctNumber) column.SetAttribute(u"data_type", u"number");
}

void TBaseReport::EndColumnHeader() {
  End(u"column", "Improperly placed EndColumnHeader");
}

void TBaseReport::StartSubColumns() {
  Start(u"subcolumns");
}

void TBaseReport::EndSubColumns() {
  End(u"subcolumns", "Improperly placed EndColumns");
}

void TBaseReport::StartRow(const std::u16string& html_style) {
  StartStyled(u"row", html_style);
}

void TBaseReport::EndRow() {
  End(u"row", "Improperly placed EndRow");
}

void TBaseReport::StartCell(const std::u16string& html_style) {
  StartStyled(u"cell", html_style);
}

void TBaseReport::EndCell() {
  End(u"cell", "Improperly placed EndCell");
}

void TBaseReport::WriteReportSummary(const std::u16string& title,
                                     std::span<const std::u16string> column_types,
                                     std::span<const std::u16string> column_names) {
  const IXMLNode outer = FCurrentNode;
  Start(u"summary_table");
  Add(u"title", title);
  StartColumns(false);
  for (std::size_t i = 0; i < column_types.size(); ++i) {
    const IXMLNode column = Add(u"column", i < column_names.size() ? column_names[i] : std::u16string());
    column.SetAttribute(u"type", column_types[i]);
  }
  EndColumns();
  FCurrentNode = outer;
}

}  // namespace Ketril::Tools
