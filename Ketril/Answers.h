// Who answers the tools' questions when there is no window to show them in: the command line's -y, then the
// answers file, then the person at the terminal. A question that nobody answers counts as cancelled, and is
// told.
//
// An answers file has a line for each question, `question = answer`; * in the question stands for any
// characters, the first line that fits holds, and lines that start with # are for people:
//
//   # clear the board in one go
//   Confirm Abort Process = no
//   This selection contains locked * = yes
//
// A line `TeardropParam_... = number` answers the dialog of the teardrop options: those that are named
// change, and the dialog is accepted.
#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "Interfaces/Teardrops.h"
#include "Platform/Dialogs.h"

namespace Ketril::Command {

class Answers {
 public:
  // `terminal_in` null: nobody is at the terminal. The streams outlive the object.
  Answers(bool always_yes, std::istream* terminal_in, std::ostream& terminal_out);

  // Raises Failure (usage) that names the file, the line and what is expected there.
  void ReadFile(const std::string& path);

  Platform::TDialogAnswer Answer(const std::u16string& text, Platform::TDialogKind kind,
                                 Platform::TDialogButtons buttons);

  // The dialog of the teardrop options; false when it is cancelled. -y accepts them as they are.
  bool EditTeardropOptions(TTeardropOptionsEx& options);

  // Questions that nobody answered, in the order in which they came.
  const std::vector<std::string>& Unanswered() const { return unanswered_; }

 private:
  bool always_yes_;
  std::istream* in_;
  std::ostream& out_;
  std::vector<std::pair<std::u16string, bool>> lines_;          // question pattern, yes
  std::vector<std::pair<std::string, std::string>> teardrops_;  // names and values
  std::vector<std::string> unanswered_;
};

}  // namespace Ketril::Command
