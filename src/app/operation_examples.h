#pragma once
// One example for each operation: the words behind `tarloquery call OPERATION` on the demo
// database, and what its output holds. They stand in operation_examples.tsv; the tests run them.

#include <string_view>
#include <vector>

namespace tarlo::app {

struct OperationExample {
  std::string_view operation;
  std::string_view result;  // what kind of value comes back
  std::string_view words;   // as typed into a shell; "" for none
  std::string_view holds;   // a part of the output
};

const std::vector<OperationExample>& operationExamples();
// Nothing for an operation without one.
const OperationExample* exampleOf(std::string_view operation);

}  // namespace tarlo::app
