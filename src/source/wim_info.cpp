#include "source/wim_info.h"

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
constexpr std::string_view kImageEnd = "</IMAGE>";

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
  std::string_view tag;  // with its bracket: "ARCH>"
  std::string WimImageInfo::*member;
};

constexpr Field kFields[] = {
    {"ARCH>", &WimImageInfo::archCode},
    {"LANGUAGE>", &WimImageInfo::language},
    {"MAJOR>", &WimImageInfo::major},
    {"MINOR>", &WimImageInfo::minor},
    {"BUILD>", &WimImageInfo::build},
    {"SPBUILD>", &WimImageInfo::spBuild},
    {"DISPLAYNAME>", &WimImageInfo::displayName},
    {"NAME>", &WimImageInfo::name},
};

// The tag at this place is one that closes another.
bool Closes(std::string_view xml, std::size_t at) {
  return at + 1 < xml.size() && xml[at + 1] == '/';
}

bool EndsImage(std::string_view xml, std::size_t at) {
  return Closes(xml, at) && xml.substr(at).starts_with(kImageEnd);
}

// Text behind "<" or "</": the number of the field it names, or that of fields for none.
std::size_t FieldNamed(std::string_view text) {
  const char first = text.empty() ? '\0' : text[0];
  std::size_t i = 0;
  while (i < std::size(kFields) &&
         (kFields[i].tag[0] != first || !text.starts_with(kFields[i].tag))) {
    ++i;
  }
  return i;
}

// The fields of the image that is being read: the first of each counts, up to the first tag that
// closes it.
class ImageFields {
 public:
  explicit ImageFields(std::string_view xml) : xml_(xml) {}

  // The tag at this place of the text.
  void read(std::size_t at) {
    const bool closes = Closes(xml_, at);
    const std::size_t inside = at + (closes ? 2 : 1);
    const std::size_t i = FieldNamed(xml_.substr(inside));
    if (i == std::size(kFields)) return;
    Value& value = values_[i];
    if (closes && value.found && !value.closed) {
      value.closed = true;
      value.text = xml_.substr(value.begin, at - value.begin);
    } else if (!closes && !value.found) {
      value.found = true;
      value.begin = inside + kFields[i].tag.size();
    }
  }

  void store(WimImageInfo& image) const {
    for (std::size_t i = 0; i < std::size(kFields); ++i) image.*kFields[i].member = values_[i].text;
    image.displayName = PlainText(std::move(image.displayName));
    image.name = PlainText(std::move(image.name));
  }

 private:
  struct Value {
    bool found = false, closed = false;
    std::size_t begin = 0;
    std::string_view text;
  };

  std::string_view xml_;
  Value values_[std::size(kFields)];
};

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
  const std::string_view text = xml;
  for (std::size_t from = 0; from < text.size();) {
    ImageFields fields(text);
    std::size_t at = text.find('<', from);
    while (at < text.size() && !EndsImage(text, at)) {
      fields.read(at);
      at = text.find('<', at + 1);
    }
    const std::string_view chunk = text.substr(from, at - from);
    from += chunk.size() + kImageEnd.size();
    if (!Contains(chunk, "INDEX")) continue;
    WimImageInfo& image = images.emplace_back();
    image.index = static_cast<int>(images.size());
    fields.store(image);
    BuildLines(image, carried);
  }
  return images;
}

}  // namespace pavoline
