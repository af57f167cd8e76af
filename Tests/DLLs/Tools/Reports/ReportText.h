// A report whose elements can be read, for tests.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "DLLs/Tools/Reports/PCBReport.h"

namespace Ketril::Tools {

// The document without its declaration, title and resource path.
inline std::string BodyOf(const IXMLDocument& document) {
  const std::string text = document.Save(false);
  const std::size_t begin = text.find("</resource_path>") + 16, end = text.rfind("</report>");
  return end == text.npos ? "" : text.substr(begin, end - begin);
}

template <class Base>
class TReadable : public Base {
 public:
  TReadable() : Base(u"Title", u"") {}
  using Base::Base;
  using Base::FCurrentNode;
  using Base::FStartDate;
  using Base::FStartTime;
  using Base::Start;
  std::string Body() const { return BodyOf(this->FXMLDocument); }
  std::string Text() const { return this->FXMLDocument.Save(false); }
};

}  // namespace Ketril::Tools
