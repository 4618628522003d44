# What `cmake --install` installs under a prefix, and the packages that CPack makes of it.
#
# All paths are relative, and lib/ is lib/ everywhere: the programs find the companion library from
# their own place, so that what is installed can be moved as a whole. With ORVEX_DEBIAN the files are
# where Debian requires them, and cmake/CompletePackage.cmake does the rest when the package is made.

set(standin_folder lib)
set(zsh_folder share/zsh/site-functions)
if(ORVEX_DEBIAN)
    set(standin_folder lib/${CMAKE_LIBRARY_ARCHITECTURE}/orvex)
    set(zsh_folder share/zsh/vendor-completions)
endif()

install(TARGETS orvexpp RUNTIME DESTINATION bin)
if(TARGET orvex)
    install(TARGETS orvex RUNTIME DESTINATION bin)
endif()
install(TARGETS standin LIBRARY DESTINATION ${standin_folder}
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

install(DIRECTORY man/ DESTINATION share/man/man1 FILES_MATCHING PATTERN "*.1")
install(DIRECTORY completions/bash/ DESTINATION share/bash-completion/completions)
install(DIRECTORY completions/zsh/ DESTINATION ${zsh_folder})
install(DIRECTORY completions/fish/ DESTINATION share/fish/vendor_completions.d)

# Laid out as in the sources, so that the links between them stay valid.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION share/doc/orvex)
install(DIRECTORY docs examples DESTINATION share/doc/orvex)
# The licence, and the notices of what is compiled into orvex.
install(FILES packaging/debian/copyright DESTINATION share/doc/orvex)
if(NOT ORVEX_DEBIAN)
    install(FILES LICENSE DESTINATION share/doc/orvex)
endif()
install(FILES editors/package.json DESTINATION share/orvex/editors)
install(DIRECTORY editors/textmate editors/vim editors/vscode DESTINATION share/orvex/editors)

# Removes the files of the last `cmake --install` from this build, and the folders that are then empty.
add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -DMANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt
        -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
    VERBATIM)

set(CPACK_GENERATOR TGZ)
if(ORVEX_DEBIAN)
    set(CPACK_GENERATOR DEB)
endif()
set(CPACK_PACKAGE_NAME orvex)
set(CPACK_PACKAGE_CONTACT "The ORVEX maintainers <orvex@example.org>")
set(CPACK_PACKAGE_VENDOR "The ORVEX maintainers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "translator and checker of equilibrium models in ORVEX notation")
set(CPACK_PACKAGE_DESCRIPTION
    "ORVEX is a block-structured notation for economic equilibrium models: sectors,\n\
commodities, consumers, side constraints and reports. orvexpp, which a host\n\
starts, reads the models of a ZELM text and writes the ZELM source that\n\
declares each of them and prints it with every set element spelt out.\n\
orvex shows all errors of a model, and what is in it.")
set(CPACK_PACKAGE_FILE_NAME
    "orvex-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_STRIP_FILES ON)
set(CPACK_ARCHIVE_UID 0)
set(CPACK_ARCHIVE_GID 0)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
if(TARGET orvex)
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS graphviz)
endif()
set(CPACK_ORVEX_DEBIAN ${ORVEX_DEBIAN})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/CompletePackage.cmake)

include(CPack)
