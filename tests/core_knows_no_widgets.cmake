# Fails if a file of the core includes what belongs to windows: a header of the widgets, a
# form's class, a header of another folder than those of the core, or one whose source is
# compiled into a library of windows.
#
#   SRC       the folder of the sources
#   FOLDERS   the core's folders in it
#   WINDOWS   sources in those folders that libraries of windows compile
#   HEADERS   the folders of headers that the widgets bring along
#
# A header counts as core like its source; one without a source as well.
cmake_minimum_required(VERSION 3.25)
list(FILTER HEADERS INCLUDE REGEX "QtWidgets$")
if(NOT HEADERS OR NOT FOLDERS)
  message(FATAL_ERROR "nothing to check")
endif()

set(files "")
foreach(folder ${FOLDERS})
  file(GLOB found RELATIVE ${SRC} ${SRC}/${folder}/*.h ${SRC}/${folder}/*.cpp)
  list(APPEND files ${found})
endforeach()
set(window_files "")
foreach(source ${WINDOWS})
  string(REGEX REPLACE "\\.cpp$" ".h" header ${source})
  list(APPEND window_files ${source} ${header})
endforeach()
list(REMOVE_ITEM files ${window_files})

set(faults "")
foreach(file ${files})
  file(STRINGS ${SRC}/${file} includes REGEX "^ *# *include")
  foreach(include ${includes})
    string(REGEX REPLACE "^ *# *include *[<\"]([^>\"]+).*" "\\1" name ${include})
    string(REGEX REPLACE "/.*" "" folder ${name})
    if(include MATCHES "<")
      string(REGEX REPLACE "^QtWidgets/" "" class ${name})
      if(EXISTS ${HEADERS}/${class})
        list(APPEND faults "${file}: <${name}> is a header of the widgets")
      endif()
    elseif(name MATCHES "^ui_")
      list(APPEND faults "${file}: \"${name}\" is a form's class")
    elseif(name IN_LIST window_files)
      list(APPEND faults "${file}: \"${name}\" belongs to windows")
    elseif(NOT folder IN_LIST FOLDERS)
      list(APPEND faults "${file}: \"${name}\" is not of the core")
    endif()
  endforeach()
endforeach()
if(faults)
  list(JOIN faults "\n" text)
  message(FATAL_ERROR "windows in the core:\n${text}")
endif()
