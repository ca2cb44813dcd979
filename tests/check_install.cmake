# Installs the library and checks that a consumer outside the project finds
# it, builds against it and runs, both through its CMake package
# (find_package) and through its pkg-config module:
#  1. the test build itself, installed under a scratch prefix (libdir lib);
#  2. a second configuration of the project for the prefix /usr with a
#     multiarch libdir (lib/<arch>, as on Debian), installed under DESTDIR,
#     so that every path has the shape it has on a real system.
# Arguments: BUILD (the test build), SOURCE_DIR (the project), CONSUMER (the
# consumer project), WORK (scratch), CC, CXX, LAUNCHER (compiler launcher, may
# be empty), ARCH (multiarch triplet, may be empty).

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${what} failed (${rc}):\n${out}\n${err}")
  endif()
  set(run_out "${out}" PARENT_SCOPE)
endfunction()

# Checks one installed tree: root is the directory that stands for the
# prefix, libdir its library directory relative to it.
function(check_tree label root libdir)
  foreach(f include/tarnwspencdec.h ${libdir}/libtarnwspencdec.so ${libdir}/libtarnwspencdec.so.1
            ${libdir}/pkgconfig/tarnwspencdec.pc ${libdir}/cmake/tarnwspencdec/tarnwspencdecConfig.cmake)
    if(NOT EXISTS ${root}/${f})
      message(FATAL_ERROR "${label}: not installed: ${f}")
    endif()
  endforeach()

  # find_package
  run("${label}: consumer configure" ${CMAKE_COMMAND} -S ${CONSUMER} -B ${WORK}/${label}-cmake
      -DCMAKE_PREFIX_PATH=${root} -DCMAKE_C_COMPILER=${CC})
  run("${label}: consumer build" ${CMAKE_COMMAND} --build ${WORK}/${label}-cmake)
  run("${label}: consumer run (find_package)" ${WORK}/${label}-cmake/consumer)
  message(STATUS "${label}, find_package: ${run_out}")

  # pkg-config: the paths it reports must be the installed ones.
  find_program(PKG_CONFIG pkg-config)
  if(NOT PKG_CONFIG)
    message(FATAL_ERROR "${label}: pkg-config is needed")
  endif()
  set(ENV{PKG_CONFIG_PATH} ${root}/${libdir}/pkgconfig)
  set(ENV{PKG_CONFIG_LIBDIR} ${root}/${libdir}/pkgconfig)
  foreach(var libdir includedir)
    run("${label}: pkg-config ${var}" ${PKG_CONFIG} --variable=${var} tarnwspencdec)
    string(STRIP "${run_out}" reported)
    file(REAL_PATH "${reported}" reported)
    set(want_libdir ${root}/${libdir})
    set(want_includedir ${root}/include)
    file(REAL_PATH "${want_${var}}" want)
    if(NOT reported STREQUAL want)
      message(FATAL_ERROR "${label}: pkg-config ${var} is ${reported}, installed at ${want}")
    endif()
  endforeach()
  run("${label}: pkg-config flags" ${PKG_CONFIG} --cflags --libs tarnwspencdec)
  string(STRIP "${run_out}" flags)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  run("${label}: pkg-config build" ${CC} ${CONSUMER}/consumer.c ${flags}
      -Wl,-rpath,${root}/${libdir} -o ${WORK}/${label}-consumer-pc)
  run("${label}: consumer run (pkg-config)" ${WORK}/${label}-consumer-pc)
  message(STATUS "${label}, pkg-config: ${run_out}")
endfunction()

file(REMOVE_RECURSE ${WORK})

# 1. The test build under a scratch prefix.
run("install" ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)
check_tree(prefix ${WORK}/prefix lib)

# 2. Prefix /usr, multiarch libdir, installed under DESTDIR.
if(NOT ARCH)
  set(ARCH x86_64-linux-gnu)
endif()
set(libdir lib/${ARCH})
set(configure_args -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_INSTALL_LIBDIR=${libdir}
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DWSP_BUILD_TESTS=OFF -DWSP_BUILD_TOOLS=OFF
    -DCMAKE_C_COMPILER=${CC} -DCMAKE_CXX_COMPILER=${CXX})
if(LAUNCHER)
  list(APPEND configure_args -DCMAKE_C_COMPILER_LAUNCHER=${LAUNCHER} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
endif()
run("multiarch configure" ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK}/multiarch-build ${configure_args})
run("multiarch build" ${CMAKE_COMMAND} --build ${WORK}/multiarch-build --target tarnwspencdec -j2)
set(ENV{DESTDIR} ${WORK}/root)
run("multiarch install" ${CMAKE_COMMAND} --install ${WORK}/multiarch-build)
unset(ENV{DESTDIR})
check_tree(multiarch ${WORK}/root/usr ${libdir})
