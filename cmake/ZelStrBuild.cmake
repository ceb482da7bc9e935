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

# Windows modules carry the project's version in a VERSIONINFO resource
# (Properties > Details in the Explorer, GetFileVersionInfo).  Call it after
# the target's OUTPUT_NAME and PREFIX are set; elsewhere it does nothing.
function(zelstr_version_resource target description)
  if(NOT WIN32)
    return()
  endif()
  get_target_property(type ${target} TYPE)
  get_target_property(rc_internal_name ${target} OUTPUT_NAME)
  if(NOT rc_internal_name)
    set(rc_internal_name ${target})
  endif()
  if(type STREQUAL "EXECUTABLE")
    set(rc_file_type VFT_APP)
    set(rc_file_name ${rc_internal_name}${CMAKE_EXECUTABLE_SUFFIX})
  else()
    set(rc_file_type VFT_DLL)
    get_target_property(prefix ${target} PREFIX)
    if(prefix STREQUAL "prefix-NOTFOUND")
      set(prefix ${CMAKE_SHARED_LIBRARY_PREFIX})
    endif()
    set(rc_file_name ${prefix}${rc_internal_name}${CMAKE_SHARED_LIBRARY_SUFFIX})
  endif()
  set(rc_description "${description}")
  set(rc ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/ZelStrVersion.rc.in ${rc} @ONLY)
  target_sources(${target} PRIVATE ${rc})
endfunction()
