#include "support/fake_profile.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace pavoline::testing {
namespace {

const std::string kUtf16Mark = "\xFF\xFE";

using Lines = std::vector<std::string>;

// A section's head and the key in it; the end of the lines without.
struct Place {
  Lines::iterator section, key;
};

// Texts of different length are told apart without folding.
bool Same(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a == b || Lower(a) == Lower(b));
}

Place Find(Lines& lines, const std::string& section, const std::string& key) {
  const auto head = std::ranges::find_if(lines, [&](const std::string& line) {
    return Contains(line, "[") && Same(Trim(line), "[" + section + "]");
  });
  if (head == lines.end()) return {head, head};
  const auto end = std::find_if(head + 1, lines.end(), [](const std::string& line) {
    const auto first = line.find_first_not_of(' ');
    return first != std::string::npos && line[first] == '[';
  });
  const auto found = std::find_if(head + 1, end, [&](const std::string& line) {
    const auto sign = line.find('=');
    return sign != std::string::npos && sign >= key.size() && Same(Trim(line.substr(0, sign)), key);
  });
  return {head, found == end ? lines.end() : found};
}

std::string WithoutQuotes(const std::string& value) {
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

Lines& FakeProfile::lines(const std::string& file) {
  const std::string bytes = files_.text(file);
  if (bytes == std::exchange(readBytes_, bytes) && text_.codePage == readCodePage_)
    return readLines_;
  readCodePage_ = text_.codePage;
  const std::string text =
      bytes.starts_with(kUtf16Mark) ? text_.fromUtf16(bytes.substr(2)) : text_.fromAnsi(bytes);
  readLines_ = Split(ReplaceAll(text, "\r\n", "\n"), "\n");
  if (!readLines_.empty() && readLines_.back().empty()) readLines_.pop_back();
  return readLines_;
}

std::string FakeProfile::read(const std::string& file, const std::string& section,
                              const std::string& key, int bufferBytes) {
  Lines& all = lines(file);
  const auto line = Find(all, section, key).key;
  if (line == all.end()) return {};
  std::string result;
  for (const wchar_t c : Decode(WithoutQuotes(Trim(line->substr(line->find('=') + 1))))) {
    const std::string character = Encode({&c, 1});
    bufferBytes -= static_cast<int>(text_.toAnsi(character).size());
    if (bufferBytes < 1) break;
    result += character;
  }
  return Trim(result);
}

bool FakeProfile::write(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value) {
  Lines all = lines(file);
  const Place place = Find(all, section, key);
  if (place.key != all.end()) {
    *place.key = place.key->substr(0, place.key->find('=') + 1) + value;
  } else if (place.section != all.end()) {
    all.insert(place.section + 1, key + "=" + value);
  } else {
    all.insert(all.end(), {"[" + section + "]", key + "=" + value});
  }
  std::string text;
  for (const std::string& line : all) text += line + "\r\n";
  const bool wide = files_.text(file).starts_with(kUtf16Mark);
  return files_.write(file, wide ? kUtf16Mark + text_.toUtf16(text) : text_.toAnsi(text));
}

}  // namespace pavoline::testing
