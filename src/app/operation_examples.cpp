#include "app/operation_examples.h"

#include <algorithm>

#include "embedded_examples.h"
#include "text/pieces.h"

namespace tarlo::app {

const std::vector<OperationExample>& operationExamples() {
  static const std::vector<OperationExample> examples = [] {
    std::vector<OperationExample> all;
    const auto lines = text::split(embedded::examples::find("operation_examples.tsv"), "\n");
    for (std::size_t i = 1; i < lines.size(); ++i) {  // the first one names the columns
      const auto parts = text::split(lines[i], "\t");
      if (parts.size() == 4) all.push_back({parts[0], parts[1], parts[2], parts[3]});
    }
    return all;
  }();
  return examples;
}

const OperationExample* exampleOf(std::string_view operation) {
  const auto& all = operationExamples();
  const auto found = std::ranges::find(all, operation, &OperationExample::operation);
  return found == all.end() ? nullptr : &*found;
}

}  // namespace tarlo::app
