# Our own painter, as every system has it.

# The rasterizer and the canvas stand alone. Results must not depend on whether the compiler fuses a
# multiplication and an addition. On x86 every processor since 2006 has what it needs at least; what
# it uses beyond that is chosen at run time.
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
target_compile_options(parchlet_raster PRIVATE -ffp-contract=off)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  target_compile_options(parchlet_raster PRIVATE -mssse3)
endif()
parchlet_target(parchlet_raster)

target_sources(parchlet_objects PRIVATE
  platform/graphics/Bitmap.cpp
  platform/graphics/Graphics.cpp
  platform/graphics/Image.cpp
  platform/graphics/Painter.cpp
  platform/graphics/PictureFiles.cpp
  platform/graphics/Text.cpp
  platform/graphics/TextPictures.cpp)
target_link_libraries(parchlet_objects PUBLIC parchlet_raster)
