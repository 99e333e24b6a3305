# Run by cpack with CPACK_PACKAGE_FILES, the packages that it has made, to put into each what it has no setting for:
# the trigger by which Debian renews the cache of shared libraries, where cpack calls ldconfig in scripts of the package,
# that packages of two architectures may be installed together, and that manual pages are compressed.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(folder ${package}.unpacked)
  file(REMOVE_RECURSE ${folder})
  execute_process(COMMAND dpkg-deb -R ${package} ${folder} COMMAND_ERROR_IS_FATAL ANY)
  file(READ ${folder}/DEBIAN/control control)
  if(EXISTS ${folder}/DEBIAN/shlibs)
    file(REMOVE ${folder}/DEBIAN/postinst ${folder}/DEBIAN/postrm)
    file(WRITE ${folder}/DEBIAN/triggers "activate-noawait ldconfig\n")
  endif()
  string(STRIP "${control}" control)
  if(control MATCHES "Architecture: all\n")
    string(APPEND control "\nMulti-Arch: foreign")
  elseif(control MATCHES "\nSection: (libs|libdevel)\n")
    string(APPEND control "\nMulti-Arch: same")
  endif()
  file(GLOB pages ${folder}/usr/share/man/man*/*)
  if(pages)
    execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
    # The sums are of the files in the package.
    execute_process(COMMAND sh -c "find usr -type f -exec md5sum {} + | LC_ALL=C sort -k 2 >DEBIAN/md5sums"
      WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY)
  endif()
  # cpack counts what a link points to as well.
  execute_process(COMMAND du -sk --exclude=DEBIAN ${folder} OUTPUT_VARIABLE size COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "[^0-9].*" "" size "${size}")
  string(REGEX REPLACE "Installed-Size: [0-9]+" "Installed-Size: ${size}" control "${control}")
  file(WRITE ${folder}/DEBIAN/control "${control}\n")
  execute_process(COMMAND dpkg-deb -Zxz --root-owner-group -b ${folder} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${folder})
endforeach()
