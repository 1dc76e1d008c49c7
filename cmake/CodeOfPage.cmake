# veldrin_code_of_page(PAGE TITLE OUTPUT): writes the block of C++ whose first line is "// TITLE" out of a
# page of the documentation into a source file, whenever the page changes. So what the page shows is what
# is compiled.
if(CMAKE_SCRIPT_MODE_FILE)
  file(READ "${PAGE}" text)
  string(FIND "${text}" "\n```cpp\n// ${TITLE}\n" begin)
  if(begin EQUAL -1)
    message(FATAL_ERROR "${PAGE} has no block of C++ that begins with \"// ${TITLE}\"")
  endif()
  math(EXPR begin "${begin} + 8")
  string(SUBSTRING "${text}" ${begin} -1 text)
  string(FIND "${text}" "\n```\n" end)
  math(EXPR end "${end} + 1")
  string(SUBSTRING "${text}" 0 ${end} text)
  file(WRITE "${OUTPUT}" "${text}")
  return()
endif()

set(code_of_page_script ${CMAKE_CURRENT_LIST_FILE})

function(veldrin_code_of_page page title output)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DPAGE=${page} -DTITLE=${title} -DOUTPUT=${output} -P ${code_of_page_script}
    DEPENDS ${page} ${code_of_page_script}
    COMMENT "Taking ${title} out of its page"
    VERBATIM)
endfunction()
