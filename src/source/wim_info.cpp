#include "source/wim_info.h"

#include <string_view>
#include <utility>

#include "platform/text.h"
#include "run/mid_between.h"

namespace pavoline {
namespace {

std::string Tag(std::string_view chunk, const std::string& name) {
  return MidBetween(chunk, "<" + name + ">", "</" + name + ">", false);
}

// What an image takes over from the one before it. An architecture that no image names grows by
// a suffix with each; a list of thousands of such images is cut where nobody reads on.
struct CarryOver {
  std::string archText, detailSuffix;
};
constexpr std::size_t kLongestArchText = 1024;

// A name is text of an XML file, in which these characters are written out.
std::string PlainText(std::string text) {
  for (const auto& [entity, character] :
       {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}}) {
    text = ReplaceAll(std::move(text), entity, character);
  }
  return text;
}

std::string Version(const WimImageInfo& image) {
  return image.major + "." + image.minor + "." + image.build + "." + image.spBuild;
}

void ReadFields(std::string_view chunk, WimImageInfo& image) {
  image.archCode = Tag(chunk, "ARCH");
  image.language = Tag(chunk, "LANGUAGE");
  image.major = Tag(chunk, "MAJOR");
  image.minor = Tag(chunk, "MINOR");
  image.build = Tag(chunk, "BUILD");
  image.spBuild = Tag(chunk, "SPBUILD");
  image.displayName = PlainText(Tag(chunk, "DISPLAYNAME"));
  image.name = PlainText(Tag(chunk, "NAME"));
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
  for (const std::string& chunk : Split(xml, "</IMAGE>")) {
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
