# Settings shared by the project's own targets.

# Strict warnings on our code (not on third-party code built beside it).
function(zelstr_strict target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()

# Linux shared objects must resolve every symbol at link time; the sanitizer
# runtimes of clang are only linked into executables, so sanitized builds skip
# the check.
function(zelstr_no_undefined target)
  if(NOT WIN32 AND NOT ZELSTR_SANITIZE AND NOT ZELSTR_BUILD_FUZZ)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()
