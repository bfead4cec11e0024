# Whether the painter's pages look here as they do elsewhere.
#   cmake -D "PROGRAM=[emulator;]parchlet-pixel-hashes" -D EXPECTED=pixel-hashes.txt -P CheckPixelHashes.cmake
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE found COMMAND_ERROR_IS_FATAL ANY)
file(READ ${EXPECTED} expected)
string(REPLACE "\r" "" found "${found}")
if(NOT found STREQUAL expected)
  message(FATAL_ERROR "Found\n${found}\nbut expected\n${expected}")
endif()
