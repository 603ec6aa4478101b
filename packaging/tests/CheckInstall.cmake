# One step of the install test (see CMakeLists.txt): stage, layout, quickselect, editor, host.
set(root ${STAGE}${PREFIX})
# Nothing from the environment may help the installed programs find their libraries.
set(clean_env ${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH --unset=QT_PLUGIN_PATH)

function(run_checked out)
  execute_process(COMMAND ${clean_env} ${ARGN} OUTPUT_VARIABLE o ERROR_VARIABLE e RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    list(JOIN ARGN " " cmd)
    message(FATAL_ERROR "${cmd}\nexited with ${rc}\n${o}\n${e}")
  endif()
  set(${out} "${o}${e}" PARENT_SCOPE)
endfunction()

function(expect_literal text part what)
  string(FIND "${text}" "${part}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "${what}: '${part}' not found in\n${text}")
  endif()
endfunction()

function(expect text pattern what)
  if(NOT text MATCHES "${pattern}")
    message(FATAL_ERROR "${what}: '${pattern}' not found in\n${text}")
  endif()
endfunction()

if(STEP STREQUAL "stage")
  file(REMOVE_RECURSE ${STAGE})
  execute_process(COMMAND ${CMAKE_COMMAND} -E env DESTDIR=${STAGE} ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}
    OUTPUT_VARIABLE o ERROR_VARIABLE e RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "cmake --install failed (${rc}):\n${o}\n${e}")
  endif()
  message(STATUS "installed into ${root}")

elseif(STEP STREQUAL "layout")
  set(expected
    ${BINDIR}/vexa-editor ${BINDIR}/vexa-quickselect
    ${LIBDIR}/libvexahost.so ${LIBDIR}/libvexahost.so.1 ${PLUGINDIR}/libVexaToolSelections.so
    ${INCLUDEDIR}/IVexaTool.h ${INCLUDEDIR}/VexaContext.h ${INCLUDEDIR}/VexaSelection.h ${INCLUDEDIR}/VexaPluginEntry.h
    ${CMAKEDIR}/VexaHostConfig.cmake ${CMAKEDIR}/VexaHostConfigVersion.cmake ${CMAKEDIR}/VexaHostTargets.cmake
    ${PKGCONFIGDIR}/vexahost.pc
    ${PKGDATADIR}/coffee.png ${PKGDATADIR}/coffee-marks.png ${PKGDATADIR}/LICENSES
    ${DATADIR}/applications/vexa-editor.desktop ${DATADIR}/icons/hicolor/48x48/apps/vexa-editor.png
    ${DATADIR}/icons/hicolor/256x256/apps/vexa-editor.png
    ${MANDIR}/man1/vexa-editor.1 ${MANDIR}/man1/vexa-quickselect.1)
  foreach(f IN LISTS expected)
    if(NOT EXISTS ${root}/${f})
      message(FATAL_ERROR "missing from the install: ${f}")
    endif()
  endforeach()
  # Every photo has its licence line.
  file(READ ${root}/${PKGDATADIR}/LICENSES licences)
  file(GLOB photos RELATIVE ${root}/${PKGDATADIR} ${root}/${PKGDATADIR}/*.png)
  foreach(p IN LISTS photos)
    expect("${licences}" "(^|\n)${p} " "licence line of ${p}")
  endforeach()
  # Run paths: relative to the file, never into the build tree.
  file(GLOB programs ${root}/${BINDIR}/*)
  foreach(elf IN LISTS programs ITEMS ${root}/${LIBDIR}/libvexahost.so.1 ${root}/${PLUGINDIR}/libVexaToolSelections.so)
    execute_process(COMMAND readelf -d ${elf} OUTPUT_VARIABLE dyn RESULT_VARIABLE rc)
    if(NOT rc EQUAL 0)
      message(FATAL_ERROR "readelf failed on ${elf}")
    endif()
    string(FIND "${dyn}" "${BUILD_DIR}" in_build)
    if(NOT in_build EQUAL -1)
      message(FATAL_ERROR "${elf} has a run path into the build tree:\n${dyn}")
    endif()
    if(NOT elf MATCHES "libvexahost")
      expect("${dyn}" "R(UN)?PATH[^\n]*\\$ORIGIN" "relative run path of ${elf}")
    endif()
  endforeach()
  # Manual pages carry the programs' options.
  file(READ ${root}/${MANDIR}/man1/vexa-quickselect.1 page)
  expect("${page}" "\\.SH OPTIONS" "man page sections")
  expect("${page}" "\\\\-\\\\-sensitivity" "man page options")
  expect("${page}" "\\.SH EXIT STATUS" "man page extra sections")
  file(READ ${root}/${DATADIR}/applications/vexa-editor.desktop desktop)
  expect("${desktop}" "\nExec=vexa-editor %f\n" "desktop entry")
  expect("${desktop}" "\nIcon=vexa-editor\n" "desktop entry")

elseif(STEP STREQUAL "quickselect")
  set(qs ${root}/${BINDIR}/vexa-quickselect)
  run_checked(help ${qs} --help)
  expect("${help}" "Usage: " "vexa-quickselect --help")
  expect("${help}" "--steps" "vexa-quickselect --help")
  file(REMOVE_RECURSE ${WORK})
  file(MAKE_DIRECTORY ${WORK})
  run_checked(text ${qs} --steps mark,matte --timings --alpha ${WORK}/alpha.png --result ${WORK}/cup.png
    ${root}/${PKGDATADIR}/coffee.png ${root}/${PKGDATADIR}/coffee-marks.png)
  expect("${text}" "regions [1-9]" "vexa-quickselect on the bundled photo")
  foreach(f alpha.png cup.png)
    file(SIZE ${WORK}/${f} size)
    if(size LESS 1000)
      message(FATAL_ERROR "${f} is only ${size} bytes")
    endif()
  endforeach()

elseif(STEP STREQUAL "editor")
  # A copy of the installed tree, moved again, whose default photo is a different picture: the
  # editor must take its plug-in and photo from beside itself and not from the build or sources.
  set(moved ${WORK}/moved)
  file(REMOVE_RECURSE ${WORK})
  file(MAKE_DIRECTORY ${WORK})
  file(COPY ${root}/ DESTINATION ${moved})
  file(COPY_FILE ${root}/${PKGDATADIR}/chelsea.png ${moved}/${PKGDATADIR}/coffee.png)
  set(editor ${moved}/${BINDIR}/vexa-editor)
  run_checked(help ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${editor} --help)
  expect("${help}" "--script" "vexa-editor --help")
  if(NOT DEFINED ENV{DISPLAY})
    message("no X display: skipped the scripted editor")
    return()
  endif()
  run_checked(out ${editor} --script ${WORK}/demo)
  file(READ ${WORK}/demo/report.txt report)
  expect("${report}" "canvas 451 x 300" "the editor's default photo")
  expect("${report}" "tool Rectangular Marquee Tool: available" "the editor's plug-in")
  message(STATUS "${report}")

elseif(STEP STREQUAL "host")
  set(build ${WORK}/build)
  set(launcher "")
  if(CXX_LAUNCHER)
    set(launcher -DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER})
  endif()
  # A fresh configure each time: the package must be found from scratch.
  file(REMOVE ${build}/CMakeCache.txt)
  run_checked(out ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${root}/${PKGCONFIGDIR}
    ${CMAKE_COMMAND} -S ${CONSUMER_SOURCE} -B ${build} -DCMAKE_PREFIX_PATH=${root} -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_CXX_COMPILER=${CXX} ${launcher} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
  run_checked(out ${CMAKE_COMMAND} --build ${build} -j2)
  file(STRINGS ${build}/CMakeCache.txt found REGEX "^VexaHost_DIR:")
  expect_literal("${found}" "${root}/" "find_package(VexaHost) found the staged install")
  foreach(exe vexa-host-link vexa-host-link-pc)
    run_checked(out ${build}/${exe})
    expect("${out}" "host interface works" "${exe}")
  endforeach()
  run_checked(out ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${build}/vexa-plugin-probe)
  expect("${out}" "plug-in works" "vexa-plugin-probe")
  message(STATUS "${out}")

else()
  message(FATAL_ERROR "unknown step ${STEP}")
endif()
