# What `cmake --install` puts where, in three components, which are the three Debian packages too:
#
#   library      the shared library, and the database at its fixed path
#   checker      tarvo-check with a database of its own, schemas of its reports, manual page and completions
#   development  headers, files for find_package and pkg-config, manual page
#
# The library has no version in its name, and its SONAME is that name: hosts load libtarvo-api-check-engine.so, hosts
# that are linked with it record the same, and a device holds one file without links. There is nothing that a number
# could count, because the interface to hosts does not change.

include(CMakePackageConfigHelpers)
set(TARVO_DATABASE_DIR /usr/share/lumeric CACHE PATH "Where the engine looks for its database: fixed on the device")

# ---- library -------------------------------------------------------------------------------------------------------

install(TARGETS tarvo-api-check-engine EXPORT tarvo
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# No prefix moves this file, so it is all that an installation without root can miss: that is said, and is no failure.
install(CODE "set(database \"${CMAKE_SOURCE_DIR}/data/APIAnalEngineDB.xml\")
set(directory \"\$ENV{DESTDIR}${TARVO_DATABASE_DIR}\")" COMPONENT library)
install(SCRIPT cmake/install-database.cmake COMPONENT library)

# ---- checker -------------------------------------------------------------------------------------------------------

# A page as packages have it, compressed.
function(tarvo_manual page component)
  get_filename_component(name ${page} NAME)
  string(REGEX REPLACE "^.*\\." "" section ${name})
  add_custom_command(
    OUTPUT ${CMAKE_BINARY_DIR}/man/${name}.gz
    COMMAND gzip -9n < ${page} > ${CMAKE_BINARY_DIR}/man/${name}.gz
    DEPENDS ${page}
    VERBATIM)
  add_custom_target(man-${name} ALL DEPENDS ${CMAKE_BINARY_DIR}/man/${name}.gz)
  install(FILES ${CMAKE_BINARY_DIR}/man/${name}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section}
          COMPONENT ${component})
endfunction()

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/man)
if(NOT TARVO_HOST_LIBRARY)
  install(TARGETS tarvo-check RUNTIME COMPONENT checker)
  install(FILES data/APIAnalEngineDB.xml data/tarvo-check-report.schema.json
                data/tarvo-check-comparison.schema.json
          DESTINATION ${CMAKE_INSTALL_DATADIR}/tarvo COMPONENT checker)
  tarvo_manual(${CMAKE_SOURCE_DIR}/docs/man/tarvo-check.1 checker)

  # File name and place are each shell's own. Debian's zsh has another place for packages than for what is built here.
  set(zsh_place zsh/site-functions)
  if(CMAKE_INSTALL_PREFIX STREQUAL /usr AND EXISTS /etc/debian_version)
    set(zsh_place zsh/vendor-completions)
  endif()
  set(completions
    "bash tarvo-check bash-completion/completions"
    "zsh _tarvo-check ${zsh_place}"
    "fish tarvo-check.fish fish/vendor_completions.d")
  foreach(row ${completions})
    separate_arguments(row)
    list(GET row 0 shell)
    list(GET row 1 name)
    list(GET row 2 place)
    set(file ${CMAKE_BINARY_DIR}/completions/${shell}/${name})
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/completions/${shell})
    add_custom_command(
      OUTPUT ${file}
      COMMAND ${CMAKE_SOURCE_DIR}/completions/make-completions ${shell} > ${file}
      DEPENDS completions/make-completions completions/options
      VERBATIM)
    list(APPEND completion_files ${file})
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/${place} COMPONENT checker)
  endforeach()
  add_custom_target(completions ALL DEPENDS ${completion_files})
endif()

# ---- development ---------------------------------------------------------------------------------------------------

set_target_properties(tarvo-api-check-engine PROPERTIES EXPORT_NAME api-check-engine)
install(DIRECTORY include/tarvo DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
tarvo_manual(${CMAKE_SOURCE_DIR}/docs/man/libtarvo-api-check-engine.3 development)

set(config ${CMAKE_INSTALL_LIBDIR}/cmake/tarvo)
install(EXPORT tarvo NAMESPACE tarvo:: FILE tarvoConfig.cmake DESTINATION ${config} COMPONENT development)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/tarvoConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/tarvoConfigVersion.cmake DESTINATION ${config} COMPONENT development)

# Made by the installation, which alone knows the prefix.
install(CODE "set(PROJECT_VERSION ${PROJECT_VERSION})
set(CMAKE_INSTALL_LIBDIR ${CMAKE_INSTALL_LIBDIR})
set(CMAKE_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR})
configure_file(\"${CMAKE_SOURCE_DIR}/cmake/tarvo-api-check-engine.pc.in\" \"${CMAKE_BINARY_DIR}/tarvo-api-check-engine.pc\" @ONLY)"
        COMPONENT development)
install(FILES ${CMAKE_BINARY_DIR}/tarvo-api-check-engine.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)

include(cmake/packages.cmake)
