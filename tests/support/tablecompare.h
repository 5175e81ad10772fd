#pragma once

#include "support/plaintable.h"

#include <string>

// Runs the table rule with the settings of the plain table over the text, and the plain table
// itself, which then holds its values. Empty when both agree; otherwise what each of them found,
// for the eye.
std::string TableDifference(CPlainTable& plain, const std::string& text);

// A plain table of foreign bytes: one line of settings (alignment mode, skip digit, "p" for carried
// values, the range up to "|", the end pattern), one line of headers parted by ";", each with a
// variable of its own unless it ends in "-". What follows the two lines goes to `text`. False when
// there is less.
bool ReadPlainTable(const std::string& bytes, CPlainTable& plain, std::string& text);
