#pragma once
// Conversions of late-bound values, as the pages' language has them. Null raises error 94
// everywhere but where said; an array or an object raises 13; text that is not a number where one
// is wanted raises 13; a value out of range raises 6. Empty is 0, "", False or day 0.

#include <cstdint>
#include <string>

#include "text/date_text.h"
#include "variant/variant.h"

namespace tarlo::variant {

// Text form: numbers without trailing zeros and without exponent, True/False, dates as YYYY-MM-DD
// HH:MM:SS.
std::string toText(const Variant& value);
// As toText, but Null gives "": the "&" operator's view of a value, used wherever text is put
// together.
std::string spliced(const Variant& value);

std::int16_t toInt16(
    const Variant& value);  // rounds half to even, like every integer conversion below
std::int32_t toInt32(const Variant& value);
std::int64_t toInt64(const Variant& value);
double toDouble(const Variant& value);
bool toBoolean(const Variant& value);  // numbers: not 0; text: a number, or True/False in any case
Date toDate(const Variant& value);     // text: of the forms text::kValueDates

// True when toDouble would succeed and the value is a number, a Boolean, Empty or numeric text;
// Null and dates are not numeric, "" is not.
bool isNumeric(const Variant& value);

// Calendar parts of a date and back. `days` counts as in Date.
using text::CalendarTime;
CalendarTime calendarOf(Date date);
Date dateOf(const CalendarTime& time);  // error 5 when the parts name no time
// The server's local time, to the millisecond.
Date now();

}  // namespace tarlo::variant
