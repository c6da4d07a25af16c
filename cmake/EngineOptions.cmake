# Build-time configuration of the engine. The defaults are the product's values.
set(TARVO_DB_PATH "/usr/share/lumeric/APIAnalEngineDB.xml" CACHE STRING "API database file read by Init")
set(TARVO_RESULT_PATH "/tmp/AnalysisResult" CACHE STRING "File that receives the finding lines")
set(TARVO_EXTRACT_DIR_FORMAT "/tmp/%d" CACHE STRING "printf format of the package extraction directories")

# Guards against hostile packages and SWF files.
set(TARVO_MAX_PACKAGE_DEPTH "16" CACHE STRING "Deepest nesting of packages that is still expanded")
set(TARVO_MAX_EXTRACTED_BYTES "1073741824" CACHE STRING "Bytes written by package expansion per analysis")
set(TARVO_MAX_PACKAGE_ENTRIES "100000" CACHE STRING "Entries extracted from one package")
set(TARVO_MAX_INFLATED_SWF_BYTES "67108864" CACHE STRING "Largest image of a SWF file (plain, or compressed once inflated)")
set(TARVO_MAX_SOURCE_FILE_BYTES "33554432" CACHE STRING "Largest web source file that is read")

option(TARVO_BUILD_TESTS "Build the test suite" ON)
option(TARVO_BUILD_TOOLS "Build the command-line host" ON)
option(TARVO_BUILD_BENCHMARKS "Build the benchmarks (needs Google Benchmark)" ON)
option(TARVO_SANITIZE "Build everything with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(TARVO_FUZZ "Build the libFuzzer targets only (needs clang)" OFF)

add_compile_options(-Wall -Wextra -Wno-unused-parameter)
# Large-file interfaces everywhere (a no-op on 64-bit platforms): on the 32-bit
# target off_t, ino_t and directory offsets become 64 bits, so stat, readdir and
# nftw work on large files and on file systems whose inode numbers or directory
# offsets do not fit in 32 bits, where they would fail with EOVERFLOW. time_t
# keeps the platform's width: firstCheckTime is the host's struct timespec.
add_compile_definitions(_FILE_OFFSET_BITS=64)
if(TARVO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined -fno-sanitize-recover=all)
endif()
if(TARVO_FUZZ)
  set(TARVO_BUILD_TESTS ON CACHE BOOL "" FORCE)
  set(TARVO_BUILD_BENCHMARKS OFF CACHE BOOL "" FORCE)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# The deep analyser needs the Tree-sitter runtime and the grammars fetched
# with npm; the cross build leaves it out (see docs/design.md, Deep analysis).
if(CMAKE_CROSSCOMPILING)
  option(TARVO_BUILD_DEEP "Build the deep analyser (Tree-sitter)" OFF)
else()
  option(TARVO_BUILD_DEEP "Build the deep analyser (Tree-sitter)" ON)
endif()
