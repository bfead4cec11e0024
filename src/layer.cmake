# What the library is made of off Windows besides the engine: the platform layer.

# The image room stands alone: the fuzzers feed its decoders without the rest.
add_library(parchlet_image OBJECT
  platform/image/BmpDecoder.cpp
  platform/image/BmpEncoder.cpp
  platform/image/BmpHeader.cpp
  platform/image/BmpRle.cpp
  platform/image/GifDecoder.cpp
  platform/image/JpegDecoder.cpp
  platform/image/JpegEncoder.cpp
  platform/image/Picture.cpp
  platform/image/Pictures.cpp
  platform/image/PngDecoder.cpp
  platform/image/PngEncoder.cpp
  platform/image/PosixReplacingFile.cpp
  platform/image/ReplacingFile.cpp
  platform/image/SavePicture.cpp)
target_include_directories(parchlet_image PUBLIC
  ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(parchlet_image PUBLIC GIF::GIF JPEG::JPEG PNG::PNG)
parchlet_target(parchlet_image)

include(painter.cmake)
target_sources(parchlet_raster PRIVATE platform/threads/Processors.cpp)
target_link_libraries(parchlet_raster PUBLIC PkgConfig::HWY Threads::Threads)

target_sources(parchlet_objects PRIVATE
  c/Window.cpp
  platform/clock/Clock.cpp
  platform/com/Com.cpp
  platform/display/DesktopLayers.cpp
  platform/display/MemoryDesktop.cpp
  platform/display/Screen.cpp
  platform/files/Files.cpp
  platform/gdi/DevicePixels.cpp
  platform/gdi/Gdi.cpp
  platform/text/Charset.cpp
  platform/text/CodePage.cpp
  platform/text/FontFamilies.cpp
  platform/text/GlyphOutlines.cpp
  platform/text/Paths.cpp
  platform/text/TextPainter.cpp
  platform/text/Unicode.cpp
  platform/window/MemoryWindow.cpp
  platform/window/Push.cpp
  platform/window/Window.cpp)
# Cairo is Pango's painter of text; everything else is painted by the rasterizer.
target_link_libraries(parchlet_objects PUBLIC parchlet_image parchlet_raster
  PkgConfig::CAIRO PkgConfig::PANGO Threads::Threads)

set(layer_objects $<TARGET_OBJECTS:parchlet_image> $<TARGET_OBJECTS:parchlet_raster>)
set(layer_libraries PkgConfig::CAIRO PkgConfig::PANGO PkgConfig::HWY GIF::GIF JPEG::JPEG PNG::PNG
  Threads::Threads)
set(layer_interface)
set(layer_link_depends ${CMAKE_CURRENT_SOURCE_DIR}/parchlet.map)
set(layer_link_options -Wl,--version-script=${layer_link_depends})
if(NOT PARCHLET_SANITIZE)
  # A missing symbol fails here, not in the host. The sanitizers leave theirs open.
  list(APPEND layer_link_options -Wl,--no-undefined)
endif()
