#include "Platform/Xml.h"

#include <gtest/gtest.h>

#include <fstream>

#include "Platform/TempFiles.h"

namespace Ketril::Platform {
namespace {

std::string Sheet(const std::string& body, const std::string& output = R"(<xsl:output method="text"/>)") {
  return R"(<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">)" + output +
         body + "</xsl:stylesheet>";
}

std::string Transformed(const std::string& document, const std::string& sheet) {
  return IXMLDocument::Parse(document, "document").Transform(IXMLDocument::Parse(sheet, "sheet"));
}

// The message of the failure, or "nothing".
template <class Action>
std::string FailureOf(Action action) {
  try {
    action();
  } catch (const EXMLError& failure) {
    return failure.what();
  }
  return "nothing";
}

TEST(Xml, DocumentsAreBuiltReadAndSaved) {
  IXMLDocument document;
  EXPECT_FALSE(document.DocumentElement());
  const IXMLNode root = document.SetRoot(u"report");
  const IXMLNode cell = root.AddChild(u"cell");
  cell.SetAttribute(u"style", u"a\"<&\u00e9\n");
  cell.AddText(u"<b> & \u03a9\U0001f600\x01\xfffe");  // two of them have no place in XML
  root.AddChild(u"empty").AddText(u"");
  EXPECT_EQ(
      document.Save(false),
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report><cell style=\"a&quot;&lt;&amp;\xc3\xa9&#10;\">"
      "&lt;b&gt; &amp; \xce\xa9\xf0\x9f\x98\x80\xef\xbf\xbd\xef\xbf\xbd</cell><empty/></report>\n");

  const IXMLDocument read = IXMLDocument::Parse(document.Save(true), "saved");
  const std::vector<IXMLNode> children = read.DocumentElement().ChildNodes();
  ASSERT_EQ(children.size(), 2u);
  EXPECT_EQ(children[0].NodeName(), u"cell");
  EXPECT_EQ(children[0].Attribute(u"style"), u"a\"<&\u00e9\n");
  EXPECT_EQ(children[0].Attribute(u"other"), std::nullopt);
  EXPECT_EQ(children[0].Text(), u"<b> & \u03a9\U0001f600\ufffd\ufffd");
  EXPECT_EQ(children[1].ParentNode(), read.DocumentElement());
  EXPECT_FALSE(read.DocumentElement().ParentNode());

  const auto again = document.SetRoot(u"other");
  EXPECT_EQ(again, document.DocumentElement());
  const auto prefixed = IXMLDocument::Parse(Sheet("<xsl:param name=\"p\">.txt</xsl:param>"), "sheet");
  EXPECT_EQ(prefixed.DocumentElement().ChildNodes()[1].NodeName(), u"xsl:param");
}

TEST(Xml, StyleSheetsTransformIntoUtf8) {
  const std::string value = R"x(<xsl:template match="/"><xsl:value-of select="a/@b"/></xsl:template>)x";
  EXPECT_EQ(Transformed("<a b='\xc3\xa9'/>", Sheet(value)), "\xc3\xa9");
  // An encoding that the sheet asks for does not come through.
  EXPECT_EQ(
      Transformed("<a b='\xc3\xa9'/>", Sheet(value, R"(<xsl:output method="text" encoding="ISO-8859-1"/>)")),
      "\xc3\xa9");
  EXPECT_EQ(Transformed("<a/>", Sheet(value)), "");
}

TEST(Xml, FailuresNameTheirPlace) {
  EXPECT_NE(FailureOf([] { IXMLDocument::Parse("<a>\n<b></a>", "bad.xml"); }).find("bad.xml:2:"),
            std::string::npos);
  EXPECT_NE(FailureOf([] { IXMLDocument::Load("/nowhere/a.xsl"); }).find("/nowhere/a.xsl"),
            std::string::npos);
  EXPECT_NE(FailureOf([] { IXMLDocument::Parse("", "empty.xml"); }).find("empty.xml"), std::string::npos);
  const auto instruction = [](const std::string& text) {
    return Sheet("<xsl:template match='/'><xsl:" + text + "</xsl:template>");
  };
  const std::pair<std::string, std::string> sheets[] = {
      {"<a/>", "style"},  // no style sheet at all
      {instruction("value-of select='nothing('/>"), "nothing"},
      {instruction("value-of select='absent()'/>"), "absent"},
      {instruction("message terminate='yes'>No board</xsl:message>"), "No board"},
      {instruction("call-template name='gone'/>"), "gone"},
  };
  for (const auto& [sheet, message] : sheets) {
    const std::string told = FailureOf([&] { Transformed("<a/>", sheet); });
    EXPECT_NE(told.find(message), std::string::npos) << sheet << "\n" << told;
  }
  // A failure leaves the next one alone.
  EXPECT_EQ(Transformed("<a/>", Sheet(R"(<xsl:template match="/">well</xsl:template>)")), "well");
}

TEST(Xml, ASheetWritesNoFiles) {
  const std::filesystem::path file = MakeTempFile("ketril-xml-");
  std::filesystem::remove(file);
  const std::string sheet =
      R"(<xsl:stylesheet version="1.1" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"><xsl:template match="/">)"
      "<xsl:document href=\"" +
      file.string() + "\">text</xsl:document></xsl:template></xsl:stylesheet>";
  FailureOf([&] { Transformed("<a/>", sheet); });
  EXPECT_FALSE(std::filesystem::exists(file));
}

}  // namespace
}  // namespace Ketril::Platform
