// How texts are sorted and compared by < and >, and which of them is the least or the greatest.

#include "database/sqlite/function_call.h"
#include "database/text_order.h"

namespace tarlo::database {
namespace {

void sortKey(FunctionCall& call) {
  call.giveBytes(SortKey(call.text(0)).bytes());
}

constexpr FunctionRow kOrderFunctions[] = {{"tsql_sortkey", 1, sortKey}};

enum class Extreme { Least, Greatest };

template <Extreme extreme>
class ExtremeText final : public Aggregate {
 public:
  static std::unique_ptr<Aggregate> make() { return std::make_unique<ExtremeText>(); }

  void step(FunctionCall& call) override {
    const std::string_view text = call.text(0);
    const SortKey key(text);
    // No key is empty: an empty one is none yet.
    const int order = key_.empty() ? 0 : key.bytes().compare(key_);
    if (!key_.empty() && (extreme == Extreme::Least ? order >= 0 : order <= 0)) return;
    key_ = key.bytes();
    text_ = text;
  }

  void finish(FunctionCall& call) override { call.give(std::string_view(text_)); }

 private:
  std::string key_;
  std::string text_;
};

constexpr AggregateRow kOrderAggregates[] = {
    {"tsql_min_text", 1, ExtremeText<Extreme::Least>::make},
    {"tsql_max_text", 1, ExtremeText<Extreme::Greatest>::make},
};

}  // namespace

std::span<const FunctionRow> orderFunctions() {
  return kOrderFunctions;
}
std::span<const AggregateRow> orderAggregates() {
  return kOrderAggregates;
}

}  // namespace tarlo::database
