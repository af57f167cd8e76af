#!/bin/bash
# Asks the completion of bash what it offers: usage: CompletionTest.sh KETRIL, in a folder of its own.
set -u
source <("$1" completion bash)
mkdir -p boards
touch 'a b.kicad_pcb' notes.txt

# expect ANSWER LINE: with the line's words, the last of which is being typed, the answer is offered.
failed=0
expect() {
  read -ra COMP_WORDS <<<"$2"
  [[ $2 != *' ' ]] || COMP_WORDS+=('')
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) COMPREPLY=()
  _ketril
  local answer
  answer=$(printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd' ')
  [[ $answer == $1 ]] || { echo "'$2' was answered by '$answer', not '$1'" >&2; failed=1; }
}

expect 'tear-drops' 'ketril tea'
expect 'bottom bottom-side-by-side left left-side-by-side right right-side-by-side top top-side-by-side' 'ketril align '
expect 'a b.kicad_pcb boards' 'ketril align left '
expect 'a b.kicad_pcb boards' 'ketril tear-drops -D A = b --yes '
expect '--picture' 'ketril align left x.kicad_pcb --pic'
expect 'html,csv' 'ketril report board --format html,c'
expect 'mil mm' 'ketril info --units = m'
expect 'boards' 'ketril report nets x.kicad_pcb --report-dir '
expect 'a b.kicad_pcb boards notes.txt' 'ketril place-from-file x.kicad_pcb '
expect '' 'ketril un-group --at '
expect '*--dry-run*--select*' 'ketril un-group x.kicad_pcb '
exit $failed
