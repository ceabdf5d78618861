# Flags that turn memory errors, should there be any, into an end of the process instead of a way in: what runs in a
# host's process reads files of strangers. tests/check-hardening reads them back from the built files.
#
# Not with the sanitizers, which find the same errors earlier and do not go together with _FORTIFY_SOURCE.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Level 3 also knows sizes that are computed at run time. It takes a compiler and a C library that have it.
set(CMAKE_REQUIRED_FLAGS "-O2 -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3")
check_cxx_source_compiles("#include <cstdio>
#if __USE_FORTIFY_LEVEL < 3
#error
#endif
int main() {}" TARVO_HAS_FORTIFY_3)
unset(CMAKE_REQUIRED_FLAGS)
check_cxx_compiler_flag(-fstack-clash-protection TARVO_HAS_STACK_CLASH_PROTECTION)
check_cxx_compiler_flag(-fcf-protection TARVO_HAS_CF_PROTECTION)  # an error but on x86

function(tarvo_harden)
  if(TARVO_SANITIZE OR TARVO_SANITIZE_THREADS)
    return()
  endif()
  set(level $<IF:$<BOOL:${TARVO_HAS_FORTIFY_3}>,3,2>)
  foreach(target ${ARGN})
    target_compile_options(${target} PRIVATE
      -fstack-protector-strong
      $<$<BOOL:${TARVO_HAS_STACK_CLASH_PROTECTION}>:-fstack-clash-protection>
      $<$<BOOL:${TARVO_HAS_CF_PROTECTION}>:-fcf-protection>
      # Without optimisation the C library has nothing to fortify, and warns.
      $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
      $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=${level}>)
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL OBJECT_LIBRARY)
      target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
    endif()
  endforeach()
endfunction()
