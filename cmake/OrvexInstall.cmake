# What `cmake --install` lays down under a prefix, and the packages that CPack makes of it.
#
# All paths are relative, and lib/ is lib/ everywhere: the programs find the companion library from
# their own place, so that what is installed can be moved as a whole.

install(TARGETS orvexpp RUNTIME DESTINATION bin)
if(TARGET orvex)
    install(TARGETS orvex RUNTIME DESTINATION bin)
endif()
install(TARGETS standin LIBRARY DESTINATION lib)

install(DIRECTORY man/ DESTINATION share/man/man1 FILES_MATCHING PATTERN "*.1")
install(DIRECTORY completions/bash/ DESTINATION share/bash-completion/completions)
install(DIRECTORY completions/zsh/ DESTINATION share/zsh/site-functions)
install(DIRECTORY completions/fish/ DESTINATION share/fish/vendor_completions.d)

# Laid out as in the sources, so that the links between them hold.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION share/doc/orvex)
install(DIRECTORY docs examples DESTINATION share/doc/orvex)
install(FILES LICENSE DESTINATION share/doc/orvex RENAME copyright OPTIONAL)
install(FILES editors/package.json DESTINATION share/orvex/editors)
install(DIRECTORY editors/textmate editors/vim editors/vscode DESTINATION share/orvex/editors)

set(CPACK_GENERATOR TGZ DEB)
set(CPACK_PACKAGE_NAME orvex)
set(CPACK_PACKAGE_CONTACT "The ORVEX maintainers <orvex@example.org>")
set(CPACK_PACKAGE_VENDOR "The ORVEX maintainers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_DESCRIPTION
    "ORVEX is a block-structured notation for economic equilibrium models: sectors,\n\
commodities, consumers, side constraints and reports. orvexpp, which a host\n\
starts, reads the models that stand in a ZELM text and writes the ZELM source\n\
that declares each of them and prints it with every set element spelled out.\n\
orvex shows people all that is wrong with a model, and what is in it.")
set(CPACK_PACKAGE_FILE_NAME
    "orvex-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
if(TARGET orvex)
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS graphviz)
endif()

include(CPack)
