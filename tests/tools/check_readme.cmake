# cmake -DROOT=DIR -P check_readme.cmake
#
# Fails unless README.md shows, word for word, the answers for the small sample document and the
# program of the first example.
file(READ "${ROOT}/README.md" readme)

function(require_in_readme FILE)
  file(READ "${ROOT}/${FILE}" text)
  string(FIND "${readme}" "${text}" position)
  if(position EQUAL -1)
    message(SEND_ERROR "README.md does not show the content of ${FILE}")
  endif()
endfunction()

require_in_readme(tests/golden/tool/small.txt)
require_in_readme(examples/package_sizes.cpp)
