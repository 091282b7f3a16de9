#include "database/script.h"

#include <algorithm>

#include <fmt/format.h>

#include "text/fold.h"

namespace tarlo::database {
namespace {

constexpr std::string_view kBlanks = " \t\r";

bool isGo(std::string_view line) {
  const std::size_t first = line.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return false;
  const std::size_t last = line.find_last_not_of(kBlanks);
  return text::equalsNoCase(line.substr(first, last - first + 1), "GO");
}

std::size_t lineBreaks(std::string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// Blank lines in front do not belong to the batch, so that its first line is where it begins.
void addBatch(std::vector<ScriptBatch>& batches, std::string_view text, std::size_t line) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string_view::npos) return;
  const std::size_t lineStart = text.substr(0, begin).find_last_of('\n');
  const std::size_t from = lineStart == std::string_view::npos ? 0 : lineStart + 1;
  batches.push_back({text.substr(from), line + lineBreaks(text.substr(0, from))});
}

}  // namespace

std::vector<ScriptBatch> splitScript(std::string_view script) {
  if (script.starts_with("\xEF\xBB\xBF")) script.remove_prefix(3);  // a byte order mark
  std::vector<ScriptBatch> batches;
  std::size_t batchStart = 0, batchLine = 1, line = 1;
  for (std::size_t at = 0; at < script.size(); ++line) {
    const std::size_t end = std::min(script.find('\n', at), script.size());
    const std::size_t next = std::min(end + 1, script.size());
    if (isGo(script.substr(at, end - at))) {
      addBatch(batches, script.substr(batchStart, at - batchStart), batchLine);
      batchStart = next;
      batchLine = line + 1;
    }
    at = next;
  }
  addBatch(batches, script.substr(batchStart), batchLine);
  return batches;
}

void runScript(Connection& connection, std::string_view script) {
  for (const ScriptBatch& batch : splitScript(script)) {
    try {
      connection.execute(batch.text);
    } catch (const DatabaseError& error) {
      throw DatabaseError(error.number(),
                          fmt::format("line {}: {}", batch.firstLine, error.description()),
                          error.native());
    }
  }
}

}  // namespace tarlo::database
