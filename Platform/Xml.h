// XML documents in memory, and their transformation by style sheets: XSLT 1.0, by libxml2 and libxslt.
//
// Names are ASCII or any other XML name; texts are UTF-16. What XML has no place for in a text, such as a
// control character, becomes U+FFFD, so that a document can always be read back.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

struct _xmlDoc;
struct _xmlNode;

namespace Ketril::Platform {

// A document or a style sheet that cannot be read, or a transformation that failed. The message is UTF-8 and
// names the file and the line where there are such.
class EXMLError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// An element of a document, or nothing. It is a handle that is good as long as the document lives; only the
// comparison and the test may be used on nothing.
class IXMLNode {
 public:
  IXMLNode() = default;
  explicit operator bool() const { return node_ != nullptr; }
  friend bool operator==(IXMLNode, IXMLNode) = default;

  std::u16string NodeName() const;           // with its prefix, as "xsl:param"
  std::u16string Text() const;               // all text in the element and in what it holds
  IXMLNode ParentNode() const;               // nothing above the root
  std::vector<IXMLNode> ChildNodes() const;  // the elements among them, in order
  std::optional<std::u16string> Attribute(std::u16string_view name) const;

  // A new last element.
  IXMLNode AddChild(std::u16string_view name) const;
  // Adds text at the end; nothing for an empty one.
  void AddText(std::u16string_view text) const;
  // Adds an attribute or replaces its value.
  void SetAttribute(std::u16string_view name, std::u16string_view value) const;

 private:
  friend class IXMLDocument;
  explicit IXMLNode(_xmlNode* node) : node_(node) {}

  _xmlNode* node_ = nullptr;
};

class IXMLDocument {
 public:
  IXMLDocument();  // version 1.0, without a root
  // Raises EXMLError. Nothing is fetched from a network.
  static IXMLDocument Load(const std::filesystem::path& file);
  static IXMLDocument Parse(std::string_view text, const std::string& name);

  // Replaces the root.
  IXMLNode SetRoot(std::u16string_view name);
  IXMLNode DocumentElement() const;  // nothing without a root

  // UTF-8 with a declaration; indented for people to read, or on one line. Raises EXMLError.
  std::string Save(bool indented) const;

  // What a style sheet makes of the document, in UTF-8 whatever encoding it asks for. The sheet may include
  // other files; it may not write any nor use a network. Raises EXMLError, also when the sheet gives up by
  // <xsl:message terminate="yes">.
  std::string Transform(const IXMLDocument& style_sheet) const;

 private:
  struct Free {
    void operator()(_xmlDoc* document) const;
  };
  explicit IXMLDocument(_xmlDoc* document) : document_(document) {}

  std::unique_ptr<_xmlDoc, Free> document_;
};

}  // namespace Ketril::Platform
