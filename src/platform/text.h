#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Text helpers that need no operating system. All work on bytes; UTF-8 passes through unharmed.
namespace pavoline {

std::string LowerAscii(std::string_view text);
std::string Trim(std::string_view text);  // blanks (U+0020) at both ends
std::string ReplaceAll(std::string text, std::string_view what, std::string_view by);

// The pieces between separators; an empty text has none, "a," has two.
std::vector<std::string> Split(std::string_view text, std::string_view separator);

bool Contains(std::string_view text, std::string_view part);
bool EndsWith(std::string_view text, std::string_view end);

// The number a text begins with: blanks are skipped, a sign, digits and one decimal point are
// read, the rest is ignored. 0 without digits.
double LeadingNumber(std::string_view text);

// LeadingNumber held to 16 bits: a number outside -32768…32767 gives 0.
int LeadingInteger16(std::string_view text);

// Bytes in GB with two decimals as the partition list has them ("465.76GB"), below 1 GB in MB.
std::string BytesText(std::uint64_t bytes);

// True for a text that is a number and nothing else (ASCII digits, optional sign and point).
bool IsNumeric(std::string_view text);

}  // namespace pavoline
