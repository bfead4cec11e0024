# The platform layer's rooms that stand on Windows' own components: pictures, text and files. Each
# has the header of the room off Windows; what is pure is shared.

# The image room stands alone, as off Windows.
add_library(parchlet_image OBJECT
  platform/image/BmpDecoder.cpp
  platform/image/BmpEncoder.cpp
  platform/image/BmpHeader.cpp
  platform/image/BmpRle.cpp
  platform/image/GifFrame.cpp
  platform/image/JpegSize.cpp
  platform/image/Picture.cpp
  platform/image/PngParts.cpp
  platform/image/ReplacingFile.cpp
  platform/image/SavePicture.cpp
  platform/image/WicDecoder.cpp
  platform/image/WicEncoder.cpp
  platform/image/WindowsReplacingFile.cpp)
target_include_directories(parchlet_image PUBLIC
  ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(parchlet_image PUBLIC windowscodecs ole32 oleaut32 advapi32)
parchlet_target(parchlet_image)

add_library(parchlet_text OBJECT
  platform/files/WindowsRegularFile.cpp
  platform/text/GdiFontFamilies.cpp
  platform/text/GdiTextPainter.cpp
  platform/text/OutlineCoverage.cpp
  platform/text/TextLines.cpp
  platform/text/Unicode.cpp
  platform/text/WindowsPaths.cpp)
target_include_directories(parchlet_text PUBLIC
  ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(parchlet_text PUBLIC gdi32 user32)
parchlet_target(parchlet_text)

foreach(room parchlet_image parchlet_text)
  target_compile_definitions(${room} PUBLIC _WIN32_WINNT=0x0A00 WINVER=0x0A00 NOMINMAX)
endforeach()
