# What is shipped, in the host's folder layout; `cpack` makes the zip and its checksum of it.
install(TARGETS nx-integration LIBRARY DESTINATION application)
install(DIRECTORY package/application package/startup DESTINATION .)
install(FILES package/LICENCES.md DESTINATION .)
if(PIVRA_NX_SDK)
  install(FILES ${PIVRA_CPP_PIV_SDK}/bin/gopiv-windows-amd64.dll DESTINATION application)
else()
  install(TARGETS gopiv RUNTIME DESTINATION application LIBRARY DESTINATION application)
endif()

# The texts of the licences as the distribution has them; elsewhere they are laid beside the package by hand.
foreach(text nlohmann-json=nlohmann-json3-dev mingw-w64=mingw-w64-x86-64-dev
        gcc-runtime=gcc-mingw-w64-x86-64-posix-runtime)
  string(REGEX MATCH "^(.*)=(.*)$" text ${text})
  set(file /usr/share/doc/${CMAKE_MATCH_2}/copyright)
  if(EXISTS ${file})
    file(REAL_PATH ${file} file)
    install(FILES ${file} DESTINATION licences RENAME ${CMAKE_MATCH_1}.txt)
  endif()
endforeach()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME pivra-nx-${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/package)
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
include(CPack)
