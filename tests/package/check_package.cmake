# Installs the build into a staging prefix, checks what it holds, then builds
# and runs a consumer through find_package(ZelStr32) and another through
# pkg-config zelstr32.
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DINCLUDE_DIR=...
#         -DVERSION=... -DLIBDIR=... -DCXX=... -P check_package.cmake
# A cross build adds -DTOOLCHAIN_FILE=... and -DEMULATOR=... (and
# -DWINDOWS=ON for Windows): the consumers are built with that toolchain and
# run under the emulator.
set(stage ${WORK_DIR}/stage)
file(REMOVE_RECURSE ${WORK_DIR})
if(WINDOWS)
  set(windows ON)
  set(suffix .exe)
endif()

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  message(STATUS "${out}")
  set(out "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${stage})

# What the stage must hold: the libraries under their versioned names (the
# DLLs keep theirs, beside their import libraries), the tool, every public
# header, the CMake package and the pkg-config file.
string(REGEX MATCH "^[0-9]+" major ${VERSION})
set(lib ${LIBDIR})
if(windows)
  set(expected bin/ZelStr32.dll bin/ERRSVC32.dll bin/zelstr.exe
               ${lib}/libZelStr32.dll.a ${lib}/libERRSVC32.dll.a)
else()
  set(expected bin/zelstr)
  foreach(name zelstr32 errsvc32)
    list(APPEND expected ${lib}/lib${name}.so ${lib}/lib${name}.so.${major}
                         ${lib}/lib${name}.so.${VERSION})
  endforeach()
endif()
list(APPEND expected ${lib}/pkgconfig/zelstr32.pc include/zelstr/version.h)
foreach(file ZelStr32Config ZelStr32ConfigVersion ZelStr32Targets ZelStr32Targets-release)
  list(APPEND expected ${lib}/cmake/ZelStr32/${file}.cmake)
endforeach()
file(GLOB_RECURSE headers RELATIVE ${INCLUDE_DIR} ${INCLUDE_DIR}/*.h ${INCLUDE_DIR}/*.hpp)
list(TRANSFORM headers PREPEND include/)
foreach(file IN LISTS expected headers)
  if(NOT EXISTS ${stage}/${file})
    message(FATAL_ERROR "the install does not hold ${file}")
  endif()
endforeach()
if(NOT windows)
  foreach(name zelstr32 errsvc32)
    foreach(link ${lib}/lib${name}.so ${lib}/lib${name}.so.${major})
      if(NOT IS_SYMLINK ${stage}/${link})
        message(FATAL_ERROR "${link} is not a link to lib${name}.so.${VERSION}")
      endif()
    endforeach()
  endforeach()
endif()

# Programs built for Windows run under the emulator, their DLLs beside them.
function(run_program program)
  if(windows)
    get_filename_component(dir ${program} DIRECTORY)
    file(COPY ${stage}/bin/ZelStr32.dll ${stage}/bin/ERRSVC32.dll DESTINATION ${dir})
  endif()
  run(${EMULATOR} ${program} ${ARGN})
  set(out "${out}" PARENT_SCOPE)
endfunction()
function(expect_output program expected)
  if(NOT out MATCHES "${expected}")
    message(FATAL_ERROR "${program} printed [${out}], expected [${expected}]")
  endif()
endfunction()

# The installed tool finds its libraries.
run(${EMULATOR} ${stage}/bin/zelstr${suffix} --version)
string(REPLACE "." "\\." version_pattern ${VERSION})
expect_output(zelstr "^zelstr ${version_pattern} \\(ZelStr32 ${version_pattern}\\)")
set(consumer_pattern "^consumer: ZelStr32 ${version_pattern}, .* warning 86: _zstrlen\\(\\) - Warning")

# CMake package
set(configure -S ${SOURCE_DIR} -B ${WORK_DIR}/cmake -G Ninja -DCMAKE_BUILD_TYPE=Release
              -DZELSTR_EXPECTED_VERSION=${VERSION})
if(windows)
  # The toolchain looks for packages under its own root only: name the
  # package's folder.
  list(APPEND configure -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE}
                        -DZelStr32_DIR=${stage}/${lib}/cmake/ZelStr32)
else()
  list(APPEND configure -DCMAKE_PREFIX_PATH=${stage})
  if(TOOLCHAIN_FILE)
    list(APPEND configure -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE})
  endif()
endif()
run(${CMAKE_COMMAND} ${configure})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake)
run_program(${WORK_DIR}/cmake/consumer${suffix})
expect_output(consumer "${consumer_pattern}")

# pkg-config, seeing the stage only
set(ENV{PKG_CONFIG_LIBDIR} ${stage}/${lib}/pkgconfig)
unset(ENV{PKG_CONFIG_PATH})
run(pkg-config --modversion zelstr32)
expect_output(pkg-config "^${version_pattern}\n$")
run(pkg-config --cflags --libs zelstr32)
string(STRIP "${out}" flags)
separate_arguments(flags UNIX_COMMAND "${flags}")
set(compile ${CXX} -std=c++20 ${SOURCE_DIR}/consumer.cpp "-DZELSTR_EXPECTED_VERSION=\"${VERSION}\"")
set(program ${WORK_DIR}/pc/consumer${suffix})
if(windows)
  # The compiler's runtime goes in statically, as in the project's own
  # programs (-static); the linker takes import libraries (.dll.a) only
  # while it links dynamically, so the package's flags sit in between.
  list(APPEND compile -static -Wl,-Bdynamic ${flags} -Wl,-Bstatic -lversion)
else()
  list(APPEND compile ${flags} -Wl,-rpath,${stage}/${lib})
endif()
file(MAKE_DIRECTORY ${WORK_DIR}/pc)
run(${compile} -o ${program})
run_program(${program})
expect_output(consumer "${consumer_pattern}")

# A program that names only the string library (linked with "-lzelstr32"
# alone, run path to the install's library folder, no LD_LIBRARY_PATH): the
# installed library finds the service installed beside it.
if(NOT windows)
  set(program ${WORK_DIR}/library_only)
  run(${CXX} -std=c++20 ${SOURCE_DIR}/library_only.cpp -I${stage}/include -L${stage}/${lib}
      -Wl,--as-needed -lzelstr32 -Wl,-rpath,${stage}/${lib} -o ${program})
  run(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH ${EMULATOR} ${program})
  expect_output(library_only "^library_only: ZelStr32 ${version_pattern} \\(")
endif()
