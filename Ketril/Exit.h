// How the command ends.
#pragma once

#include <stdexcept>
#include <string>

namespace Ketril::Command {

enum Exit : int {
  kExit_Done = 0,
  kExit_Failed = 1,      // the tool or the editor failed
  kExit_Usage = 2,       // the command line is wrong
  kExit_Unreadable = 3,  // the board file cannot be read
  kExit_Aborted = 4,     // the user stopped it
};

// For people, by the number.
inline constexpr const char* kExitTexts[] = {"done", "the tool or the editor failed", "bad usage",
                                             "the file cannot be read", "aborted by the user"};

// Ends the command with a message for the user.
class Failure : public std::runtime_error {
 public:
  Failure(Exit exit, const std::string& message) : std::runtime_error(message), exit_(exit) {}
  Exit Code() const { return exit_; }

 private:
  Exit exit_;
};

}  // namespace Ketril::Command
