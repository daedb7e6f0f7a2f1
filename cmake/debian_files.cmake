# Run by CPack on the files of a package before it packs them.
set(root "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr")
set(documents "${root}/share/doc/${CPACK_PACKAGE_NAME}")

# Debian's packages carry the history of their versions, and that and the manual pages compressed.
file(GLOB pages "${root}/share/man/man1/*.1")
configure_file("${CPACK_MEMWRIGHT_CHANGELOG}" "${documents}/changelog" COPYONLY)
execute_process(COMMAND gzip -9 --no-name ${pages} "${documents}/changelog"
                COMMAND_ERROR_IS_FATAL ANY)

# Whatever the umask is under which the package is made.
file(CHMOD_RECURSE "${root}" DIRECTORY_PERMISSIONS
     OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
