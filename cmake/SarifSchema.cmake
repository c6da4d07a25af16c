# The SARIF 2.1.0 JSON schema, as the npm package @microsoft/jest-sarif ships
# it, fetched once into the build tree: TARVO_SARIF_SCHEMA names the file.
set(TARVO_SARIF_PACKAGE "@microsoft/jest-sarif@1.0.0-beta.0")
set(schema_dir ${CMAKE_BINARY_DIR}/_sarif)
set(TARVO_SARIF_SCHEMA ${schema_dir}/package/lib/schemas/sarif-2.1.0-rtm.5.json)
if(NOT EXISTS ${TARVO_SARIF_SCHEMA})
  find_program(TARVO_NPM npm REQUIRED)
  file(MAKE_DIRECTORY ${schema_dir})
  execute_process(COMMAND ${TARVO_NPM} pack ${TARVO_SARIF_PACKAGE} --silent
    WORKING_DIRECTORY ${schema_dir} OUTPUT_VARIABLE archive OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE failed)
  if(failed OR NOT EXISTS ${schema_dir}/${archive})
    message(FATAL_ERROR "npm pack ${TARVO_SARIF_PACKAGE} failed")
  endif()
  file(ARCHIVE_EXTRACT INPUT ${schema_dir}/${archive} DESTINATION ${schema_dir}
    PATTERNS package/lib/schemas/sarif-2.1.0-rtm.5.json)
endif()
