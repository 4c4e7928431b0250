# The compiler that an NX installation asks for. The host and the client library are release builds for x64 by MSVC, and
# objects of its C++ library cross their borders.
option(PIVRA_NX_CHECK "Build with any compiler, to see whether it goes through; NX cannot load that" OFF)
set(prompt "start from the \"x64 Native Tools Command Prompt\" of Visual Studio 2019 16.10 or later.")
if(NOT PIVRA_NX_CHECK AND (NOT MSVC OR MSVC_VERSION LESS 1929))
  message(FATAL_ERROR "NX needs another compiler than ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}: "
                      "${prompt}")
endif()
if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8 OR (MSVC AND NOT CMAKE_CXX_COMPILER_ARCHITECTURE_ID STREQUAL "x64"))
  message(FATAL_ERROR "NX loads libraries for x64 alone, and this compiler makes others: ${prompt}")
endif()

# In every configuration: the debug run time has other containers and another heap.
set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreadedDLL)
# A process that has loaded an older msvcp140.dll crashes at the first std::mutex without it.
target_compile_definitions(pivra_options INTERFACE _DISABLE_CONSTEXPR_MUTEX_CONSTRUCTOR)
if(MSVC)
  add_link_options(/INCREMENTAL:NO /OPT:REF /OPT:ICF)
endif()
