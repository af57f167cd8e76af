// The ESC key during a long run: between two items a tool polls the message queue, and a confirmed ESC sets
// its abort flag. The tool then leaves its loop, ends its progress and keeps what it has done.
//
// Polling delivers messages, so code of the editor runs inside it, other exports included. What a window's
// handler raises, and what asking the user raises, comes out of the poll.
#pragma once

namespace Ketril::Tools {

// The abort flag of the grid, shove and pick-and-place tools. The tool that starts a run clears it; other
// tools have a flag of their own.
extern bool ToolAborted;

// Takes messages off the queue until it is empty: keys are dropped, except that ESC asks the user, and on No
// goes to its window; everything else is delivered to its window at once. True when `aborted` is set already:
// then no message is touched. The poll that sets `aborted` takes no further message and still gives false.
bool CheckAbort(bool& aborted);

// The narrower form of the shove tool, with `ToolAborted`: takes only key-downs off the queue. ESC asks the
// user; any other key goes to its window, followed by a beep.
void CheckShoveAbort();

}  // namespace Ketril::Tools
