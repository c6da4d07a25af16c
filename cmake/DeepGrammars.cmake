# The JavaScript and HTML grammars of the deep analyser: generated C parsers
# from their npm packages, fetched into the build tree at configure time and
# compiled here. Their ABI (14) is the one Debian's libtree-sitter 0.20 takes.
set(TARVO_GRAMMAR_JAVASCRIPT "tree-sitter-javascript@0.20.4" CACHE STRING "npm package of the JavaScript grammar")
set(TARVO_GRAMMAR_HTML "tree-sitter-html@0.20.0" CACHE STRING "npm package of the HTML grammar")

pkg_check_modules(TREE_SITTER REQUIRED IMPORTED_TARGET tree-sitter)
find_program(NPM_EXECUTABLE npm REQUIRED)

set(grammar_root ${CMAKE_BINARY_DIR}/_grammars)
function(tarvo_fetch_grammar package out_dir)
  string(REGEX REPLACE "[@/]" "_" stem "${package}")
  set(dir ${grammar_root}/${stem})
  if(NOT EXISTS ${dir}/package/src/parser.c)
    file(MAKE_DIRECTORY ${dir})
    execute_process(COMMAND ${NPM_EXECUTABLE} pack --silent ${package}
                    WORKING_DIRECTORY ${dir} OUTPUT_VARIABLE tarball OUTPUT_STRIP_TRAILING_WHITESPACE
                    RESULT_VARIABLE failed)
    if(failed)
      message(FATAL_ERROR "npm pack ${package} failed")
    endif()
    string(REGEX REPLACE ".*\n" "" tarball "${tarball}")
    file(ARCHIVE_EXTRACT INPUT ${dir}/${tarball} DESTINATION ${dir})
  endif()
  set(${out_dir} ${dir}/package/src PARENT_SCOPE)
endfunction()

tarvo_fetch_grammar(${TARVO_GRAMMAR_JAVASCRIPT} javascript_src)
tarvo_fetch_grammar(${TARVO_GRAMMAR_HTML} html_src)
add_library(tarvo_grammars STATIC
  ${javascript_src}/parser.c ${javascript_src}/scanner.c
  ${html_src}/parser.c ${html_src}/scanner.c)
set_target_properties(tarvo_grammars PROPERTIES POSITION_INDEPENDENT_CODE ON C_STANDARD 99)
# Generated code: its warnings are not ours to fix.
target_compile_options(tarvo_grammars PRIVATE -w)
target_include_directories(tarvo_grammars PRIVATE ${javascript_src} ${html_src})
