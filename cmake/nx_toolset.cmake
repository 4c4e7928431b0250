# Requires the compiler that NX needs. The host and the client library are x64 release builds by MSVC, and their interfaces
# use objects of its C++ library.
option(PIVRA_NX_CHECK "Build with any compiler, to test the build; NX cannot load the result" OFF)
set(prompt "start from the \"x64 Native Tools Command Prompt\" of Visual Studio 2019 16.10 or later.")
if(NOT PIVRA_NX_CHECK AND (NOT MSVC OR MSVC_VERSION LESS 1929))
  message(FATAL_ERROR "NX needs another compiler than ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}: "
                      "${prompt}")
endif()
if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8 OR (MSVC AND NOT CMAKE_CXX_COMPILER_ARCHITECTURE_ID STREQUAL "x64"))
  message(FATAL_ERROR "NX loads libraries for x64 alone, and this compiler makes others: ${prompt}")
endif()

# In every configuration, because the debug run time has different containers and its own heap.
set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreadedDLL)
# Without this, a process with an older msvcp140.dll crashes at its first std::mutex.
target_compile_definitions(pivra_options INTERFACE _DISABLE_CONSTEXPR_MUTEX_CONSTRUCTOR)
if(MSVC)
  # Control-flow guard; the resource compiler does not know the option.
  add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:/guard:cf>")
  add_link_options(/INCREMENTAL:NO /OPT:REF /OPT:ICF /guard:cf /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT)
endif()
