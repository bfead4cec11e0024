# What the library is made of on Windows besides the engine: the system's own libraries. The
# compiler's runtime goes into the DLL, so that hosts need nothing else.
include(windows-rooms.cmake)
target_compile_definitions(parchlet_objects PUBLIC _WIN32_WINNT=0x0A00 WINVER=0x0A00 NOMINMAX)
# Hosts hand GDI+ objects of their own to such a library.
target_compile_definitions(parchlet_objects PUBLIC PARCHLET_PAINTER_GDIPLUS)
set(layer_interface PARCHLET_PAINTER_GDIPLUS)
set(CMAKE_SHARED_LIBRARY_PREFIX "")  # parchlet.dll
set(layer_objects)
set(layer_libraries gdiplus gdi32 user32 ole32 shlwapi)
set(layer_link_depends)
set(layer_link_options -static)
