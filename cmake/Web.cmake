# The browser side in the binary: tarlo_web(target) builds web/ with Node.js and embeds it under the namespace web, as
# "scripts.js", "tarlo.css" and "static/..." for every file below web/static. Call it in the folder that makes `target`,
# for the generated files are known to that folder only.

find_program(NODE node REQUIRED)
find_program(NPM npm REQUIRED)

function(tarlo_web target)
  set(web ${CMAKE_SOURCE_DIR}/web)
  set(out ${CMAKE_CURRENT_BINARY_DIR}/web)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${web}/src/*.js ${web}/css/*.css)
  file(GLOB_RECURSE static RELATIVE ${web} CONFIGURE_DEPENDS ${web}/static/*)

  # The packages are shared by all build folders, and a build without a network must work when they are there: npm ci,
  # which removes them first, runs only when npm finds them missing or of another version.
  set(packages ${out}/packages.stamp)
  add_custom_command(
    OUTPUT ${packages}
    COMMAND sh -c "\"${NPM}\" ls >/dev/null 2>&1 || \"${NPM}\" ci --ignore-scripts --no-audit --no-fund --loglevel=error >&2"
    COMMAND ${CMAKE_COMMAND} -E make_directory ${out}
    COMMAND ${CMAKE_COMMAND} -E touch ${packages}
    DEPENDS ${web}/package.json ${web}/package-lock.json
    WORKING_DIRECTORY ${web}
    COMMENT "Packages of the browser side"
    VERBATIM)

  set(files ${out}/scripts.js ${out}/tarlo.css)
  list(TRANSFORM static PREPEND ${out}/ OUTPUT_VARIABLE copies)
  list(TRANSFORM static PREPEND ${web}/ OUTPUT_VARIABLE originals)
  list(APPEND files ${copies})
  add_custom_command(
    OUTPUT ${files}
    COMMAND ${NODE} ${web}/build.mjs ${out}
    COMMAND ${CMAKE_COMMAND} -E touch_nocreate ${files}
    DEPENDS ${packages} ${web}/build.mjs ${sources} ${originals}
    COMMENT "Script library and style sheet"
    VERBATIM)
  add_custom_target(${target}_web DEPENDS ${files})
  add_dependencies(${target} ${target}_web)
  tarlo_embed(${target} NAMESPACE web BASE ${out} FILES ${files})
endfunction()

# The tests of the browser side; those in a real browser say "skipped" where there is none.
function(tarlo_web_tests)
  set(test ${CMAKE_SOURCE_DIR}/web/test)
  file(GLOB units CONFIGURE_DEPENDS ${test}/*.test.js)
  add_test(NAME web COMMAND ${NODE} --test ${units})
  add_test(NAME web_browser COMMAND ${NODE} ${test}/browser/run.mjs)
  set_tests_properties(web_browser PROPERTIES SKIP_REGULAR_EXPRESSION "skipped:")
endfunction()
