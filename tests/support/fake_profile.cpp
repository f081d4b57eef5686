#include "support/fake_profile.h"

#include "platform/text.h"
#include "support/fold_case.h"

namespace pavoline::testing {
namespace {

const std::string kUtf16Mark = "\xFF\xFE";

struct Place {
  std::size_t section = std::string::npos;  // line of the section's head
  std::size_t key = std::string::npos;      // line of the key
  std::size_t end = 0;                      // where a new key of the section goes
};

std::string KeyOf(const std::string& line) { return Lower(Trim(line.substr(0, line.find('=')))); }

Place Find(const std::vector<std::string>& lines, const std::string& section,
           const std::string& key) {
  Place place;
  const std::string head = "[" + Lower(section) + "]", wanted = Lower(key);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string line = Trim(lines[i]);
    if (line.starts_with("[")) {
      if (place.section != std::string::npos) break;
      if (Lower(line) == head) place.section = i, place.end = i + 1;
    } else if (place.section != std::string::npos && !line.empty()) {
      place.end = i + 1;
      if (line.find('=') != std::string::npos && KeyOf(line) == wanted) {
        place.key = i;
        break;
      }
    }
  }
  return place;
}

std::string WithoutQuotes(const std::string& value) {
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

const std::vector<std::string>& FakeProfile::lines(const std::string& file) {
  const std::string bytes = files_.text(file);
  if (bytes == readBytes_ && text_.codePage == readCodePage_) return readLines_;
  readBytes_ = bytes;
  readCodePage_ = text_.codePage;
  const std::string text =
      bytes.starts_with(kUtf16Mark) ? text_.fromUtf16(bytes.substr(2)) : text_.fromAnsi(bytes);
  readLines_ = Split(ReplaceAll(text, "\r\n", "\n"), "\n");
  if (!readLines_.empty() && readLines_.back().empty()) readLines_.pop_back();
  return readLines_;
}

std::string FakeProfile::cut(const std::string& value, int bytes) {
  std::string result;
  for (char32_t c : Decode(value)) {
    const std::string character = Encode(std::u32string(1, c));
    const std::string ansi = text_.toAnsi(character);
    bytes -= static_cast<int>((text_.fromAnsi(ansi) == character ? ansi : character).size());
    if (bytes < 0) break;
    result += character;
  }
  return Trim(result);
}

std::string FakeProfile::read(const std::string& file, const std::string& section,
                              const std::string& key, int bufferBytes) {
  const auto& all = lines(file);
  const Place place = Find(all, section, key);
  if (place.key == std::string::npos) return {};
  const std::string& line = all[place.key];
  return cut(WithoutQuotes(Trim(line.substr(line.find('=') + 1))), bufferBytes - 1);
}

bool FakeProfile::write(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value) {
  auto all = lines(file);
  const Place place = Find(all, section, key);
  if (place.key != std::string::npos) {
    const std::string& old = all[place.key];
    all[place.key] = old.substr(0, old.find('=') + 1) + value;
  } else if (place.section != std::string::npos) {
    all.insert(all.begin() + static_cast<std::ptrdiff_t>(place.end), key + "=" + value);
  } else {
    all.insert(all.end(), {"[" + section + "]", key + "=" + value});
  }
  std::string text;
  for (const std::string& line : all) text += line + "\r\n";
  const bool wide = files_.text(file).starts_with(kUtf16Mark);
  return files_.write(file, wide ? kUtf16Mark + text_.toUtf16(text) : text_.toAnsi(text));
}

}  // namespace pavoline::testing
