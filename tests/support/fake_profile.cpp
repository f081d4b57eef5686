#include "support/fake_profile.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace pavoline::testing {
namespace {

const std::string kUtf16Mark = "\xFF\xFE";

using Lines = std::vector<std::string>;

// A section from its head to the next one's; nothing without.
struct Section {
  Lines::iterator begin, end;
};

// Texts of different length are told apart without folding.
bool Same(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a == b || Lower(a) == Lower(b));
}

Section Find(Lines& lines, const std::string& section) {
  const auto head = std::ranges::find_if(lines, [&](const std::string& line) {
    return Contains(line, "[") && Same(Trim(line), "[" + section + "]");
  });
  if (head == lines.end()) return {head, head};
  return {head, std::find_if(head + 1, lines.end(), [](const std::string& line) {
            const auto first = line.find_first_not_of(' ');
            return first != std::string::npos && line[first] == '[';
          })};
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

ProfileSection FakeProfile::readSection(const std::string& file, const std::string& section,
                                        int bufferBytes) {
  const auto cut = [&](std::string_view value) {
    std::string result;
    int left = bufferBytes;
    for (const wchar_t c : Decode(value)) {
      const std::string character = Encode({&c, 1});
      left -= static_cast<int>(text_.toAnsi(character).size());
      if (left < 1) break;
      result += character;
    }
    return result;
  };
  ProfileSection values;
  const auto [begin, end] = Find(lines(file), section);
  for (auto line = begin; line != end; ++line) values.add(*line, cut);
  return values;
}

bool FakeProfile::write(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value) {
  Lines all = lines(file);
  const auto [begin, end] = Find(all, section);
  const auto line = std::find_if(begin, end, [&](const std::string& text) {
    return Contains(text, "=") && Same(Trim(text.substr(0, text.find('='))), key);
  });
  if (line != end) {
    *line = line->substr(0, line->find('=') + 1) + value;
  } else if (begin != end) {
    all.insert(begin + 1, key + "=" + value);
  } else {
    all.insert(all.end(), {"[" + section + "]", key + "=" + value});
  }
  std::string text;
  for (const std::string& each : all) text += each + "\r\n";
  const bool wide = files_.text(file).starts_with(kUtf16Mark);
  return files_.write(file, wide ? kUtf16Mark + text_.toUtf16(text) : text_.toAnsi(text));
}

}  // namespace pavoline::testing
