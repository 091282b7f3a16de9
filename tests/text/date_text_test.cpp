#include "text/date_text.h"

#include <gtest/gtest.h>

namespace tarlo::text {
namespace {

std::string readAs(const DateForms& forms, std::string_view text) {
  const auto time = readDate(text, forms);
  return time ? millisecondText(*time) : "";
}

TEST(DateText, FormsOfValuesAndOfStatements) {
  struct Row {
    const char* text;
    const char* value;      // "" where it is none
    const char* statement;  // nullptr: the same
  };
  const Row rows[] = {
      {"2024-1-5", "2024-01-05 00:00:00.000", nullptr},
      {"2024/1/5 9:05", "2024-01-05 09:05:00.000", nullptr},
      {"20240105", "2024-01-05 00:00:00.000", nullptr},
      {"20240105 23:59:59.999", "2024-01-05 23:59:59.999", nullptr},
      {" 2024-01-05   09:05:33.5 ", "2024-01-05 09:05:33.500", nullptr},
      {"2024-01-05 09:05:33.07", "2024-01-05 09:05:33.070", nullptr},
      {"2024-2-29", "2024-02-29 00:00:00.000", nullptr},
      {"1753-1-1", "1753-01-01 00:00:00.000", nullptr},
      {"9999-12-31", "9999-12-31 00:00:00.000", nullptr},
      // What only one of them takes.
      {"1752-12-31", "1752-12-31 00:00:00.000", ""},
      {"0001-01-01", "0001-01-01 00:00:00.000", ""},
      {"2024.1.5", "", "2024-01-05 00:00:00.000"},
      {"2024-1-5 9:8", "", "2024-01-05 09:08:00.000"},
      {"2024-1-5 9:08:7", "", "2024-01-05 09:08:07.000"},
      {"2024-03-05T09:08:07", "", "2024-03-05 09:08:07.000"},
      {"9:08", "", "1900-01-01 09:08:00.000"},
      {"", "", "1900-01-01 00:00:00.000"},
      {"  ", "", "1900-01-01 00:00:00.000"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(readAs(kValueDates, row.text), row.value) << row.text;
    EXPECT_EQ(readAs(kStatementDates, row.text), row.statement ? row.statement : row.value)
        << row.text;
  }
  for (const char* text : {"2023-2-29",
                           "2024-4-31",
                           "2024-13-1",
                           "2024-0-1",
                           "2024-1-0",
                           "0000-1-1",
                           "24-1-5",
                           "2024-1/5",
                           "2024-1",
                           "2024",
                           "2024-1-",
                           "202401051",
                           "2024-1-5 24:00",
                           "2024-1-5 9:60",
                           "2024-1-5 9:08:60",
                           "2024-1-5 9",
                           "2024-1-5 9:",
                           "2024-1-5 9:08:",
                           "2024-1-5 9:08:07.",
                           "2024-1-5 9:08:07.1234",
                           "2024-1-5x",
                           "2024-1-5T",
                           "2024-1-5T 9:08",
                           "9:08 2024-1-5",
                           "20240105T",
                           "２０２４-1-5",
                           "\t2024-1-5"}) {
    EXPECT_EQ(readAs(kValueDates, text), "") << text;
    EXPECT_EQ(readAs(kStatementDates, text), "") << text;
  }
}

TEST(DateText, WhatIsWrittenIsReadAgain) {
  const CalendarTime time{2002, 1, 8, 9, 5, 33, 7};
  for (const std::string& text : {dayText(time), dateTimeText(time), millisecondText(time)}) {
    const auto back = readWrittenDate(text);
    ASSERT_TRUE(back) << text;
    EXPECT_EQ(millisecondText(*back).substr(0, text.size()), text);
  }
  for (const char* text : {"", "2002-1-8", "2002-01-08 09:05", "2002-01-08T09:05:33", "2002-02-30",
                           "2002-01-08 24:00:00", "2002-01-08 09:05:33.07"}) {
    EXPECT_FALSE(readWrittenDate(text)) << text;
  }
}

TEST(DateText, MomentsCountThroughTheCalendar) {
  using std::chrono::milliseconds;
  const std::pair<std::int64_t, const char*> rows[] = {
      {0, "1970-01-01 00:00:00.000"},
      {-1, "1969-12-31 23:59:59.999"},
      {951'782'400'000, "2000-02-29 00:00:00.000"},
      {-6'847'804'800'000, "1753-01-01 00:00:00.000"}};
  for (const auto& [count, text] : rows) {
    const CalendarTime time = calendarAt(Moment{milliseconds{count}});
    EXPECT_EQ(millisecondText(time), text);
    EXPECT_EQ(momentOf(time), Moment{milliseconds{count}});
  }
}

// 257 is 1 in the byte that a month has.
TEST(DateText, NumbersThatAreNoPartOfACalendarDoNotExist) {
  EXPECT_TRUE(exists({9999, 12, 31, 23, 59, 59, 999}));
  for (const CalendarTime& time :
       {CalendarTime{10000, 1, 1}, CalendarTime{0, 1, 1}, CalendarTime{2002, 257, 1},
        CalendarTime{2002, 1, 257}, CalendarTime{2002, -1, 1},
        CalendarTime{2002, 1, 1, 0, 0, 0, 1000}, CalendarTime{2002, 1, 1, -1},
        CalendarTime{67538, 1, 1}}) {
    EXPECT_FALSE(exists(time)) << time.year << '-' << time.month << '-' << time.day;
  }
}

}  // namespace
}  // namespace tarlo::text
