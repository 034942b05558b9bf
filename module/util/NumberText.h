#pragma once

#include "runtime/CString.h"

namespace plumb {

// Numbers as dialogs and lists show them, and back.

CString IntToText(long value);

// A number with that many decimals (at most 10), trimmed of trailing zeros and a trailing point if asked.
// A half is rounded away from zero. What vanishes at that precision without being 0 keeps its zeros: 0.001
// with two decimals is 0.00, trimmed or not. What vanishes has no sign.
CString DoubleToText(double value, int decimals, bool trim);
// The same, trimmed, with a comma between groups of three digits.
CString DoubleToTextWithCommas(double value, int decimals);

// The number that a text begins with, behind blanks; 0 without one. The point is the decimal sign everywhere.
double TextToDouble(const CString& text);

// Inches as feet-inches: 66.25 is 5-6.25, -18 is -1-6, 0 is 0-0.
CString InchesToFeetText(double inches);
// Back: feet alone or feet-inches; what is no number counts as 0.
double FeetTextToInches(const CString& text);

// A text as an SQL literal. An empty text is stored as one blank.
CString SqlQuote(const CString& text);

} // namespace plumb
