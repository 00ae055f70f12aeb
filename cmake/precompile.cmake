# Headers of the toolkit that are compiled once instead of once a source.

# With these options a compiler cache knows precompiled headers again.
add_library(cacheable INTERFACE)
target_compile_options(cacheable INTERFACE
  $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
  $<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>)
# toolkit_of(result library...): the largest part of the toolkit that libraries link;
# nothing where they do without.
function(toolkit_of result)
  set(all)
  set(next ${ARGN})
  while(next)
    list(POP_FRONT next library)
    string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" library "${library}")
    if(TARGET "${library}" AND NOT library IN_LIST all)
      list(APPEND all ${library})
      get_target_property(further ${library} INTERFACE_LINK_LIBRARIES)
      if(further AND NOT library MATCHES "^Qt6::")
        list(APPEND next ${further})
      endif()
    endif()
  endwhile()
  set(${result} "" PARENT_SCOPE)
  foreach(kind Core Gui Widgets)
    if(Qt6::${kind} IN_LIST all)
      set(${result} ${kind} PARENT_SCOPE)
    endif()
  endforeach()
endfunction()

# precompiled_headers(name kind header...): an object library of nothing but headers of that
# part of the toolkit, compiled ahead for all targets that take them from it.
function(precompiled_headers name kind)
  add_library(${name} OBJECT ${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(${name} PRIVATE Qt6::${kind} warnings cacheable)
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# precompile_folders(folder): the static libraries below that folder read the toolkit's
# headers from what has been compiled once for all that link the same part of it: the
# object libraries precompiled_src_KIND. Programs are a source each, and modules and object
# libraries have options of their own.
function(precompile_folders folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL "STATIC_LIBRARY")
      continue()
    endif()
    get_target_property(libraries ${target} LINK_LIBRARIES)
    toolkit_of(kind ${libraries})
    if(kind)
      target_precompile_headers(${target} REUSE_FROM precompiled_src_${kind})
      target_link_libraries(${target} PRIVATE cacheable)
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(below ${folders})
    precompile_folders(${below})
  endforeach()
endfunction()
