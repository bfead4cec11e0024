# The rooms of the layer that stand on Windows' own components, by the tests of their headers.
function(parchlet_room_tests name)
  add_executable(${name} ${ARGN})
  target_include_directories(${name} BEFORE PRIVATE ${side} ${PROJECT_SOURCE_DIR} ${tests})
  target_include_directories(${name} SYSTEM PRIVATE ${gmock_headers} ${gtest_headers})
  target_link_options(${name} PRIVATE -static)
  parchlet_target(${name})
endfunction()

parchlet_room_tests(parchlet-image-tests
  ${tests}/platform/image/CorpusPixelsTest.cpp
  ${tests}/platform/image/DecodePictureTest.cpp
  ${tests}/platform/image/SavePictureTest.cpp
  FilesTest.cpp
  PeakSize.cpp)
target_compile_definitions(parchlet-image-tests PRIVATE
  PARCHLET_CORPUS="${PROJECT_SOURCE_DIR}/fuzz/corpus"
  PARCHLET_CORPUS_PIXELS="${tests}/platform/image/corpus-pixels.txt"
  PARCHLET_LARGE_PICTURES="${tests}/platform/image/limits")
target_link_libraries(parchlet-image-tests PRIVATE
  parchlet_image parchlet_text gtest gtest_main psapi)

parchlet_room_tests(parchlet-text-tests
  ${tests}/platform/text/TextPainterTest.cpp
  FontFamiliesTest.cpp)
target_link_libraries(parchlet-text-tests PRIVATE
  parchlet_image parchlet_text gmock gtest_main)
parchlet_run(parchlet-image-tests)
parchlet_run(parchlet-text-tests)
