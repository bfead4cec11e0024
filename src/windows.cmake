# What the library is made of on Windows besides the engine: the system's own libraries and, unless
# GDI+ is to paint, our own painter. The compiler's runtime goes into the DLL, so that hosts need
# nothing else.
set(PARCHLET_PAINTER own CACHE STRING "What paints on Windows: own or gdiplus")
set_property(CACHE PARCHLET_PAINTER PROPERTY STRINGS own gdiplus)
if(NOT PARCHLET_PAINTER MATCHES "^(own|gdiplus)$")
  message(FATAL_ERROR "PARCHLET_PAINTER is own or gdiplus, not ${PARCHLET_PAINTER}")
endif()

include(windows-rooms.cmake)
target_compile_definitions(parchlet_objects PUBLIC _WIN32_WINNT=0x0A00 WINVER=0x0A00 NOMINMAX)
set(CMAKE_SHARED_LIBRARY_PREFIX "")  # parchlet.dll
set(layer_objects)
set(layer_libraries gdi32 user32 ole32 shlwapi)
set(layer_sources platform/threads/WindowsUnload.cpp)  # of the DLL alone
set(layer_interface)
set(layer_link_depends)
set(layer_link_options -static)
target_link_libraries(parchlet_objects PUBLIC parchlet_image parchlet_text)
list(APPEND layer_objects $<TARGET_OBJECTS:parchlet_image> $<TARGET_OBJECTS:parchlet_text>)
list(APPEND layer_libraries windowscodecs oleaut32 advapi32)
target_sources(parchlet_objects PRIVATE
  platform/gdi/WindowsDevicePixels.cpp
  platform/window/WindowsPush.cpp)

if(PARCHLET_PAINTER STREQUAL gdiplus)
  # Hosts hand GDI+ objects of their own to such a library.
  target_compile_definitions(parchlet_objects PUBLIC PARCHLET_PAINTER_GDIPLUS)
  set(layer_interface PARCHLET_PAINTER_GDIPLUS)
  target_sources(parchlet_objects PRIVATE platform/gdiplus/PictureFiles.cpp)
  list(PREPEND layer_libraries gdiplus)
  return()
endif()

include(painter.cmake)
target_sources(parchlet_raster PRIVATE
  platform/raster/HighwayTargets.cpp
  platform/threads/WindowsProcessors.cpp)
# Highway's headers are the same for every system. Of the folder they lie in nothing else may be
# seen: it has the headers of this one.
set(PARCHLET_HIGHWAY_FOLDER /usr/include CACHE PATH "The folder that holds Highway's folder hwy/")
if(NOT EXISTS ${PARCHLET_HIGHWAY_FOLDER}/hwy/highway.h)
  message(FATAL_ERROR "No hwy/highway.h in ${PARCHLET_HIGHWAY_FOLDER}: see PARCHLET_HIGHWAY_FOLDER")
endif()
set(highway ${CMAKE_CURRENT_BINARY_DIR}/highway)
file(MAKE_DIRECTORY ${highway})
file(CREATE_LINK ${PARCHLET_HIGHWAY_FOLDER}/hwy ${highway}/hwy COPY_ON_ERROR SYMBOLIC)
target_include_directories(parchlet_raster SYSTEM PUBLIC ${highway})
# The system aligns stacks to 16 bytes and g++ relies on more where it spills wide vectors: the
# assembler turns those moves into ones that take any address.
target_compile_options(parchlet_raster PRIVATE -Wa,-muse-unaligned-vector-move)
list(APPEND layer_objects $<TARGET_OBJECTS:parchlet_raster>)
