# Layers are kept apart by the compiler: each target sees only the folders it may include from. A folder is
# reached through a root of its own that holds nothing but a link to it, so `#include "Editor/Model/Board.h"`
# does not compile in a target that was not given the root of Editor.

# ketril_layer(TARGET FOLDER): gives TARGET, and publicly whoever links it, the headers under FOLDER.
function(ketril_layer target folder scope)
  string(REPLACE "/" "-" root_name ${folder})
  set(root ${CMAKE_BINARY_DIR}/layers/${root_name})
  get_filename_component(parent ${root}/${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)
  target_include_directories(${target} ${scope} $<BUILD_INTERFACE:${root}>)
endfunction()
