# Compiles, links and runs a program with nothing but what pkg-config answers. Beside it stands a source that includes
# every header: what they include must be installed too.
set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs tavik
  OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")

file(GLOB_RECURSE headers RELATIVE ${PREFIX}/include ${PREFIX}/include/tavik/*.h)
list(LENGTH headers count)
if(count EQUAL 0)
  message(FATAL_ERROR "No headers in ${PREFIX}/include")
endif()
message(STATUS "${count} headers")
list(TRANSFORM headers REPLACE "(.+)" "#include <\\1>\n")
string(CONCAT includes ${headers})
file(WRITE ${PROGRAM}_headers.cpp "${includes}")

execute_process(COMMAND ${COMPILER} -std=c++17 -Wall -Wextra -Wpedantic -Werror ${SOURCE} ${PROGRAM}_headers.cpp ${flags} -o ${PROGRAM}
  COMMAND_ERROR_IS_FATAL ANY)
set(ENV{LD_LIBRARY_PATH} ${PREFIX}/${LIBDIR})
execute_process(COMMAND ${PROGRAM} COMMAND_ERROR_IS_FATAL ANY)
