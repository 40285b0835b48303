# cmake -DROOT=DIR -P check_readme.cmake
#
# Fails unless README.md shows, word for word, the answers for the small sample document and the
# program of the first example, and docs/show-and-plan.md what the commands write about that document.

function(require_in PAGE FILE)
  file(READ "${ROOT}/${PAGE}" page)
  file(READ "${ROOT}/${FILE}" text)
  string(FIND "${page}" "${text}" position)
  if(position EQUAL -1)
    message(SEND_ERROR "${PAGE} does not show the content of ${FILE}")
  endif()
endfunction()

require_in(README.md tests/golden/tool/small.txt)
require_in(README.md examples/package_sizes.cpp)
require_in(docs/show-and-plan.md tests/golden/tool/show-small.txt)
require_in(docs/show-and-plan.md tests/golden/tool/plan-small.txt)
