# Run by CPack between the installation into its own folder and the packing. In the Debian package the
# manual pages are packed and there is a changelog in Debian's form. All files get one time, that of
# SOURCE_DATE_EPOCH, so that a package depends on its sources alone.

# Runs a command, and stops if it fails.
function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(root ${CPACK_TEMPORARY_DIRECTORY})
if(CPACK_ORVEX_DEBIAN)
    file(GLOB pages ${root}/usr/share/man/man1/*.1)
    run(gzip -9n ${pages})
    # The time of the last commit, or now.
    string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
    set(changelog ${root}/usr/share/doc/orvex/changelog)
    file(WRITE ${changelog} "orvex (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * See CHANGELOG.md.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
    run(gzip -9n ${changelog})
endif()
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    file(GLOB_RECURSE files LIST_DIRECTORIES ON ${root}/*)
    # Some programs take "@" and seconds, all take this form.
    string(TIMESTAMP time "%Y%m%d%H%M.%S" UTC)
    set(ENV{TZ} UTC)
    run(touch -h -t ${time} ${root} ${files})
endif()
