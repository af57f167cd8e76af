# Installs the build into a folder, builds the example against it with nothing but find_package, and has it and
# the installed command do what a newcomer would. Arguments: BUILD, SOURCE, WORK, SANITIZE, COMPILER.
cmake_policy(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/installed)
set(installed ${WORK}/installed/share/doc/ketril/examples)
set(flags -DCMAKE_PREFIX_PATH=${WORK}/installed -DCMAKE_CXX_COMPILER=${COMPILER})
if(SANITIZE)
  list(APPEND flags -DCMAKE_CXX_FLAGS=-fsanitize=${SANITIZE})
endif()
run(${CMAKE_COMMAND} -S ${installed}/Editor -B ${WORK}/example -G Ninja ${flags})
run(${CMAKE_COMMAND} --build ${WORK}/example)

# A tool with a dialog, one that is undone, and one whose work is saved; the pictures show what was done.
file(WRITE ${WORK}/commands "tear-drops
draw ${WORK}/teardrops.svg
undo
select pad and free
pads-to-vias
save ${WORK}/vias.kicad_pcb
")
execute_process(COMMAND ${WORK}/example/editor ${installed}/blinker.kicad_pcb INPUT_FILE ${WORK}/commands
                RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 0 OR NOT output MATCHES "^[1-9][0-9]* added, .*\n2 objects selected\n2 added, 2 removed, ")
  message(FATAL_ERROR "the example ended with ${result} and said: ${output}${errors}")
endif()
file(READ ${WORK}/teardrops.svg picture)
if(NOT picture MATCHES "</svg>")
  message(FATAL_ERROR "the example has drawn nothing")
endif()
set(command ${WORK}/installed/bin/ketril)
run(${command} info ${WORK}/vias.kicad_pcb)
if(NOT output MATCHES "Via +12\n" OR output MATCHES "teardrop")
  message(FATAL_ERROR "the example's board has: ${output}")
endif()
run(${command} report board ${installed}/blinker.kicad_pcb --report-dir ${WORK})

# The manual page names every verb that the completion offers.
execute_process(COMMAND gzip -dc ${WORK}/installed/share/man/man1/ketril.1.gz OUTPUT_VARIABLE page)
string(REPLACE "\\-" "-" page "${page}")
file(READ ${WORK}/installed/share/bash-completion/completions/ketril completion)
string(REGEX MATCH "'0 words:([a-z,-]+)\n" words "${completion}")
string(REPLACE "," ";" verbs "${CMAKE_MATCH_1}")
if(NOT "tear-drops" IN_LIST verbs)
  message(FATAL_ERROR "no verbs in the completion")
endif()
foreach(verb IN LISTS verbs)
  if(NOT page MATCHES "fBketril ${verb}\\\\fR")
    message(FATAL_ERROR "the manual page lacks ${verb}")
  endif()
endforeach()
