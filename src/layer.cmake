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
  platform/image/ReplacingFile.cpp
  platform/image/SavePicture.cpp)
target_include_directories(parchlet_image PUBLIC
  ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(parchlet_image PUBLIC GIF::GIF JPEG::JPEG PNG::PNG)
parchlet_target(parchlet_image)

# The rasterizer and the canvas stand alone as well. Results must not depend on whether the compiler
# fuses a multiplication and an addition. On x86 every processor since 2006 has what it needs at
# least; what it uses beyond that is chosen at run time.
add_library(parchlet_raster OBJECT
  platform/canvas/BandPainter.cpp
  platform/canvas/Canvas.cpp
  platform/canvas/CommandList.cpp
  platform/canvas/LinePart.cpp
  platform/canvas/TileMap.cpp
  platform/raster/Blend.cpp
  platform/raster/CellPieces.cpp
  platform/raster/Cover.cpp
  platform/raster/CoverCells.cpp
  platform/raster/CoverageMask.cpp
  platform/raster/Dot.cpp
  platform/raster/Ellipse.cpp
  platform/raster/MeasureChunk.cpp
  platform/raster/Rasterizer.cpp
  platform/raster/Stretch.cpp
  platform/raster/StretchRows.cpp
  platform/raster/StrokePen.cpp
  platform/raster/Stroker.cpp
  platform/threads/WorkerPool.cpp)
target_include_directories(parchlet_raster PUBLIC
  ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(parchlet_raster PUBLIC PkgConfig::HWY Threads::Threads)
target_compile_options(parchlet_raster PRIVATE -ffp-contract=off)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  target_compile_options(parchlet_raster PRIVATE -mssse3)
endif()
parchlet_target(parchlet_raster)

target_sources(parchlet_objects PRIVATE
  c/Window.cpp
  platform/clock/Clock.cpp
  platform/com/Com.cpp
  platform/display/DesktopLayers.cpp
  platform/display/MemoryDesktop.cpp
  platform/display/Screen.cpp
  platform/files/Files.cpp
  platform/gdi/Gdi.cpp
  platform/graphics/Bitmap.cpp
  platform/graphics/Graphics.cpp
  platform/graphics/Image.cpp
  platform/graphics/Painter.cpp
  platform/graphics/Text.cpp
  platform/graphics/TextPictures.cpp
  platform/text/Charset.cpp
  platform/text/CodePage.cpp
  platform/text/FontFamilies.cpp
  platform/text/GlyphOutlines.cpp
  platform/text/Paths.cpp
  platform/text/TextPainter.cpp
  platform/text/Unicode.cpp
  platform/window/MemoryWindow.cpp
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
