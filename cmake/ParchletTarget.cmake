# What every target of the project has in common: language, warnings, sanitizers, visibility.
function(parchlet_target target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -Wno-sign-conversion $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety -Wthread-safety-beta>)
  # Hit tests are defined in single precision, step by step: no fused operations.
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  # A constructor's parameter may carry the name of the field that it sets.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-shadow>)
  # g++ 12 sees overlapping copies in what it makes of `"text" + std::string` at -O3.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  if(PARCHLET_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(PARCHLET_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${PARCHLET_SANITIZE} -fno-sanitize-recover=all
      -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${PARCHLET_SANITIZE})
    # g++ 12 takes what the sanitizers add to the standard library's inline code for reads of
    # uninitialised members.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  endif()
endfunction()
