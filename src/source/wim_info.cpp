#include "source/wim_info.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "platform/text.h"

namespace pavoline {
namespace {

// What an image takes over from the one before it. An architecture that no image names grows by
// a suffix with each; a list of thousands of such images is cut where nobody reads on.
struct CarryOver {
  std::string archText, detailSuffix;
};
constexpr std::size_t kLongestArchText = 1024;

// A name is text of an XML file, in which these characters are written out.
std::string PlainText(std::string text) {
  if (!Contains(text, "&")) return text;
  for (const auto& [entity, character] :
       {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}}) {
    text = ReplaceAll(std::move(text), entity, character);
  }
  return text;
}

std::string Version(const WimImageInfo& image) {
  return image.major + "." + image.minor + "." + image.build + "." + image.spBuild;
}

struct Field {
  std::string_view open, close;
  std::string WimImageInfo::*member;
};

constexpr Field kFields[] = {
    {"<ARCH>", "</ARCH>", &WimImageInfo::archCode},
    {"<LANGUAGE>", "</LANGUAGE>", &WimImageInfo::language},
    {"<MAJOR>", "</MAJOR>", &WimImageInfo::major},
    {"<MINOR>", "</MINOR>", &WimImageInfo::minor},
    {"<BUILD>", "</BUILD>", &WimImageInfo::build},
    {"<SPBUILD>", "</SPBUILD>", &WimImageInfo::spBuild},
    {"<DISPLAYNAME>", "</DISPLAYNAME>", &WimImageInfo::displayName},
    {"<NAME>", "</NAME>", &WimImageInfo::name},
};

// Takes the first of each tag, in one walk over the chunk.
void ReadFields(std::string_view chunk, WimImageInfo& image) {
  bool found[std::size(kFields)] = {};
  for (auto at = chunk.find('<'); at != std::string_view::npos; at = chunk.find('<', at + 1)) {
    const std::string_view rest = chunk.substr(at);
    for (std::size_t i = 0; i < std::size(kFields); ++i) {
      const Field& field = kFields[i];
      if (found[i] || !rest.starts_with(field.open)) continue;
      found[i] = true;
      const auto end = rest.find(field.close);
      if (end == std::string_view::npos) continue;
      image.*field.member = rest.substr(field.open.size(), end - field.open.size());
    }
  }
  image.displayName = PlainText(std::move(image.displayName));
  image.name = PlainText(std::move(image.name));
}

void BuildLines(WimImageInfo& image, CarryOver& carried) {
  if (image.archCode == "9") carried.archText = "  64";
  if (image.archCode == "0") carried.archText = "  32";
  if (!image.language.empty()) {
    carried.detailSuffix = carried.archText + "-Bit  " + image.language + "  " + Version(image);
  }
  if (carried.archText.size() > kLongestArchText) carried.archText.resize(kLongestArchText);
  carried.archText += LowerAscii(image.language) == "zh-cn" ? "位" : "-Bit";
  image.archText = carried.archText;
  image.listText = (image.displayName.empty() ? image.name : image.displayName) + image.archText;
  image.detailText = ReplaceAll(image.name, "  ", " ") + carried.detailSuffix;
}

}  // namespace

std::vector<WimImageInfo> ParseWimInfo(const std::string& xml) {
  std::vector<WimImageInfo> images;
  CarryOver carried;
  constexpr std::string_view kEnd = "</IMAGE>";
  const std::string_view text = xml;
  for (std::size_t from = 0; from < text.size();) {
    const auto end = std::min(text.find(kEnd, from), text.size());
    const std::string_view chunk = text.substr(from, end - from);
    from = end + kEnd.size();
    if (!Contains(chunk, "INDEX")) continue;
    WimImageInfo image;
    image.index = static_cast<int>(images.size()) + 1;
    ReadFields(chunk, image);
    BuildLines(image, carried);
    images.push_back(image);
  }
  return images;
}

}  // namespace pavoline
