#pragma once
// One call of a function by SQLite, and the tables that the functions are listed in. A body reads
// its arguments and gives one result, or throws FunctionError, which becomes the statement's error.

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarlo::database {

class FunctionError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The statement has to end: its time is over, or nobody waits for it.
struct FunctionEnd {};

// For work whose length a statement's author chooses: raises FunctionEnd when the statement has to
// end. It counts what was done, and asks from time to time.
class WorkMeter {
 public:
  void add(std::size_t steps) {
    done_ += steps;
    if (done_ >= kBetweenQuestions) ask();
  }

 private:
  static constexpr std::size_t kBetweenQuestions = 1u << 16;
  void ask();
  std::size_t done_ = 0;
};

class FunctionCall {
 public:
  FunctionCall(sqlite3_context* context, int count, sqlite3_value** values)
      : context_(context), count_(count), values_(values) {}

  int count() const { return count_; }
  bool isNull(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
  bool isText(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_TEXT; }
  bool isInteger(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_INTEGER; }
  // Valid as long as the call; a number comes as its text.
  std::string_view text(int i) const;
  // A text must be an integer; a real is cut to its whole part. FunctionError when that fails or
  // does not fit.
  std::int64_t integer(int i) const;
  // A text must be a number.
  double number(int i) const;
  sqlite3_value* raw(int i) const { return values_[i]; }
  sqlite3_context* context() const { return context_; }

  void giveNull() { sqlite3_result_null(context_); }
  void give(std::int64_t value) { sqlite3_result_int64(context_, value); }
  // FunctionError for a value that is not finite.
  void give(double value);
  void give(std::string_view value);
  // A blob.
  void giveBytes(std::string_view value);
  void giveSame(int i) { sqlite3_result_value(context_, values_[i]); }

 private:
  sqlite3_context* context_;
  int count_;
  sqlite3_value** values_;
};

enum class Nulls { Propagate, Passed };
struct FunctionRow {
  const char* name;
  int arity;
  void (*body)(FunctionCall& call);
  Nulls nulls = Nulls::Propagate;  // Propagate: NULL among the arguments gives NULL
};

std::span<const FunctionRow> textFunctions();
std::span<const FunctionRow> searchFunctions();
std::span<const FunctionRow> numberFunctions();
std::span<const FunctionRow> numberTextFunctions();
std::span<const FunctionRow> dateFunctions();
std::span<const FunctionRow> orderFunctions();

// What a group has come to. Its first row whose first argument is not NULL makes it; without such a
// row the result is NULL.
class Aggregate {
 public:
  virtual ~Aggregate() = default;
  // Throws FunctionError as a function does. The first argument is not NULL.
  virtual void step(FunctionCall& call) = 0;
  virtual void finish(FunctionCall& call) = 0;
};

struct AggregateRow {
  const char* name;
  int arity;
  std::unique_ptr<Aggregate> (*make)();
};

std::span<const AggregateRow> orderAggregates();

// The row outlives the handle. Returns SQLite's code.
int registerAggregate(sqlite3* handle, const AggregateRow& row);

// Runs a row of a table; the row is the function's user data.
void runFunction(sqlite3_context* context, int count, sqlite3_value** values);

// tsql_single, which gives the one value of a scalar sub-query. Returns SQLite's code.
int registerAggregates(sqlite3* handle);
// Collation TSQL. Returns SQLite's code.
int registerCollation(sqlite3* handle);

}  // namespace tarlo::database
