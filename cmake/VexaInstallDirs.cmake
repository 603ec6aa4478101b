# Where things go when installed (GNU layout under any prefix), and the paths between them
# that the installed programs use to find each other without environment variables.
# Included before the targets are defined: the editor compiles these relative paths in.
include(GNUInstallDirs)

set(VEXA_INSTALL_PLUGINDIR "${CMAKE_INSTALL_LIBDIR}/vexa/plugins")
set(VEXA_INSTALL_PKGDATADIR "${CMAKE_INSTALL_DATADIR}/vexa")
set(VEXA_INSTALL_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/vexa")
set(VEXA_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/VexaHost")
set(VEXA_INSTALL_PKGCONFIGDIR "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(VEXA_INSTALL_ICONDIR "${CMAKE_INSTALL_DATADIR}/icons/hicolor")

# The path from one installed folder to another; the prefix itself never enters a binary,
# so an installed tree still works after it is moved or unpacked elsewhere.
function(vexa_relative_dir out from to)
  foreach(dir from to)
    if(IS_ABSOLUTE "${${dir}}")
      set(${dir}_full "${${dir}}")
    else()
      set(${dir}_full "${CMAKE_INSTALL_PREFIX}/${${dir}}")
    endif()
  endforeach()
  file(RELATIVE_PATH rel "${from_full}" "${to_full}")
  string(REGEX REPLACE "/+$" "" rel "${rel}")
  if(rel STREQUAL "")
    set(rel ".")
  endif()
  set(${out} "${rel}" PARENT_SCOPE)
endfunction()
vexa_relative_dir(VEXA_BIN_TO_LIBDIR "${CMAKE_INSTALL_BINDIR}" "${CMAKE_INSTALL_LIBDIR}")
vexa_relative_dir(VEXA_BIN_TO_PLUGINDIR "${CMAKE_INSTALL_BINDIR}" "${VEXA_INSTALL_PLUGINDIR}")
vexa_relative_dir(VEXA_BIN_TO_PKGDATADIR "${CMAKE_INSTALL_BINDIR}" "${VEXA_INSTALL_PKGDATADIR}")
vexa_relative_dir(VEXA_BIN_TO_ICONDIR "${CMAKE_INSTALL_BINDIR}" "${VEXA_INSTALL_ICONDIR}")
vexa_relative_dir(VEXA_PLUGINDIR_TO_LIBDIR "${VEXA_INSTALL_PLUGINDIR}" "${CMAKE_INSTALL_LIBDIR}")
