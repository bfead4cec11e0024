# Hosts in C: the C interface's own tests, and one that loads and unloads the DLL.
function(parchlet_c_host name)
  set_target_properties(${name} PROPERTIES C_STANDARD 11 C_EXTENSIONS ON)
  target_compile_options(${name} PRIVATE
    $<$<COMPILE_LANGUAGE:C>:-Wall;-Wextra;-Wstrict-prototypes;-Wshadow;-Werror>)
endfunction()

if(PARCHLET_PAINTER STREQUAL own)
  foreach(source ${PROJECT_SOURCE_DIR}/examples/meeting.c ${tests}/c/operations.c)
    get_filename_component(name ${source} NAME_WE)
    parchlet_native_program(parchlet-c-${name} ${source})
    parchlet_c_host(parchlet-c-${name})
    target_compile_definitions(parchlet-c-${name} PRIVATE [[DISPLAY_NAME="\\\\.\\DISPLAY1"]])
    add_test(NAME windows.c.${name} COMMAND parchlet-c-${name})
    set_tests_properties(windows.c.${name} PROPERTIES TIMEOUT 300)
  endforeach()

  add_executable(parchlet-cycles cycles.c)
  parchlet_c_host(parchlet-cycles)
  target_include_directories(parchlet-cycles PRIVATE ${PROJECT_SOURCE_DIR}/include)
  target_link_libraries(parchlet-cycles PRIVATE gdi32 psapi user32)
  add_test(NAME windows.AThousandCyclesLeaveNothing
    COMMAND parchlet-cycles $<TARGET_FILE:parchlet>)
  set_tests_properties(windows.AThousandCyclesLeaveNothing PROPERTIES TIMEOUT 900)
endif()

# A measurement, not a test: build it with the target's name.
add_executable(parchlet-idle EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/benchmarks/windows/idle.c)
parchlet_c_host(parchlet-idle)
target_include_directories(parchlet-idle PRIVATE ${PROJECT_SOURCE_DIR}/include)
target_link_libraries(parchlet-idle PRIVATE user32)
