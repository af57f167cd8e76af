// What the XML libraries say when something fails, kept instead of printed.
#pragma once

#include <string>

#include <libxml/xmlerror.h>

namespace Ketril::Platform {

// Listens while it lives, on this thread; several may be nested.
class XmlErrors {
 public:
  XmlErrors() : previous_(xmlStructuredError), previous_context_(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(this, &Take);
  }
  ~XmlErrors() { xmlSetStructuredErrorFunc(previous_context_, previous_); }
  XmlErrors(const XmlErrors&) = delete;
  XmlErrors& operator=(const XmlErrors&) = delete;

  // The first of the errors, with its file and line; `otherwise` when none was told.
  std::string Text(const std::string& otherwise) const { return text_.empty() ? otherwise : text_; }
  void Add(std::string text) {
    if (text_.empty()) text_ = std::move(text);
  }

 private:
#if LIBXML_VERSION >= 21200
  using Error = const xmlError*;
#else
  using Error = xmlError*;
#endif
  static void Take(void* self, Error error) {
    if (!error || error->level < XML_ERR_ERROR || !error->message) return;
    std::string text;
    if (error->file) text += std::string(error->file) + ":";
    if (error->line > 0) text += std::to_string(error->line) + ":";
    if (!text.empty()) text += " ";
    text += error->message;
    while (!text.empty() && text.back() == '\n') text.pop_back();
    static_cast<XmlErrors*>(self)->Add(std::move(text));
  }

  xmlStructuredErrorFunc previous_;
  void* previous_context_;
  std::string text_;
};

}  // namespace Ketril::Platform
