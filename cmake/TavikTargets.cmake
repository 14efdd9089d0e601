# Settings that every target of the project shares, and the helpers that create them.

set(TAVIK_SANITIZE_FLAGS "")
if(TAVIK_SANITIZE)
  set(TAVIK_SANITIZE_FLAGS -fsanitize=${TAVIK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
endif()
if(TAVIK_BUILD_FUZZERS)
  list(APPEND TAVIK_SANITIZE_FLAGS -fsanitize=fuzzer-no-link) # coverage, by which libFuzzer finds its way
endif()

# Language level, warnings and sanitizers for one target.
#
# -ffp-contract=off: no fused multiply-add behind our back, so that every processor and compiler
# computes the same bits.
function(tavik_target_defaults target)
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off
    $<$<BOOL:${TAVIK_WARNINGS_AS_ERRORS}>:-Werror>
    ${TAVIK_SANITIZE_FLAGS})
  target_link_options(${target} PRIVATE ${TAVIK_SANITIZE_FLAGS})
endfunction()
