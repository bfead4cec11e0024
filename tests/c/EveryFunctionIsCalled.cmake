# Whether every function that the C interface declares is called by a test in C.
#   cmake -D HEADER=... -P EveryFunctionIsCalled.cmake
file(GLOB tests ${CMAKE_CURRENT_LIST_DIR}/*.c ${CMAKE_CURRENT_LIST_DIR}/*.h
  ${CMAKE_CURRENT_LIST_DIR}/../../examples/*.c)
foreach(test IN LISTS tests)
  file(READ ${test} text)
  string(APPEND calls "${text}")
endforeach()
file(STRINGS ${HEADER} lines REGEX "^PARCHLET_C_API ")
foreach(line IN LISTS lines)
  if(NOT line MATCHES "[ *](Parchlet[A-Za-z]+)\\(")
    message(FATAL_ERROR "No function is declared in: ${line}")
  endif()
  set(name ${CMAKE_MATCH_1})
  if(NOT calls MATCHES "${name}\\(")
    message(SEND_ERROR "No test calls ${name}")
  endif()
endforeach()
