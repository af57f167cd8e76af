#include "Platform/Xml.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <limits>
#include <new>
#include <utility>

#include "Platform/Text.h"
#include "Platform/XmlErrors.h"

namespace Ketril::Platform {

namespace {

constexpr int kParseOptions = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOCDATA;

const xmlChar* Bytes(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

// The text as XML can hold it.
std::string Clean(std::u16string_view text) {
  std::u16string clean(text);
  for (char16_t& unit : clean) {
    const bool control = unit < u' ' && unit != u'\t' && unit != u'\n' && unit != u'\r';
    if (control || unit == 0xFFFE || unit == 0xFFFF) unit = 0xFFFD;
  }
  return ToUtf8(clean);
}

// A text of libxml2's that is ours to free.
std::u16string Taken(xmlChar* text) {
  const std::unique_ptr<xmlChar, void (*)(void*)> owned(text, xmlFree);
  return text ? ToUtf16(reinterpret_cast<const char*>(text)) : std::u16string();
}

template <class T>
T* Made(T* object) {
  if (!object) throw std::bad_alloc();
  return object;
}

_xmlDoc* Read(const char* bytes, std::size_t size, const std::string& name) {
  if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw EXMLError(name + ": the document is too long");
  const XmlErrors errors;
  xmlDoc* document = xmlReadMemory(bytes, static_cast<int>(size), name.c_str(), nullptr, kParseOptions);
  if (!document) throw EXMLError(errors.Text(name + ": this is no XML document"));
  return document;
}

}  // namespace

std::u16string IXMLNode::NodeName() const {
  std::string name(reinterpret_cast<const char*>(node_->name));
  if (node_->ns && node_->ns->prefix)
    name = std::string(reinterpret_cast<const char*>(node_->ns->prefix)) + ":" + name;
  return ToUtf16(name);
}

std::u16string IXMLNode::Text() const {
  return Taken(xmlNodeGetContent(node_));
}

IXMLNode IXMLNode::ParentNode() const {
  const bool is_element = node_->parent && node_->parent->type == XML_ELEMENT_NODE;
  return IXMLNode(is_element ? node_->parent : nullptr);
}

std::vector<IXMLNode> IXMLNode::ChildNodes() const {
  std::vector<IXMLNode> children;
  for (xmlNode* child = xmlFirstElementChild(node_); child; child = xmlNextElementSibling(child))
    children.push_back(IXMLNode(child));
  return children;
}

std::optional<std::u16string> IXMLNode::Attribute(std::u16string_view name) const {
  xmlChar* const value = xmlGetNoNsProp(node_, Bytes(ToUtf8(name)));
  return value ? std::optional(Taken(value)) : std::nullopt;
}

IXMLNode IXMLNode::AddChild(std::u16string_view name) const {
  return IXMLNode(Made(xmlNewChild(node_, nullptr, Bytes(ToUtf8(name)), nullptr)));
}

void IXMLNode::AddText(std::u16string_view text) const {
  if (text.empty()) return;
  xmlNode* const made = Made(xmlNewDocText(node_->doc, Bytes(Clean(text))));
  xmlAddChild(node_, made);
}

void IXMLNode::SetAttribute(std::u16string_view name, std::u16string_view value) const {
  Made(xmlSetProp(node_, Bytes(ToUtf8(name)), Bytes(Clean(value))));
}

void IXMLDocument::Free::operator()(_xmlDoc* document) const {
  xmlFreeDoc(document);
}

IXMLDocument::IXMLDocument() : document_(Made(xmlNewDoc(BAD_CAST "1.0"))) {}

IXMLDocument IXMLDocument::Load(const std::filesystem::path& file) {
  const XmlErrors errors;
  xmlDoc* const document = xmlReadFile(file.c_str(), nullptr, kParseOptions);
  if (!document) throw EXMLError(errors.Text(file.string() + ": this is no XML document"));
  return IXMLDocument(document);
}

IXMLDocument IXMLDocument::Parse(std::string_view text, const std::string& name) {
  return IXMLDocument(Read(text.data(), text.size(), name));
}

IXMLNode IXMLDocument::SetRoot(std::u16string_view name) {
  xmlNode* const root = Made(xmlNewDocNode(document_.get(), nullptr, Bytes(ToUtf8(name)), nullptr));
  xmlFreeNode(xmlDocSetRootElement(document_.get(), root));
  return IXMLNode(root);
}

IXMLNode IXMLDocument::DocumentElement() const {
  return IXMLNode(xmlDocGetRootElement(document_.get()));
}

std::string IXMLDocument::Save(bool indented) const {
  const std::unique_ptr<xmlBuffer, void (*)(xmlBuffer*)> buffer(Made(xmlBufferCreate()), xmlBufferFree);
  xmlSaveCtxt* const save = Made(xmlSaveToBuffer(buffer.get(), "UTF-8", indented ? XML_SAVE_FORMAT : 0));
  const bool saved = xmlSaveDoc(save, document_.get()) >= 0;
  if (xmlSaveClose(save) < 0 || !saved) throw EXMLError("the document cannot be written as text");
  return {reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
          static_cast<std::size_t>(xmlBufferLength(buffer.get()))};
}

}  // namespace Ketril::Platform
