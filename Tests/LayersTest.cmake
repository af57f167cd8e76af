# Whether each file includes only what its layer may know. Which target sees which folder is enforced by the
# build already (cmake/KetrilLayers.cmake); this holds the table itself, and the parts of the library apart.
#
#   cmake -DROOT=... -P LayersTest.cmake
set(base "Interfaces/|Platform/|DLLs/Tools/Frame/|DLLs/Tools/Geometry/")
set(rules
    "Interfaces=Interfaces/"
    "Platform=Platform/"
    "Editor=Editor/|Interfaces/|Platform/"
    "Ketril=Ketril/|Editor/|Interfaces/|Platform/"
    "DLLs/Tools/Frame=${base}"
    "DLLs/Tools/Geometry=${base}")
foreach(folder IN ITEMS Teardrops Vias Placement Reports Convertors)
  list(APPEND rules "DLLs/Tools/${folder}=${base}|DLLs/Tools/${folder}/")
endforeach()

set(broken "")
set(count 0)
foreach(rule IN LISTS rules)
  string(REGEX MATCH "^([^=]*)=(.*)$" matched ${rule})
  set(folder ${CMAKE_MATCH_1})
  set(knows ${CMAKE_MATCH_2})
  file(GLOB_RECURSE files ${ROOT}/${folder}/*.cpp ${ROOT}/${folder}/*.h)
  # The exports are where the parts come together.
  list(FILTER files EXCLUDE REGEX "/DLLs/Tools/Frame/Exports\\.cpp$")
  foreach(file IN LISTS files)
    file(STRINGS ${file} includes REGEX "^#include \"(Interfaces|Platform|DLLs|Editor|Ketril|Tests|Fuzz)/")
    foreach(include IN LISTS includes)
      math(EXPR count "${count} + 1")
      if(NOT include MATCHES "^#include \"(${knows})")
        string(APPEND broken "${file}: ${include}\n")
      endif()
    endforeach()
  endforeach()
endforeach()
if(broken)
  message(FATAL_ERROR "a layer includes what it may not know:\n${broken}")
endif()
if(count LESS 500)
  message(FATAL_ERROR "only ${count} includes were found under ${ROOT}: is that the project?")
endif()
