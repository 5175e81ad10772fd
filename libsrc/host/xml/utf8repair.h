#pragma once

#include <string>

// The text with each byte that is no part of a UTF-8 character replaced by the character of the
// same number, which is what a Latin-1 byte means; a text that is UTF-8 throughout comes back as it
// is. Surrogates, overlong forms and numbers beyond the last character are no UTF-8.
std::string Utf8Repair(std::string text);
