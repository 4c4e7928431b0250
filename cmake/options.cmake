# Compiler settings shared by every target.
add_library(pivra_options INTERFACE)
if(MSVC)
  # Not for the resource compiler, which does not know these options.
  target_compile_options(pivra_options INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:/W4;/utf-8;/EHsc>")
else()
  target_compile_options(pivra_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
endif()
if(WIN32)
  target_compile_definitions(pivra_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00 WINVER=0x0A00)
endif()
if(MINGW)
  # The debug information of template-heavy files exceeds the section limit of plain COFF objects.
  add_compile_options(-Wa,-mbig-obj)
  # Reproducible: linking the same objects twice gives the same bytes.
  add_link_options(-Wl,--no-insert-timestamp)
endif()
if(PIVRA_SANITIZE)
  add_compile_options(-fsanitize=${PIVRA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${PIVRA_SANITIZE})
endif()
