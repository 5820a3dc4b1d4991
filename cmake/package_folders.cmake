# Run by CPack before it packs: folders are as Debian wants them, whatever the umask of the one who builds.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_DIRECTORY} DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
