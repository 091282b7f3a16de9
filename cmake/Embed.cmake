# Files in the binary: tarlo_embed(target NAMESPACE FILES...) gives the target a generated header embedded_<namespace>.h
# with `std::string_view tarlo::embedded::<namespace>::find(std::string_view file)` and `names()`; file names are
# relative to BASE. The bytes come in through the assembler's .incbin, so size costs no compile time.

function(tarlo_embed target)
  cmake_parse_arguments(ARG "" "NAMESPACE;BASE" "FILES" ${ARGN})
  set(out ${CMAKE_CURRENT_BINARY_DIR}/embedded)
  set(assembly "  .section .rodata\n")
  set(declarations "")
  set(entries "")
  set(index 0)
  foreach(file IN LISTS ARG_FILES)
    cmake_path(RELATIVE_PATH file BASE_DIRECTORY ${ARG_BASE} OUTPUT_VARIABLE relative)
    set(symbol tarlo_embedded_${ARG_NAMESPACE}_${index})
    string(APPEND assembly "  .global ${symbol}\n  .global ${symbol}_end\n${symbol}:\n  .incbin \"${file}\"\n${symbol}_end:\n")
    string(APPEND declarations "extern \"C\" const char ${symbol}[];\nextern \"C\" const char ${symbol}_end[];\n")
    string(APPEND entries "    {\"${relative}\", {${symbol}, static_cast<std::size_t>(${symbol}_end - ${symbol})}},\n")
    math(EXPR index "${index} + 1")
  endforeach()
  string(APPEND assembly "  .section .note.GNU-stack,\"\",@progbits\n")
  file(CONFIGURE OUTPUT ${out}/${ARG_NAMESPACE}.S CONTENT "${assembly}" @ONLY)
  file(CONFIGURE OUTPUT ${out}/embedded_${ARG_NAMESPACE}.h CONTENT "#pragma once
#include <span>
#include <string_view>
#include <utility>
namespace tarlo::embedded::${ARG_NAMESPACE} {
struct File { std::string_view name; std::string_view text; };
std::span<const File> files();
std::string_view find(std::string_view name);  // empty when there is no such file
}
" @ONLY)
  file(CONFIGURE OUTPUT ${out}/${ARG_NAMESPACE}.cpp CONTENT "#include \"embedded_${ARG_NAMESPACE}.h\"
#include <vector>
${declarations}
namespace tarlo::embedded::${ARG_NAMESPACE} {
std::span<const File> files() {
  static const std::vector<File> all = {
${entries}  };
  return all;
}
std::string_view find(std::string_view name) {
  for (const File& file : files()) if (file.name == name) return file.text;
  return {};
}
}
" @ONLY)
  set_source_files_properties(${out}/${ARG_NAMESPACE}.S PROPERTIES OBJECT_DEPENDS "${ARG_FILES}")
  set_source_files_properties(${out}/${ARG_NAMESPACE}.cpp PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  target_sources(${target} PRIVATE ${out}/${ARG_NAMESPACE}.S ${out}/${ARG_NAMESPACE}.cpp)
  target_include_directories(${target} PUBLIC ${out})
endfunction()
