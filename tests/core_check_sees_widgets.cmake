# Tries core_knows_no_widgets.cmake on a small tree: WORK is a folder for it, HEADERS are
# those of the widgets. Each of the faults has to be seen, and nothing where there is none.
set(src ${WORK}/src)

# expect(NAME 0|1 FILE LINE): whether the tree passes with a line more in one of its files.
function(expect name passes file line)
  file(REMOVE_RECURSE ${src})
  file(WRITE ${src}/core/sums.h "#pragma once\n")
  file(WRITE ${src}/core/sums.cpp "#include \"core/sums.h\"\n\n#include <QString>\n")
  file(WRITE ${src}/core/sumsdialog.h "#pragma once\n#include <QDialog>\n")
  file(WRITE ${src}/core/sumsdialog.cpp "#include \"core/sumsdialog.h\"\n")
  file(WRITE ${src}/shell/window.h "#pragma once\n")
  file(APPEND ${src}/${file} "${line}\n")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -DSRC=${src} -DFOLDERS=core -DWINDOWS=core/sumsdialog.cpp
            "-DHEADERS=${HEADERS}" -P ${CMAKE_CURRENT_LIST_DIR}/core_knows_no_widgets.cmake
    RESULT_VARIABLE result ERROR_QUIET OUTPUT_QUIET)
  if(passes AND NOT result EQUAL 0)
    message(SEND_ERROR "${name}: a fault where there is none")
  elseif(NOT passes AND result EQUAL 0)
    message(SEND_ERROR "${name}: not seen")
  endif()
endfunction()

expect("a clean core" 1 core/sums.cpp "#include <vector>")
expect("widgets in a dialog" 1 core/sumsdialog.cpp "#include <QPushButton>")
expect("widgets in a source" 0 core/sums.cpp "#include <QPushButton>")
expect("widgets by their folder" 0 core/sums.cpp "#include <QtWidgets/QPushButton>")
expect("all widgets" 0 core/sums.cpp "#include <QtWidgets>")
expect("widgets behind blanks" 0 core/sums.cpp "  #  include <QPushButton>")
expect("widgets in the header of a source" 0 core/sums.h "#include <QLabel>")
expect("widgets in a header without a source" 0 core/alone.h "#include <QLabel>")
expect("a form" 0 core/sums.cpp "#include \"ui_sums.h\"")
expect("a folder of windows" 0 core/alone.h "#include \"shell/window.h\"")
expect("a dialog of the same folder" 0 core/sums.cpp "#include \"core/sumsdialog.h\"")
