#include "DLLs/Tools/Reports/RT_Report.h"

#include <algorithm>
#include <cstdio>

#include "DLLs/Tools/Reports/ReportClient.h"
#include "Platform/Text.h"

namespace Ketril::Tools {

namespace {

// "01:02:03"; no time when the clock was set back meanwhile.
std::u16string ElapsedText(std::int64_t hundredths) {
  const std::int64_t seconds = std::max<std::int64_t>(hundredths, 0) / 100;
  char text[40];
  std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld", static_cast<long long>(seconds / 3600),
                static_cast<long long>(seconds / 60 % 60), static_cast<long long>(seconds % 60));
  return Platform::ToUtf16(text);
}

std::vector<std::u16string> NonEmptyLines(std::u16string_view text) {
  std::vector<std::u16string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
    if (end > 0) lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

}  // namespace

TBaseReport::TBaseReport(const std::u16string& title, const std::u16string& filename)
    : FFilename(filename), FCurrentNode(FXMLDocument.SetRoot(u"report")) {
  Add(u"title", title);
  Add(u"resource_path", TemplatesFolder());
}

void TBaseReport::Require(std::u16string_view name, const char* message) const {
  if (FCurrentNode.NodeName() != name) throw EGeneralReportException(message);
}

IXMLNode TBaseReport::Start(std::u16string_view name) {
  FCurrentNode = FCurrentNode.AddChild(name);
  return FCurrentNode;
}

void TBaseReport::End(std::u16string_view name, const char* message) {
  Require(name, message);
  FCurrentNode = FCurrentNode.ParentNode();
}

IXMLNode TBaseReport::Add(std::u16string_view name, std::u16string_view text) {
  const IXMLNode node = FCurrentNode.AddChild(name);
  node.AddText(text);
  return node;
}

IXMLNode TBaseReport::StartStyled(std::u16string_view name, const std::u16string& html_style) {
  const IXMLNode node = Start(name);
  if (!html_style.empty()) node.SetAttribute(u"html_style", html_style);
  return node;
}

void TBaseReport::StartReport() {
  Platform::GetDateAndTime(FStartDate, FStartTime);
  Add(u"date", Platform::DateText(FStartDate, Platform::TDateStyle::Short));
  Add(u"time", Platform::TimeText(FStartTime, Platform::TDateStyle::Short));
  if (FFilename.empty()) return;
  const IXMLNode report = FCurrentNode;
  Start(u"filename");
  WriteJumpToOrvexDocument(HidesDocumentPath() ? FileNameOf(FFilename) : FFilename, FFilename);
  FCurrentNode = report;
}

void TBaseReport::EndReport() {
  Require(u"report", "Improperly placed EndReport");
  TDate date;
  TTime time;
  Platform::GetDateAndTime(date, time);
  Add(u"elapsed_time", ElapsedText(Platform::HundredthsBetween(FStartDate, FStartTime, date, time)));
}

void TBaseReport::StartSection(const std::u16string& section_name) {
  Require(u"report", "Improperly placed StartSection");
  Start(u"section");
  Add(u"title", section_name);
}

void TBaseReport::EndSection() {
  End(u"section", "Improperly placed EndSection");
}

void TBaseReport::WriteError(const std::u16string& text) {
  Require(u"report", "Improperly placed WriteError");
  Add(u"error", text);
}

void TBaseReport::StartFrontMatter(const std::u16string& name) {
  Start(u"frontmatter");
  Add(u"name", name);
}

void TBaseReport::EndFrontMatter() {
  End(u"frontmatter", "Improperly placed EndFrontMatter");
}

void TBaseReport::WriteContents() {
  Add(u"contents");
}

void TBaseReport::StartList() {
  Start(u"list");
}

void TBaseReport::EndList() {
  End(u"list", "Improperly placed EndList");
}

void TBaseReport::StartListElement() {
  Start(u"listelement");
}

void TBaseReport::EndListElement() {
  End(u"listelement", "Improperly placed EndListElement");
}

void TBaseReport::StartCallBack(const std::u16string& process, const std::u16string& parameters,
                                IServerDocumentView* view) {
  // The view is asked first: when it fails, nothing is written.
  std::u16string view_name, document_path;
  const bool has_document = view && ReadView(view, view_name, document_path);
  const IXMLNode node = Start(u"callback");
  if (view) node.SetAttribute(u"viewname", view_name);
  if (has_document) node.SetAttribute(u"document", document_path);
  if (process.empty()) return;
  node.SetAttribute(u"process", process);
  if (!parameters.empty()) node.SetAttribute(u"parameters", parameters);
}

void TBaseReport::EndCallBack() {
  End(u"callback", "Improperly placed EndCallBackText");
}

void TBaseReport::WriteHyperlinkText(const std::u16string& url, const std::u16string& description,
                                     bool open_in_new_window) {
  const IXMLNode node = Add(u"hyperlink");
  node.SetAttribute(u"address", url);
  node.SetAttribute(u"description", description);
  if (open_in_new_window) node.SetAttribute(u"open_In_New_Window", u"true");
}

void TBaseReport::WriteJumpToOrvexDocument(const std::u16string& text, const std::u16string& full_path) {
  Add(u"file", text).SetAttribute(u"filename", full_path);
}

void TBaseReport::WriteImage(const std::u16string& full_path) {
  Add(u"image").SetAttribute(u"filename", full_path);
}

void TBaseReport::WriteText(const Variant& value, bool preserve_lines) {
  const std::u16string& text = value.ToString();
  const std::vector<std::u16string> lines =
      preserve_lines ? NonEmptyLines(text) : std::vector<std::u16string>{text};
  if (lines.empty()) Add(u"text");
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) WriteLineBreak();
    Add(u"text", lines[i]);
  }
}

void TBaseReport::WriteLineBreak() {
  Add(u"linebreak");
}

void TBaseReport::WriteSpace() {
  Add(u"space");
}

void TBaseReport::WriteHorizontalLine() {
  Add(u"hr");
}

void TGeneralReport::WriteLine(const std::u16string& text) {
  WriteText(text);
  WriteLineBreak();
}

void TGeneralReport::WriteHeading(const std::u16string& text) {
  Add(u"h1", text);
}

void TGeneralReport::WriteSectionHeading(const std::u16string& text) {
  Add(u"h2", text);
}

void TGeneralReport::WriteRow(std::span<const Variant> values, std::span<const std::u16string> html_styles) {
  StartRow();
  for (std::size_t i = 0; i < values.size(); ++i) {
    StartCell(i < html_styles.size() ? html_styles[i] : std::u16string());
    WriteText(values[i]);
    EndCell();
  }
  EndRow();
}

void TGeneralReport::WriteCell(const std::u16string& text, const std::u16string& html_style) {
  Require(u"row", "Improperly placed WriteCell");
  const IXMLNode cell = Add(u"cell", text);
  if (!html_style.empty()) cell.SetAttribute(u"html_style", html_style);
}

void TGeneralReport::WriteCallBackText(const std::u16string& text, const std::u16string& process,
                                       const std::u16string& parameters, IServerDocumentView* view) {
  StartCallBack(process, parameters, view);
  WriteText(text);
  EndCallBack();
}

void TGeneralReport::WriteFrontMatter(const std::u16string& name, const Variant& value) {
  Require(u"report", "Improperly placed WriteFrontMatter");
  StartFrontMatter(name);
  WriteText(value);
  EndFrontMatter();
}

}  // namespace Ketril::Tools
