// XML: a text as a report that the style sheets of the editor transform, and as somebody's style sheet for a
// report. Each is refused with a reason, or gives text in UTF-8.
#include <cstdint>

#include "Fuzz/Support/Check.h"
#include "Platform/Text.h"
#include "Platform/Xml.h"

namespace {

using Ketril::Fuzz::Check;
using Ketril::Platform::EXMLError;
using Ketril::Platform::IXMLDocument;
using Ketril::Platform::IXMLNode;

constexpr const char* kReport =
    R"(<?xml version="1.0"?><report><title>T</title><units default="mm"/><filename><file filename="/a/b.c"/>
</filename><section><title>S</title><table><title>N</title><columns><column>x</column></columns><row><cell>
<length>12700</length></cell></row></table></section></report>)";

void CheckTransform(const IXMLDocument& document, const IXMLDocument& sheet) {
  try {
    const std::string text = document.Transform(sheet);
    Check(Ketril::Platform::ToUtf8(Ketril::Platform::ToUtf16(text)) == text, "the result is UTF-8");
  } catch (const EXMLError& error) {
    Check(*error.what() != '\0', "a failure has a reason");
  }
}

// Every element, as the report's reader of sheets asks for them.
void Walk(IXMLNode node, int depth) {
  (void)node.NodeName();
  (void)node.Text();
  (void)node.Attribute(u"name");
  for (const IXMLNode child : node.ChildNodes()) {
    Check(child.ParentNode() == node, "a child knows its parent");
    if (depth < 50) Walk(child, depth + 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const IXMLDocument report = IXMLDocument::Parse(kReport, "report");
  static const IXMLDocument sheets[] = {IXMLDocument::Load(KETRIL_TEMPLATES "/report_csv.xsl"),
                                        IXMLDocument::Load(KETRIL_TEMPLATES "/report_json.xsl")};
  try {
    const IXMLDocument document = IXMLDocument::Parse({reinterpret_cast<const char*>(data), size}, "fuzz");
    if (document.DocumentElement()) Walk(document.DocumentElement(), 0);
    CheckTransform(report, document);
    for (const IXMLDocument& sheet : sheets) CheckTransform(document, sheet);
    (void)IXMLDocument::Parse(document.Save(false), "what was saved");
  } catch (const EXMLError& error) {
    Check(*error.what() != '\0', "a failure has a reason");
  }
  return 0;
}
