// Names of the calendar codes the library returns (holiday kinds, solar-term
// identifiers) and the small formatting shared by the calendar commands.
#pragma once

#include <string>

#include "cli.h"

namespace kvx::cli {

// "English name (romanized Japanese)"; "" for an unknown code.
const char *HolidayName(int kind);
const char *TermName(int identifier);

// "2025-06-01"
std::string DateText(int year, int month, int day);
// Three-letter weekday of a civil date ("Sun").
const char *WeekdayShort(int year, int month, int day);
// hh:mm of clock hours (0 <= hours < 24), rounded to the minute, never 24:00.
std::string ClockHoursText(double hours);
// A lunisolar month as shown: "5", or "L5" for the leap month after 5.
std::string OldMonthText(int month);

}  // namespace kvx::cli
