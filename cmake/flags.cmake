# Compiler settings that every target of ours shares.
add_library(korvant_flags INTERFACE)
if(NOT MSVC)
  target_compile_options(korvant_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
  if(KORVANT_WERROR)
    target_compile_options(korvant_flags INTERFACE -Werror)
  elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # With -O3, which users build with, it sees overlaps in "text" + text that are not there.
    target_compile_options(korvant_flags INTERFACE -Wno-restrict)
  endif()
endif()
if(WIN32)
  # Symbols have no visibility there; what leaves a library is declared. Numbers are the same on
  # both processors only without the old floating-point unit.
  target_compile_options(korvant_flags INTERFACE -Wno-attributes)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    add_compile_options(-msse2 -mfpmath=sse -mstackrealign)
  endif()
endif()
if(KORVANT_SANITIZE)
  add_compile_options(-fsanitize=${KORVANT_SANITIZE} -fno-omit-frame-pointer)
  if(KORVANT_SANITIZE STREQUAL "thread" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # asio has fences beside its locks, which the sanitizer does not know.
    add_compile_options(-Wno-tsan)
  endif()
  add_link_options(-fsanitize=${KORVANT_SANITIZE})
  # The compiler warns of members that the standard library's regular expressions do initialise.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()

find_program(KORVANT_CCACHE ccache)
if(KORVANT_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${KORVANT_CCACHE})
endif()
