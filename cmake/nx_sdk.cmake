# The real neighbours instead of the stand-ins: an NX installation and the service's client library.
if(NOT EXISTS ${PIVRA_NX_SDK}/uf.h)
  message(FATAL_ERROR "PIVRA_NX_SDK names no UGOPEN folder: ${PIVRA_NX_SDK}. Set UGII_BASE_DIR to the NX installation.")
endif()
if(NOT EXISTS ${PIVRA_CPP_PIV_SDK}/include/cpp_piv)
  message(FATAL_ERROR "PIVRA_CPP_PIV_SDK names no folder of the client library: ${PIVRA_CPP_PIV_SDK}. Set CPP_PIV_SDK.")
endif()
# Newer releases split the C++ library by namespace, so all of its pieces are taken.
file(GLOB nx_libraries ${PIVRA_NX_SDK}/libufun.lib ${PIVRA_NX_SDK}/libugopenint.lib ${PIVRA_NX_SDK}/libnxopencpp*.lib
     ${PIVRA_NX_SDK}/libnxopenuicpp.lib)
list(REMOVE_DUPLICATES nx_libraries)
add_library(nxopen INTERFACE)
target_include_directories(nxopen SYSTEM INTERFACE ${PIVRA_NX_SDK})
target_link_libraries(nxopen INTERFACE ${nx_libraries})

file(GLOB cpp_piv_libraries ${PIVRA_CPP_PIV_SDK}/lib/*.lib)
add_library(cpp_piv INTERFACE)
target_include_directories(cpp_piv SYSTEM INTERFACE ${PIVRA_CPP_PIV_SDK}/include)
target_link_libraries(cpp_piv INTERFACE ${cpp_piv_libraries} nlohmann_headers)
