#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <cstdarg>
#include <cstdio>
#include <new>

#include "Platform/Xml.h"
#include "Platform/XmlErrors.h"

namespace Ketril::Platform {

namespace {

// What libxslt says comes in pieces, some of them only "runtime error: file ... line ...", and some of it by
// way of libxml2.
class XsltMessages {
 public:
  XsltMessages() {
    xsltSetGenericErrorFunc(this, &Take);
    xmlSetGenericErrorFunc(this, &Take);
  }
  ~XsltMessages() {
    xmlSetGenericErrorFunc(xml_context_, xml_);
    xsltSetGenericErrorFunc(xslt_context_, xslt_);
  }
  XsltMessages(const XsltMessages&) = delete;
  XsltMessages& operator=(const XsltMessages&) = delete;

  std::string Text(const std::string& otherwise) const {
    const std::size_t end = text_.find_last_not_of('\n');
    return end == text_.npos ? otherwise : text_.substr(0, end + 1);
  }

 private:
  static void Take(void* self, const char* format, ...) {
    char piece[2048];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(piece, sizeof piece, format, arguments);
    va_end(arguments);
    constexpr std::size_t kEnough = 4096;
    std::string& text = static_cast<XsltMessages*>(self)->text_;
    if (text.size() < kEnough) text += piece;
  }

  const xmlGenericErrorFunc xslt_ = xsltGenericError, xml_ = xmlGenericError;
  void* const xslt_context_ = xsltGenericErrorContext;
  void* const xml_context_ = xmlGenericErrorContext;
  std::string text_;
};

template <class T, auto free>
struct Freed {
  void operator()(T* object) const { free(object); }
};
template <class T, auto free>
using Owned = std::unique_ptr<T, Freed<T, free>>;

using StyleSheet = Owned<xsltStylesheet, xsltFreeStylesheet>;

StyleSheet Compile(const xmlDoc* document, const XmlErrors& errors, const XsltMessages& messages) {
  // The compiled sheet takes the document over, so it gets a copy.
  Owned<xmlDoc, xmlFreeDoc> copy(xmlCopyDoc(const_cast<xmlDoc*>(document), 1));
  if (!copy) throw std::bad_alloc();
  StyleSheet sheet(xsltParseStylesheetDoc(copy.get()));
  if (!sheet) throw EXMLError(messages.Text(errors.Text("this is no style sheet")));
  (void)copy.release();
  xmlFree(sheet->encoding);
  sheet->encoding = xmlStrdup(BAD_CAST "UTF-8");
  return sheet;
}

}  // namespace

std::string IXMLDocument::Transform(const IXMLDocument& style_sheet) const {
  const XmlErrors errors;
  const XsltMessages messages;
  const StyleSheet sheet = Compile(style_sheet.document_.get(), errors, messages);

  const Owned<xsltSecurityPrefs, xsltFreeSecurityPrefs> limits(xsltNewSecurityPrefs());
  const Owned<xsltTransformContext, xsltFreeTransformContext> context(
      xsltNewTransformContext(sheet.get(), document_.get()));
  if (!limits || !context) throw std::bad_alloc();
  for (const xsltSecurityOption option : {XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
                                          XSLT_SECPREF_READ_NETWORK, XSLT_SECPREF_WRITE_NETWORK})
    xsltSetSecurityPrefs(limits.get(), option, xsltSecurityForbid);
  xsltSetCtxtSecurityPrefs(limits.get(), context.get());

  const Owned<xmlDoc, xmlFreeDoc> result(
      xsltApplyStylesheetUser(sheet.get(), document_.get(), nullptr, nullptr, nullptr, context.get()));
  if (!result || context->state != XSLT_STATE_OK)
    throw EXMLError(messages.Text(errors.Text("the style sheet stopped")));

  xmlChar* bytes = nullptr;
  int size = 0;
  const int failed = xsltSaveResultToString(&bytes, &size, result.get(), sheet.get());
  const std::unique_ptr<xmlChar, void (*)(void*)> owned(bytes, xmlFree);
  if (failed != 0) throw EXMLError(messages.Text(errors.Text("the result cannot be written as text")));
  return bytes ? std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)) : "";
}

}  // namespace Ketril::Platform
